#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "platform/carbon/display.h"

class QRect;
class QWidget;

namespace desktop {

// One control on the screen. It shows the host's state and reports what the user does to it; it
// changes no state of its own but the text that the user is editing.
class ControlView {
 public:
  using Report = std::function<void(const display::Action&)>;

  virtual ~ControlView() = default;

  virtual QWidget* Widget() = 0;

  // Shows the control as it now is.
  virtual void Update(const display::Control& control) = 0;

  // The user's edit since the last call, once.
  virtual std::optional<display::Action> TakeEdit() { return std::nullopt; }

  // The whole of a text that is shown cut short; empty if all of it fits.
  virtual QString CutText() const { return {}; }
};

// The view of a control as a child of `parent`, which owns it, at its place. The view is not yet
// updated.
ControlView* MakeControlView(const display::Control& control, QWidget* parent,
                             ControlView::Report report);

QRect RectOf(const display::Control& control);

}  // namespace desktop
