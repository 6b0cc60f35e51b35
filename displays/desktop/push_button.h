#pragma once

#include <QPushButton>

#include "displays/desktop/control_view.h"
#include "platform/carbon/display.h"

namespace desktop {

class PushButton : public QPushButton, public ControlView {
 public:
  PushButton(const display::Control& control, QWidget* parent, const Report& report);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;
  QString CutText() const override;

  // Wide enough for its text, within reason.
  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent*) override;

 private:
  QString text_;
};

}  // namespace desktop
