#include "displays/desktop/toggle.h"

#include <QPainter>

#include "displays/desktop/look.h"

namespace desktop {
namespace {

using display::Action;

void SetUp(QAbstractButton& button, const display::Control& control, ControlView::Report report) {
  button.setGeometry(RectOf(control));
  button.setAttribute(Qt::WA_Hover);
  button.setAutoExclusive(false);
  QObject::connect(&button, &QAbstractButton::clicked, &button,
                   [number = FieldNumber(control), report] {
                     report({.kind = Action::Kind::kClick, .number = number, .text = {}});
                   });
}

void Show(QAbstractButton& button, const display::Control& control) {
  button.setChecked(control.value.value_or(0) != 0);
  button.setEnabled(control.enabled);
  button.setVisible(control.visible);
}

}  // namespace

CheckBox::CheckBox(const display::Control& control, QWidget* parent, Report report)
    : QCheckBox(parent) {
  SetUp(*this, control, std::move(report));
}

void CheckBox::Update(const display::Control& control) { Show(*this, control); }

void CheckBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawCheckBox(painter, *this);
}

RadioButton::RadioButton(const display::Control& control, QWidget* parent, Report report)
    : QRadioButton(parent) {
  SetUp(*this, control, std::move(report));
}

void RadioButton::Update(const display::Control& control) { Show(*this, control); }

void RadioButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawRadioButton(painter, *this);
}

}  // namespace desktop
