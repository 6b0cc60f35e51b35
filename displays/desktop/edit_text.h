#pragma once

#include <QLineEdit>
#include <optional>

#include "displays/desktop/control_view.h"
#include "platform/carbon/display.h"

namespace desktop {

// Edit text and password. What the user types is kept here until another action is reported. Of a
// password a screen reader gets the mask alone, and nothing is left in memory when its field goes.
class EditText : public QLineEdit, public ControlView {
 public:
  EditText(const display::Control& control, QWidget* parent);
  ~EditText() override;

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;
  std::optional<display::Action> TakeEdit() override;

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void KeepSecret();
  void WipeHeld();

  int number_;
  bool edited_ = false;
  bool entered_ = false;
  QString
      held_;  // of a password: its text, so that no change of it leaves the one before in memory
};

}  // namespace desktop
