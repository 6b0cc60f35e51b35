#include "displays/desktop/toggle.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QPainter>
#include <utility>

#include "displays/desktop/accessible_factory.h"
#include "displays/desktop/dialog_style.h"
#include "platform/carbon/control_ids.h"

namespace desktop {
namespace {

using display::Action;

// A toggle for a screen reader. Qt's own toggles without a click, which the host would not notice,
// and takes a radio button for a check box, since it belongs to no group here.
class AccessibleToggle : public QAccessibleWidget {
  using Relation = std::pair<QAccessibleInterface*, QAccessible::Relation>;

 public:
  AccessibleToggle(QAbstractButton* button, QAccessible::Role role)
      : QAccessibleWidget(button, role), button_(button) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = button_->isChecked();
    return state;
  }

  // A screen reader takes the label of a radio button for that of a group, and would tell it twice.
  QList<Relation> relations(QAccessible::Relation match) const override {
    return role() == QAccessible::RadioButton ? QList<Relation>()
                                              : QAccessibleWidget::relations(match);
  }

  QStringList actionNames() const override { return {toggleAction(), setFocusAction()}; }
  void doAction(const QString& action) override {
    if (action == toggleAction()) button_->click();
    if (action == setFocusAction()) button_->setFocus();
  }

 private:
  QAbstractButton* button_;
};

QAccessibleInterface* MakeAccessibleToggle(const QString&, QObject* object) {
  if (auto* box = dynamic_cast<CheckBox*>(object)) {
    return new AccessibleToggle(box, QAccessible::CheckBox);
  }
  auto* radio = dynamic_cast<RadioButton*>(object);
  return radio ? new AccessibleToggle(radio, QAccessible::RadioButton) : nullptr;
}

void SetUp(QAbstractButton& button, const display::Control& control,
           const ControlView::Report& report) {
  InstallAccessibleFactory<MakeAccessibleToggle>();
  button.setGeometry(RectOf(control));
  button.setAttribute(Qt::WA_Hover);
  button.setAutoExclusive(false);
  QObject::connect(&button, &QAbstractButton::clicked, &button,
                   [number = control_id::FieldNumber(control.id), report] {
                     report({.kind = Action::Kind::kClick, .number = number, .text = {}});
                   });
}

void Show(QAbstractButton& button, const display::Control& control) {
  button.setChecked(control.value.value_or(0) != 0);
  button.setEnabled(control.enabled);
  button.setVisible(control.visible);
}

}  // namespace

CheckBox::CheckBox(const display::Control& control, QWidget* parent, const Report& report)
    : QCheckBox(parent) {
  SetUp(*this, control, report);
}

void CheckBox::Update(const display::Control& control) { Show(*this, control); }

void CheckBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawCheckBox(painter, *this);
}

RadioButton::RadioButton(const display::Control& control, QWidget* parent, const Report& report)
    : QRadioButton(parent) {
  SetUp(*this, control, report);
}

void RadioButton::Update(const display::Control& control) { Show(*this, control); }

void RadioButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawRadioButton(painter, *this);
}

}  // namespace desktop
