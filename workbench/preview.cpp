#include "workbench/preview.h"

#include <sys/epoll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "calculation/interruption.h"
#include "displays/protocol/display_json.h"
#include "displays/protocol/display_program.h"
#include "displays/protocol/messages.h"
#include "workbench/commands.h"
#include "workbench/failure.h"
#include "workbench/file_watch.h"
#include "workbench/files.h"
#include "workbench/interruption.h"
#include "workbench/previewer.h"
#include "workbench/suite/script_process.h"

namespace workbench {
namespace {

using Clock = std::chrono::steady_clock;
using display::Json;
using std::chrono::milliseconds;
using suite::Outcome;
using suite::ScriptProcess;

constexpr milliseconds kWindowPatience(30'000);  // until the window is there
constexpr milliseconds kRunPatience(500);        // until the window says that the script still runs
constexpr milliseconds kSavePatience(200);  // an editor may take a file away before it writes it

// What the program says of itself on standard error.
std::string WithoutProgramName(std::string text) {
  constexpr std::string_view kName = "tarvo: ";
  for (std::size_t at = 0; at < text.size();) {
    if (text.compare(at, kName.size(), kName) == 0) text.erase(at, kName.size());
    at = std::min(text.find('\n', at), text.size() - 1) + 1;
  }
  return text.ends_with('\n') ? text.substr(0, text.size() - 1) : text;
}

std::string ErrorOf(const Outcome& outcome) {
  if (outcome.timed_out) return "the script has run for too long and was stopped (--timeout)";
  if (outcome.signal != 0) return std::string("it crashed: ") + strsignal(outcome.signal);
  return WithoutProgramName(outcome.errors);
}

// A process that was ended may have left half a line.
Json CallsOf(const std::string& told) {
  Json calls = Json::array();
  std::istringstream lines(told);
  for (std::string line; std::getline(lines, line);) {
    Json call = display::ParseJsonOrDiscard(line);
    if (!call.is_discarded()) calls.push_back(std::move(call));
  }
  return calls;
}

std::vector<std::string> FilesOf(const Options& options) {
  std::vector<std::string> files = options.operands;
  for (const auto& file : {options.answers_file, options.arguments_file, options.passwords}) {
    if (file) files.push_back(*file);
  }
  return files;
}

class ScriptPreview {
 public:
  explicit ScriptPreview(const Options& options);
  ScriptPreview(const ScriptPreview&) = delete;
  ScriptPreview& operator=(const ScriptPreview&) = delete;
  ~ScriptPreview() { close(wakers_); }

  // Until the user closes the window.
  void Run();

 private:
  void OpenWindow();
  bool TakeLineOfWindow();
  void TakeNewsOfFiles();
  void StartRun();
  void TakeRun();
  void Show(const std::string& error, Json calls);
  void SendWhatIsNext();
  void NoteCutTexts(const Json& cut);
  milliseconds TimeToWait() const;
  void WakeBy(int descriptor) const;

  Options options_;
  FileWatch files_;
  display::DisplayProgram window_;
  int wakers_ = epoll_create1(EPOLL_CLOEXEC);  // what else than the window is waited for
  std::optional<ScriptProcess> run_;           // of the script
  std::optional<Clock::time_point> due_;       // when the next run is to begin
  std::optional<Clock::time_point> run_late_;  // when the window is to say that it still runs
  std::optional<Json> next_;                   // what the window is to show
  bool draws_ = false;                         // the window, which has not reported yet
  std::vector<std::string> shown_;             // the descriptions that it was given last
  CutTexts cut_texts_;
  bool may_run_again_ = true;  // for what the window finds out: once after each save
};

ScriptPreview::ScriptPreview(const Options& options)
    : options_(options),
      files_(FilesOf(options)),
      window_(FindCompanion("tarvo-desktop"), "--preview") {
  options_.display = DisplayChoice::kScripted;
  options_.advise = true;
  WakeBy(InterruptionDescriptor());
  window_.StopWaitingWhenReadable(wakers_);
}

void ScriptPreview::WakeBy(int descriptor) const {
  epoll_event readable{EPOLLIN, {}};
  epoll_ctl(wakers_, EPOLL_CTL_ADD, descriptor, &readable);
}

void ScriptPreview::Run() {
  OpenWindow();
  WakeBy(files_.descriptor());  // not before: what is saved does not end the waiting for the window
  due_ = Clock::now();
  while (true) {
    if (window_.HasLine(TimeToWait()) && TakeLineOfWindow()) return;
    calculation::CheckInterruption();
    if (!window_.IsRunning()) {
      throw Failure(Status::kNoDisplay, "the window of the preview or its screen is gone");
    }
    TakeNewsOfFiles();
    if (due_ && Clock::now() >= *due_) StartRun();
    if (run_) TakeRun();
  }
}

void ScriptPreview::OpenWindow() {
  std::string why = window_.Start();
  if (why.empty() && window_.HasLine(kWindowPatience)) {
    const auto message = display::protocol::ReadDisplayMessage(*window_.ReadLine());
    const auto* not_ready = std::get_if<display::protocol::NotReady>(&message);
    if (!not_ready) return;
    why = not_ready->why;
  }
  calculation::CheckInterruption();
  throw Failure(Status::kNoDisplay, "no screen for the preview: " +
                                        (why.empty() ? "tarvo-desktop does not get ready" : why) +
                                        "; --screenshot DIR draws the dialogs without one");
}

// Whether the user has closed the window.
bool ScriptPreview::TakeLineOfWindow() {
  const Json line = display::ParseJson(*window_.ReadLine());
  if (line.contains("cut")) {
    NoteCutTexts(line.at("cut"));
    draws_ = false;
    SendWhatIsNext();
  }
  return line.contains("closed");
}

// What is cut is known only when the window has drawn it; the advice follows with another run. A
// run that has begun meanwhile does not know it either, and is begun anew.
void ScriptPreview::NoteCutTexts(const Json& cut) {
  bool is_new = false;
  for (std::size_t i = 0; i < std::min(cut.size(), shown_.size()); ++i) {
    auto texts = cut[i].get<std::vector<std::string>>();
    std::vector<std::string>& known = cut_texts_[shown_[i]];
    is_new |= known != texts;
    known = std::move(texts);
  }
  if (!is_new || !may_run_again_ || due_) return;
  may_run_again_ = run_ || next_;
  due_ = Clock::now();
}

void ScriptPreview::TakeNewsOfFiles() {
  const FileWatch::News news = files_.Take();
  if (news == FileWatch::News::kNone) return;
  if (news == FileWatch::News::kSaved) {
    due_ = Clock::now();
  } else if (!due_) {
    due_ = Clock::now() + kSavePatience;
  }
  may_run_again_ = true;
}

// One that is under way is ended: what it would show is not what was saved. The calls stand in the
// file of descriptions: the plug-in may print lines of its own.
void ScriptPreview::StartRun() {
  due_.reset();
  run_.reset();
  run_.emplace(options_, options_.timeout.value_or(suite::kTimeLimit), [this](Options options) {
    const std::string file = *std::exchange(options.describe, std::nullopt);
    return RunScript(options, std::make_unique<Previewer>(options, file, cut_texts_));
  });
  run_late_ = Clock::now() + kRunPatience;
  WakeBy(run_->descriptor());
}

void ScriptPreview::TakeRun() {
  if (const std::optional<Outcome> outcome = run_->TakeOutcome()) {
    run_.reset();
    run_late_.reset();
    Show(ErrorOf(*outcome), CallsOf(outcome->dialogs));
  } else if (run_late_ && Clock::now() >= *run_late_) {
    run_late_.reset();
    Show("the script is still running", Json::array());
  }
}

void ScriptPreview::Show(const std::string& error, Json calls) {
  next_ = {{"file", std::filesystem::path(options_.operands.front()).filename().string()},
           {"error", error},
           {"calls", std::move(calls)}};
  SendWhatIsNext();
}

// One after the other: what was superseded while the window drew is never drawn, and its report is
// about what it was given last.
void ScriptPreview::SendWhatIsNext() {
  if (draws_ || !next_) return;
  shown_.clear();
  for (const Json& call : next_->at("calls")) {
    shown_.push_back(display::ToText(call.at("dialog")));
  }
  draws_ = window_.Write(display::ToText(*next_) + "\n");
  next_.reset();
}

milliseconds ScriptPreview::TimeToWait() const {
  constexpr milliseconds kLongest(60'000);
  milliseconds wait = kLongest;
  const auto end = run_ ? run_->end() : std::nullopt;
  for (const auto& time : {due_, run_late_, end}) {
    if (!time) continue;
    const auto left = std::chrono::ceil<milliseconds>(*time - Clock::now());
    wait = std::min(wait, std::max(left, milliseconds(0)));
  }
  return wait;
}

}  // namespace

void Preview(const Options& options) {
  HeedInterruptions();
  if (options.screenshot) {
    Options own = options;
    own.advise = true;
    RunScript(own);
    return;
  }
  const std::string& file = options.operands.front();
  if (file == "-") {
    throw Failure(Status::kUsage, "preview watches a file, which standard input is not");
  }
  ReadFile(file);
  const Adviser refuses_unknown_advice(options);
  ScriptPreview(options).Run();
}

}  // namespace workbench
