#include "displays/desktop/static_text.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QPainter>

#include "displays/desktop/dialog_style.h"
#include "displays/desktop/shown_text.h"
#include "platform/carbon/control_ids.h"

namespace desktop {
namespace {

constexpr int kMessagePadding = 3;  // above; its left edge is that of the labels

bool IsLabel(const display::Control& control) { return control.id >= control_id::Label(1); }

}  // namespace

StaticText::StaticText(const display::Control& control, QWidget* parent)
    : QLabel(parent), is_label_(IsLabel(control)) {
  setTextFormat(Qt::PlainText);
  setFont(SmallFont());
  setGeometry(RectOf(control));
}

void StaticText::Update(const display::Control& control) {
  text_ = ToQString(control.text.value_or(""));
  setAccessibleName(text_);
  setEnabled(control.enabled);
  setVisible(control.visible);
  update();
}

QString StaticText::CutText() const {
  return FitText(text_, font(), TextRect().size()).cut ? text_ : QString();
}

QRect StaticText::TextRect() const {
  if (!is_label_) return rect().adjusted(0, kMessagePadding, 0, 0);
  // A label stands on the line of the text in its field.
  const int line = fontMetrics().lineSpacing();
  return {0, (height() - line) / 2, width(), line};
}

void StaticText::mousePressEvent(QMouseEvent* event) {
  QWidget* const input = buddy();
  if (!input || input->isWindow() || !input->isEnabled() || event->button() != Qt::LeftButton) {
    return;
  }
  input->setFocus(Qt::MouseFocusReason);
  if (auto* toggle = qobject_cast<QAbstractButton*>(input)) toggle->click();
}

void StaticText::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
  painter.setPen(palette().color(group, QPalette::WindowText));
  DrawBlock(painter, TextRect(), FitText(text_, font(), TextRect().size()));
}

}  // namespace desktop
