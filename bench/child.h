#pragma once

// A program started for measuring, and the clock.

#include <sys/types.h>

#include <string>
#include <vector>

namespace bench {

using Command = std::vector<std::string>;

double Milliseconds();  // since some fixed moment

// Where the program of this name or path is; empty if there is none.
std::string FindProgram(const std::string& name);

// A running program and whatever it starts, in a process group of their own; its output goes
// nowhere. All of them are killed at the end.
class Child {
 public:
  explicit Child(const Command& command);
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child();

  // The exit status, when it has ended by itself.
  int Wait();

  // The proportional set size of the program and all its descendants, in MB.
  double Memory() const;

 private:
  pid_t process_ = -1;  // -1: has been waited for
};

}  // namespace bench
