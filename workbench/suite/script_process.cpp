#include "workbench/suite/script_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <exception>

#include "calculation/interruption.h"
#include "workbench/commands.h"
#include "workbench/failure.h"
#include "workbench/output.h"

namespace workbench::suite {
namespace {

// In the child, whose streams are in place.
int RunToStatus(const Options& options, const std::function<int(const Options&)>& run) {
  try {
    return run(options);
  } catch (const Failure& failure) {
    Warn(failure.what());
    return static_cast<int>(failure.status());
  } catch (const std::exception& error) {
    Warn(error.what());
    return static_cast<int>(Status::kWrong);
  }
}

int NewFile() {
  const int file = memfd_create("tarvo-script", MFD_CLOEXEC);
  if (file < 0) throw Failure(Status::kWrong, "there is no memory for a script's output");
  return file;
}

std::string ContentOf(int file) {
  std::string content;
  std::array<char, 4096> part{};
  for (ssize_t count = 0;
       (count = pread(file, part.data(), part.size(), static_cast<off_t>(content.size()))) > 0;) {
    content.append(part.data(), static_cast<std::size_t>(count));
  }
  return content;
}

}  // namespace

OwnDescriptor::~OwnDescriptor() {
  if (number_ >= 0) close(number_);
}

int ScriptProcess::RunTheScript(const Options& options) { return RunScript(options); }

ScriptProcess::ScriptProcess(const Options& options, double time_limit,
                             const std::function<int(const Options&)>& run)
    : output_(NewFile()), errors_(NewFile()), dialogs_(NewFile()) {
  if (time_limit > 0) {
    end_ = start_ +
           std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(time_limit));
  }
  const pid_t parent = getpid();
  id_ = fork();
  if (id_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);  // it ended before that
    if (options.display == DisplayChoice::kScripted) {
      dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    }
    dup2(output_.number(), STDOUT_FILENO);
    dup2(errors_.number(), STDERR_FILENO);
    Options own = options;
    own.describe = "/dev/fd/" + std::to_string(dialogs_.number());
    _exit(RunToStatus(own, run));
  }
  if (id_ > 0) process_ = OwnDescriptor(static_cast<int>(syscall(SYS_pidfd_open, id_, 0)));
  if (process_.number() < 0) throw Failure(Status::kWrong, "a script's process cannot be started");
}

ScriptProcess::~ScriptProcess() {
  if (process_.number() < 0) return;
  kill(id_, SIGKILL);
  waitpid(id_, nullptr, 0);
}

void ScriptProcess::WaitForAny(
    const std::vector<std::pair<std::size_t, ScriptProcess>>& processes) {
  std::vector<pollfd> ends;
  std::optional<Clock::time_point> first;
  for (const auto& [number, process] : processes) {
    ends.push_back({process.process_.number(), POLLIN, 0});
    if (process.end_ && (!first || *process.end_ < *first)) first = process.end_;
  }
  using Milliseconds = std::chrono::milliseconds;
  const int wait =
      !first ? -1
             : static_cast<int>(std::clamp<Milliseconds::rep>(
                   std::chrono::ceil<Milliseconds>(*first - Clock::now()).count(), 0, 1'000'000));
  poll(ends.data(), ends.size(), wait);
  calculation::CheckInterruption();
}

std::optional<Outcome> ScriptProcess::TakeOutcome() {
  Outcome outcome;
  outcome.timed_out = end_ && Clock::now() >= *end_;
  int status = 0;
  if (outcome.timed_out) kill(id_, SIGKILL);
  const pid_t ended = waitpid(id_, &status, outcome.timed_out ? 0 : WNOHANG);
  if (ended == 0) return std::nullopt;
  process_ = OwnDescriptor(-1);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
  outcome.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  outcome.timed_out = outcome.timed_out && outcome.signal == SIGKILL;
  outcome.seconds = std::chrono::duration<double>(Clock::now() - start_).count();
  outcome.output = ContentOf(output_.number());
  outcome.errors = ContentOf(errors_.number());
  outcome.dialogs = ContentOf(dialogs_.number());
  return outcome;
}

}  // namespace workbench::suite
