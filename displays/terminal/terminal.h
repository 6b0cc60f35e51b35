#pragma once

#include <termios.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "displays/terminal/event.h"
#include "displays/terminal/guard.h"

namespace terminal {

// The terminal that the host was started in, which is taken for each dialog and given back as it
// was. Whatever the host's standard streams are, they are left alone.
class Terminal {
 public:
  // Takes nothing yet.
  Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal();

  // Why no dialog can be shown here, as one clause; empty if one can.
  const std::string& WhyNone() const { return why_none_; }

  // To wait for events on.
  int Descriptor() const { return fd_; }

  // Takes the terminal. A process in the background is stopped until it is in the foreground.
  // False if the terminal is gone or belongs to others for good.
  bool Take();
  bool IsTaken() const { return taken_; }

  // Gives it back; nothing if it is not taken.
  void GiveBack();

  // After something else may have used it: sets it up anew and forgets what it shows. Waits and
  // fails as Take does.
  bool Renew() const;

  // The window has another size.
  void Resize() const;

  // What was typed before is not for what is shown now.
  void DropInput();

  // The next thing that the user did; nothing if there is nothing yet.
  std::optional<Event> Next();

  // Neither end of the terminal can be used any more.
  bool IsHungUp() const;

 private:
  bool Start() const;
  std::optional<Event> Translate(int kind, wchar_t sign);
  std::optional<Event> TakeClicks();
  std::optional<Event> TakeIntoPaste(int kind, wchar_t sign);

  int fd_ = -1;
  std::string why_none_;
  bool started_ = false;
  bool taken_ = false;
  termios before_{};
  std::unique_ptr<Guard> guard_;
  std::optional<Paste> paste_;  // what has come of it
  std::vector<Click> clicks_;   // that are still to be told, the first one at the end
};

// Readies the canvas for drawing on a terminal of that size that nobody sees. False if the terminal
// library knows no terminal at all.
bool StartUnseenTerminal(int rows, int columns);

}  // namespace terminal
