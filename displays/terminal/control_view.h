#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "displays/terminal/canvas.h"
#include "displays/terminal/event.h"
#include "platform/carbon/display.h"

namespace terminal {

// One control on the screen. It shows the host's state and reports what the user does to it; it
// changes no state of its own but the text that the user is editing and what is scrolled to.
class ControlView {
 public:
  using Report = std::function<void(const display::Action&)>;

  ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;
  virtual ~ControlView() = default;

  // Shows the control as it now is.
  virtual void Update(const display::Control& control) = 0;

  // Draws the control, which fills the canvas. With the focus it also places the cursor.
  virtual void Draw(const Canvas& canvas, bool focused) = 0;

  virtual bool TakesFocus() const { return true; }

  // The focus comes by Tab.
  virtual void Enter() {}

  // A key, pasted text or a click while the control has the focus; a click's place counts from the
  // control's own corner. False if it means nothing to the control.
  virtual bool Handle(const Key& /*key*/) { return false; }
  virtual void Handle(const Paste& /*paste*/) {}
  virtual void Handle(const Click& /*click*/) {}

  // Whether the control has scrolled for the wheel or a key that scrolls.
  virtual bool Scroll(int /*rows*/) { return false; }

  // An open menu gets all that the user does, and is drawn over everything else. `place` is where
  // the control stands on the screen; clicks are the screen's.
  virtual bool IsOpen() const { return false; }
  virtual void DrawMenu(const Canvas& /*screen*/, const Area& /*place*/) {}

  // The user's edit since the last call, once.
  virtual std::optional<display::Action> TakeEdit() { return std::nullopt; }
};

// The view of a control, not yet updated.
std::unique_ptr<ControlView> MakeControlView(const display::Control& control,
                                             const ControlView::Report& report);

}  // namespace terminal
