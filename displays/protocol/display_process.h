#pragma once

// A display in a process of its own, from the host's side.

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "displays/protocol/display_program.h"
#include "displays/protocol/messages.h"
#include "platform/carbon/display.h"

namespace display {

// Starts the program when it is first needed and keeps it for the next dialog. If the program is
// gone, sends a line that is no message, or does not get ready in time, it is ended and reaped, the
// open dialog gets no further action, and the next Open starts a new one.
class DisplayProcess : public Display {
 public:
  // Starts nothing yet. `patience` is how long the program may take to say that it is ready.
  explicit DisplayProcess(std::string program,
                          std::chrono::milliseconds patience = std::chrono::seconds(30));

  // Starts the program unless it runs already. False if it cannot show anything; WhyLost then says
  // why.
  bool GetReady();
  bool IsRunning() const { return program_.IsRunning(); }

  // The main screen in pixels; 1920 by 1080 at (0, 0) if there is none.
  Rect MainScreen() override;

  bool Open(const Description& dialog) override;
  std::optional<Action> NextAction() override;
  void Change(std::size_t index, const Control& control) override;
  void Reject(const std::string& reason) override;
  void Close() override;
  void StopWaitingWhenReadable(int descriptor) override {
    program_.StopWaitingWhenReadable(descriptor);
  }
  std::string WhyLost() const override { return why_lost_; }

 private:
  bool IsReady();
  bool NoteReady(const protocol::DisplayMessage& message);
  void TakeNews();
  std::optional<protocol::DisplayMessage> Receive();
  bool Send(const std::string& line);

  DisplayProgram program_;
  std::chrono::milliseconds patience_;
  std::string why_lost_;
  protocol::Ready ready_;  // what the program last said of itself
  int dialog_ = 0;         // tells the actions of this dialog from those of the one before
};

}  // namespace display
