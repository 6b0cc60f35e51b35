#pragma once

#include <QLineEdit>
#include <optional>

#include "displays/desktop/control_view.h"
#include "platform/carbon/display.h"

namespace desktop {

// Edit text and password. What the user types is kept here until another action is reported.
class EditText : public QLineEdit, public ControlView {
 public:
  EditText(const display::Control& control, QWidget* parent);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;
  std::optional<display::Action> TakeEdit() override;

 private:
  int number_;
  bool edited_ = false;
};

}  // namespace desktop
