#pragma once

#include <termios.h>

namespace terminal {

// A process that stands by while the display has the terminal. If the display ends without having
// given it back, in whatever way, the guard gives it back: it sets the modes as they were and takes
// what was switched on off again. It holds the display's descriptors until then, so that the host
// does not learn of the end before.
class Guard {
 public:
  // Starts the process. The terminal's type must be known to the terminal library.
  explicit Guard(int terminal);
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;
  ~Guard();

  // The display takes the terminal, whose modes are `before`, or has given it back.
  void Taken(const termios& before) const;
  void GivenBack() const;

 private:
  int pipe_ = -1;
};

// Switches off on the terminal `fd` what the display may have switched on.
void ResetTerminal(int fd);

}  // namespace terminal
