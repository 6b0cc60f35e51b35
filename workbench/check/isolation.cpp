#include "workbench/check/isolation.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string_view>
#include <system_error>
#include <utility>

namespace workbench::check {
namespace {

using Clock = std::chrono::steady_clock;

// What the child sends: one of these letters and its message.
constexpr std::array kLetters{std::pair{'p', Verdict::kPassed}, std::pair{'f', Verdict::kFailed},
                              std::pair{'s', Verdict::kSkipped}};

[[noreturn]] void Throw(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  int get() const { return fd_; }
  void Close() {
    if (fd_ >= 0) close(std::exchange(fd_, -1));
  }

 private:
  int fd_;
};

// --- In the child

// Runs the body and returns its outcome as text: a letter and the message.
std::string RunBody(const std::function<std::string()>& body) {
  using namespace std::string_literals;
  try {
    return "p" + body();
  } catch (const NotApplicable& reason) {
    return "s"s + reason.what();
  } catch (const ContractBroken& broken) {
    return "f"s + broken.what();
  } catch (const std::exception& error) {
    return "fexpected no exception, got one that says: "s + error.what();
  } catch (...) {
    return "fexpected no exception, got one of an unknown type";
  }
}

void ResetSignals() {
  for (int number = 1; number < NSIG; ++number) std::signal(number, SIG_DFL);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

void Silence(int errors) {
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int fd : {STDIN_FILENO, STDOUT_FILENO}) dup2(null, fd);
  dup2(errors >= 0 ? errors : null, STDERR_FILENO);
}

// What the plug-in starts is killed with its process group, and the group's leader ends with this
// program.
void StandAlone(pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(0);
  setpgid(0, 0);
  const rlimit no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
}

void WriteAll(int out, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(out, text.data(), text.size());
    if (count <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

[[noreturn]] void RunChild(const std::function<std::string()>& body, int out, int errors) {
  ResetSignals();
  Silence(errors);
  WriteAll(out, RunBody(body));
  _exit(EXIT_SUCCESS);
}

// --- In the parent

int Remaining(Clock::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

// Takes what is there. False at the end, and if there is nothing now.
bool ReadSome(int fd, std::string& text) {
  std::array<char, 4096> buffer;
  const ssize_t count = read(fd, buffer.data(), buffer.size());
  if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
  return count > 0;
}

// Reads until the child has ended; false if the time limit comes first. The child may close
// its descriptors or hand them on, so they do not show its end: that is waited for by itself.
bool ReadUntilEnd(pid_t child, int in, Clock::time_point deadline, std::string& text) {
  const Descriptor end(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
  if (end.get() < 0) Throw("cannot wait for a check");
  std::array<pollfd, 2> waited{pollfd{end.get(), POLLIN, 0}, pollfd{in, POLLIN, 0}};
  while (true) {
    const int ready = poll(waited.data(), waited.size(), Remaining(deadline));
    if (ready == 0) return false;
    if (ready < 0) continue;
    if (waited[1].revents != 0 && !ReadSome(in, text)) waited[1].fd = -1;
    if (waited[0].revents == 0) continue;
    while (waited[1].fd >= 0 && ReadSome(in, text)) {
    }
    return true;
  }
}

int Reap(pid_t child) {
  kill(-child, SIGKILL);
  kill(child, SIGKILL);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

std::string InSeconds(std::chrono::milliseconds time) {
  std::array<char, 32> text;
  std::snprintf(text.data(), text.size(), "%g s", static_cast<double>(time.count()) / 1000);
  return text.data();
}

std::string HowItEnded(int status) {
  if (WIFEXITED(status)) {
    return "ended the program with exit status " + std::to_string(WEXITSTATUS(status));
  }
  const char* name = sigabbrev_np(WTERMSIG(status));
  return name == nullptr ? "signal " + std::to_string(WTERMSIG(status)) : "SIG" + std::string(name);
}

Result FromText(const std::string& text, int status) {
  for (const auto& [letter, verdict] : kLetters) {
    if (status == EXIT_SUCCESS && text.starts_with(letter)) return {verdict, text.substr(1)};
  }
  return {Verdict::kCrashed, HowItEnded(status)};
}

// The beginning of what was written.
std::string ContentOf(int file) {
  constexpr std::size_t kMost = 65536;
  std::string content(kMost, '\0');
  const ssize_t count = pread(file, content.data(), content.size(), 0);
  content.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return content;
}

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

Result RunIsolated(const std::function<std::string()>& body, std::chrono::milliseconds time_limit) {
  const Clock::time_point start = Clock::now();
  std::array<int, 2> ends;
  if (pipe2(ends.data(), O_CLOEXEC) != 0) Throw("cannot make a pipe");
  const Descriptor in(ends[0]);
  Descriptor out(ends[1]);
  fcntl(in.get(), F_SETFL, O_NONBLOCK);
  const Descriptor errors(memfd_create("standard error", MFD_CLOEXEC));
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) Throw("cannot start a check");
  if (child == 0) {
    StandAlone(parent);
    RunChild(body, out.get(), errors.get());
  }
  out.Close();
  std::string text;
  const bool ended = ReadUntilEnd(child, in.get(), start + time_limit, text);
  const int status = Reap(child);
  Result result =
      ended ? FromText(text, status)
            : Result{Verdict::kTimedOut, "expected an end within " + InSeconds(time_limit)};
  result.errors = ContentOf(errors.get());
  result.seconds = SecondsSince(start);
  return result;
}

Result RunHere(const std::function<std::string()>& body) {
  const Clock::time_point start = Clock::now();
  Result result = FromText(RunBody(body), EXIT_SUCCESS);
  result.seconds = SecondsSince(start);
  return result;
}

}  // namespace workbench::check
