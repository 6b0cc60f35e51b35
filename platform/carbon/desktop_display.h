#pragma once

// The host's half of the desktop display: the program tarvo-desktop in a process of its own.

#include <sys/types.h>

#include <string>

#include "platform/carbon/display.h"
#include "platform/carbon/display_json.h"

namespace display {

// Starts the program when it is first needed and keeps it for the next dialog. Where the program is
// gone, or says what makes no sense, it is reaped, the open dialog gets no further answer, and the
// next Open starts a new one. The host's signal handlers, locale, environment and descriptors stay
// as they are, and the program inherits no descriptor but 0, 1, 2 and its socket.
class DesktopDisplay : public Display {
 public:
  // Starts nothing yet. The program stands beside this library, or in ../bin from there.
  DesktopDisplay();

  // Ends the program: it goes by itself when its socket closes, and is killed if it does not soon.
  ~DesktopDisplay() override;

  // The primary screen in pixels; 1920 by 1080 at (0, 0) where there is none.
  Rect MainScreen() override;

  bool Open(const Description& dialog) override;
  std::optional<Action> NextAction() override;
  void Change(std::size_t index, const Control& control) override;
  void Reject(const std::string& reason) override;
  void Close() override;
  std::string WhyLost() const override { return why_lost_; }

 private:
  bool Start();
  bool Spawn();
  void Stop();
  bool Send(const Json& message);
  std::optional<Json> Receive();
  void TakeNews();
  bool IsReady();
  bool NoteScreen(const Json& message);

  std::string program_;
  int socket_ = -1;     // -1: the program does not run
  pid_t process_ = -1;  // of the running program
  std::string why_lost_;
  std::string received_;
  Rect screen_;
  int dialog_ = 0;  // tells the actions of this dialog from those of the one before
};

}  // namespace display
