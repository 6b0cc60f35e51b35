#pragma once

#include <csignal>
#include <optional>

namespace terminal {

// The signals of job control, of the window's size and of the end, taken in turn with everything
// else instead of in between.
class Signals {
 public:
  Signals();
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;
  ~Signals();

  int Descriptor() const { return fd_; }

  // The next one that has come, if any.
  std::optional<int> Next() const;

  // Whether the terminal's processes can be stopped: not if their shell has no job control.
  bool CanStop() const { return can_stop_; }

  // Stops this process as SIGTSTP does, until it is continued.
  static void Stop();

 private:
  sigset_t blocked_;
  int fd_;
  bool can_stop_ = false;
};

}  // namespace terminal
