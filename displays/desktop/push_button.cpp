#include "displays/desktop/push_button.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <limits>

#include "displays/desktop/dialog_style.h"
#include "displays/desktop/shown_text.h"
#include "platform/carbon/control_ids.h"

namespace desktop {
namespace {

using display::Action;

constexpr int kTextMargin = 7;
constexpr int kLeastWidth = 90;
constexpr int kMostWidth = 220;

}  // namespace

PushButton::PushButton(const display::Control& control, QWidget* parent, const Report& report)
    : QPushButton(parent) {
  setFont(SmallFont());
  setGeometry(RectOf(control));
  setAttribute(Qt::WA_Hover);
  connect(this, &QPushButton::clicked, this,
          [number = control_id::ButtonNumber(control.id), report] {
            report({.kind = Action::Kind::kPress, .number = number, .text = {}});
          });
}

void PushButton::Update(const display::Control& control) {
  text_ = ToQString(control.text.value_or(""));
  setAccessibleName(text_);
  setDefault(control.is_default);
  setEnabled(control.enabled);
  setVisible(control.visible);
  update();
}

QString PushButton::CutText() const {
  return IsCut(text_, font(), width() - 2 * kTextMargin) ? text_ : QString();
}

QSize PushButton::sizeHint() const {
  const int wanted = fontMetrics().horizontalAdvance(OneLine(text_)) + 4 * kTextMargin;
  return {std::clamp(wanted, kLeastWidth, kMostWidth), kButtonHeight};
}

// An arrow goes to the nearest button on its side; Qt's go by the order of Tab. Button 1 is the
// rightmost.
void PushButton::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Up || key == Qt::Key_Down) return;
  if (key != Qt::Key_Left && key != Qt::Key_Right) return QPushButton::keyPressEvent(event);
  const int side = key == Qt::Key_Left ? -1 : 1;
  QWidget* nearest = this;
  int least = std::numeric_limits<int>::max();
  for (auto* button : parentWidget()->findChildren<QPushButton*>(Qt::FindDirectChildrenOnly)) {
    const int distance = (button->x() - x()) * side;
    if (distance <= 0 || distance >= least || !button->isEnabled() || button->isHidden()) continue;
    nearest = button;
    least = distance;
  }
  nearest->setFocus(Qt::TabFocusReason);
}

void PushButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawButtonFrame(painter, *this, isDefault());
  painter.setPen(ButtonTextColor(*this, isDefault()));
  const QRect room(kTextMargin, 0, width() - 2 * kTextMargin, kButtonHeight);
  DrawOneLine(painter, room, text_, Qt::AlignHCenter);
}

}  // namespace desktop
