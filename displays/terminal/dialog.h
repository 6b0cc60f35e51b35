#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "displays/terminal/control_view.h"
#include "displays/terminal/layout.h"
#include "platform/carbon/display.h"

namespace terminal {

// An open dialog or alert: its controls, which of them has the focus, and what the user's keys and
// clicks mean. Nothing is decided here.
class Dialog {
 public:
  using Report = ControlView::Report;

  // What the user does is reported, each action behind the edits that were made before it.
  Dialog(const display::Description& description, Report report);

  // Control `index` now is as described. The focus moves only if the host has moved it.
  void Change(std::size_t index, const display::Control& control);

  void Handle(const Event& event);

  // Draws the dialog on the whole screen, whatever its size now is.
  void Draw();

 private:
  void HandleKey(const Key& key);
  void HandlePaste(const Paste& paste);
  void HandleClick(const Click& click);
  void Send(const display::Action& action);
  void MoveFocus(int step);
  void MoveToButtonBeside(const Key& key);
  std::vector<std::size_t> TabOrder() const;
  void ScrollBy(int rows);
  void ScrollToFocus(int room);
  std::optional<std::size_t> ControlAt(int row, int column) const;
  Area OnScreen(const Area& area) const;
  void DrawFrame(const Canvas& screen) const;
  void DrawIcon(const Canvas& content) const;

  display::Window window_;
  std::optional<int> alert_type_;
  Report report_;
  std::vector<std::unique_ptr<ControlView>> views_;  // of each control
  std::optional<std::size_t> focus_;
  Layout layout_;       // as it was drawn last
  int scrolled_ = 0;    // rows of the content above its frame
  bool follow_ = true;  // what has the focus is to be seen
};

}  // namespace terminal
