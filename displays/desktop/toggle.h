#pragma once

#include <QCheckBox>
#include <QRadioButton>

#include "displays/desktop/control_view.h"
#include "platform/carbon/display.h"

namespace desktop {

// The toggles have no text of their own. A click is reported and changes nothing by itself: the
// host toggles, and knows which radio buttons form a group.
class CheckBox : public QCheckBox, public ControlView {
 public:
  CheckBox(const display::Control& control, QWidget* parent, const Report& report);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;

 protected:
  void nextCheckState() override {}
  bool hitButton(const QPoint&) const override { return true; }
  void paintEvent(QPaintEvent*) override;
};

class RadioButton : public QRadioButton, public ControlView {
 public:
  RadioButton(const display::Control& control, QWidget* parent, const Report& report);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;

 protected:
  void nextCheckState() override {}
  bool hitButton(const QPoint&) const override { return true; }
  void paintEvent(QPaintEvent*) override;
};

}  // namespace desktop
