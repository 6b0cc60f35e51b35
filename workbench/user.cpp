#include "workbench/user.h"

#include <cstdlib>
#include <memory>
#include <sstream>
#include <type_traits>
#include <utility>

#include "calculation/interruption.h"
#include "calculation/unicode.h"
#include "displays/protocol/default_display.h"
#include "platform/carbon/Carbon.h"
#include "platform/carbon/CarbonHost.h"
#include "workbench/failure.h"
#include "workbench/files.h"
#include "workbench/interruption.h"
#include "workbench/observers.h"
#include "workbench/output.h"
#include "workbench/user_text.h"

namespace workbench {
namespace {

using display::Answer;

constexpr int kMostLeft = 100;  // dialogs without an answer

// The file's answers, then those of the command line, which count as one text.
std::vector<Answer> ReadAnswers(const Options& options) {
  std::vector<Answer> answers;
  std::string source = options.answers_file.value_or("");
  try {
    if (options.answers_file)
      answers = display::ParseAnswers(FromUser(ReadFile(source), source), source);
    std::string text;
    source = "--answer";
    for (const std::string& answer : options.answers) text += FromUser(answer, source) + ";";
    for (Answer& answer : display::ParseAnswerText(text, source))
      answers.push_back(std::move(answer));
  } catch (const display::AnswerError& error) {
    throw Failure(Status::kUsage,
                  source + ", line " + std::to_string(error.line()) + ": " + error.what());
  }
  return answers;
}

// Of the file, or else of the environment, one a line.
std::vector<std::string> ReadPasswords(const Options& options) {
  const char* const environment = std::getenv("TARVO_PASSWORDS");
  std::istringstream lines(options.passwords
                               ? FromUser(ReadFile(*options.passwords), *options.passwords)
                               : FromUser(environment ? environment : "", "TARVO_PASSWORDS"));
  std::vector<std::string> passwords;
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    passwords.push_back(line);
  }
  return passwords;
}

bool IsScripted(const Options& options) {
  if (options.OnlyLooks()) return true;
  if (options.display != DisplayChoice::kAuto) return options.display == DisplayChoice::kScripted;
  return options.answers_file || !options.answers.empty();
}

display::Display& ShownOn(DisplayChoice choice) {
  if (choice == DisplayChoice::kDesktop) return display::Desktop();
  if (choice == DisplayChoice::kTerminal) return display::Terminal();
  return carbon::DefaultDisplay();
}

std::vector<std::unique_ptr<Observer>> MakeObservers(const Options& options) {
  std::vector<std::unique_ptr<Observer>> observers;
  if (options.describe) observers.push_back(std::make_unique<DescriptionLog>(*options.describe));
  if (options.screenshot) observers.push_back(std::make_unique<Screenshots>(*options.screenshot));
  if (options.record) {
    observers.push_back(std::make_unique<Recording>(*options.record, options.record_passwords,
                                                    options.record_numbers));
  }
  return observers;
}

struct Release {
  void operator()(CFStringRef text) const { CFRelease(text); }
};
using OwnedString = std::unique_ptr<std::remove_pointer_t<CFStringRef>, Release>;

std::string Explain(const display::ScriptedDisplay::Failure& failure) {
  const std::string place =
      failure.line > 0 ? failure.source + ", line " + std::to_string(failure.line) + ": " : "";
  return "dialog \"" + failure.caption + "\": " + place + failure.reason;
}

}  // namespace

User::User(const Options& options)
    : strict_(options.strict),
      is_scripted_(IsScripted(options)),
      may_leave_(options.OnlyLooks()),
      scripted_(ReadAnswers(options), options.strict) {
  display::Display& shown_on =
      is_scripted_ ? static_cast<display::Display&>(scripted_) : ShownOn(options.display);
  shown_on.StopWaitingWhenReadable(InterruptionDescriptor());
  display_.emplace(shown_on, MakeObservers(options),
                   is_scripted_ ? std::optional(ReadPasswords(options)) : std::nullopt,
                   options.timeout.value_or(0));
  carbon::SetDisplay(&*display_);
}

User::~User() { carbon::SetDisplay(nullptr); }

int User::ShowMessage(const std::string& title, const std::string& message,
                      const std::vector<std::string>& buttons) {
  std::vector<OwnedString> texts;
  const auto make = [&texts](const std::string& text) {
    const std::u16string units = calculation::ToUtf16(text);
    texts.emplace_back(CFStringCreateWithCharacters(nullptr,
                                                    reinterpret_cast<const UniChar*>(units.data()),
                                                    static_cast<CFIndex>(units.size())));
    return texts.back().get();
  };
  const auto button = [&](std::size_t i) {
    return i < buttons.size() && !buttons[i].empty() ? make(buttons[i]) : nullptr;
  };
  AlertStdCFStringAlertParamRec parameters{};
  parameters.version = kStdCFStringAlertVersionOne;
  parameters.default_text = button(0);
  parameters.cancel_text = button(1);
  parameters.other_text = button(2);
  DialogRef alert{};
  std::int16_t pressed = 0;
  if (CreateStandardAlert(kAlertPlainAlert, make(title), make(message), &parameters, &alert) ==
      noErr) {
    RunStandardAlert(alert, nullptr, &pressed);
  }
  CheckDialogs();
  return pressed;
}

void User::CheckDialogs() {
  for (const std::string& note : scripted_.TakeNotes()) Warn(note);
  const auto scripted = scripted_.TakeFailure();
  const auto failure = display_->TakeFailure();
  const auto lost = display_->TakeLost();
  if (lost && calculation::interruption) {
    throw Failure(Status::kInterrupted,
                  "interrupted while the dialog \"" + lost->name + "\" was open");
  }
  calculation::CheckInterruption();
  if (lost && lost->is_late) {
    throw Failure(Status::kAnswer, "dialog \"" + lost->name + "\": nobody answers");
  }
  if (failure) throw Failure(*failure);
  if (scripted && scripted->is_missing && may_leave_) {
    if (++left_ < kMostLeft) return;
    throw Failure(Status::kAnswer,
                  std::to_string(kMostLeft) +
                      " dialogs are without an answer; a loop that waits for one needs --answers");
  }
  if (scripted) throw Failure(Status::kAnswer, Explain(*scripted));
  if (lost) {
    throw Failure(Status::kNoDisplay, "no display: the dialog \"" + lost->name +
                                          "\" has no window: " + lost->reason +
                                          "; --answer or --answers answers it without a screen");
  }
}

void User::CheckAnswers() const {
  const std::string left = scripted_.LeftOver();
  if (left.empty()) return;
  const std::string what = left + (is_scripted_ ? "" : ": --display has dialogs shown to the user");
  if (strict_) throw Failure(Status::kAnswer, what);
  Warn(what);
}

}  // namespace workbench
