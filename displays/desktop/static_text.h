#pragma once

#include <QLabel>

#include "displays/desktop/control_view.h"
#include "platform/carbon/display.h"

namespace desktop {

// The message above the controls, or the label of a field, which ends right beside it. Its buddy,
// if it has one, is the input that it belongs to, and takes a click on it.
class StaticText : public QLabel, public ControlView {
 public:
  StaticText(const display::Control& control, QWidget* parent);

  QWidget* Widget() override { return this; }
  void Update(const display::Control& control) override;
  QString CutText() const override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent*) override;

 private:
  QRect TextRect() const;

  bool is_label_;
  QString text_;
};

}  // namespace desktop
