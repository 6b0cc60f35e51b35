#include "displays/desktop/dialog_window.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <string>
#include <utility>

#include "displays/desktop/shown_text.h"
#include "platform/carbon/control_ids.h"

namespace desktop {
namespace {

using display::Control;
using display::ControlKind;

bool IsInput(const Control& control) {
  return control.kind != ControlKind::kStatic && control.kind != ControlKind::kButton;
}

// The cancel control is Escape and nothing to look at, whether or not Escape is allowed.
bool IsSeen(const Control& control) { return control.visible && !control.is_cancel; }

}  // namespace

void DialogWindow::Fill(display::Window description) {
  description_ = std::move(description);
  const Rect& content = description_.content;
  SetTitle(OneLine(ToQString(description_.title)), Name());
  setFixedSize(content.right - content.left, content.bottom - content.top);
  Place();
  views_.resize(description_.controls.size());
  for (std::size_t i = 0; i < views_.size(); ++i) {
    Show(i);
    if (views_[i] && description_.controls[i].focused) views_[i]->Widget()->setFocus();
  }
  OrderTabs();
  NameInputs();
}

void DialogWindow::Dismiss() {
  ModalWindow::Dismiss();
  description_ = {};
  views_.clear();
  placed_ = false;
}

// The place of the content on the desktop, wherever the frame is. The host counts from the main
// screen's corner.
QPoint DialogWindow::ContentPlace() const {
  const Rect& content = description_.content;
  return QGuiApplication::primaryScreen()->geometry().topLeft() + QPoint(content.left, content.top);
}

void DialogWindow::Place() { setGeometry({ContentPlace(), size()}); }

// The caption, or else the message.
QString DialogWindow::Name() const {
  if (!description_.title.empty()) return OneLine(ToQString(description_.title));
  for (const Control& control : description_.controls) {
    const bool message = control.kind == ControlKind::kStatic && control.id == control_id::kMessage;
    if (message) return OneLine(ToQString(control.text.value_or("")));
  }
  return {};
}

// A window manager may have moved a new window onto the screen, though it was to stand beyond its
// edge. Once it is active it is the user's to move.
bool DialogWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && isVisible() && !placed_) {
    placed_ = true;
    if (geometry().topLeft() != ContentPlace()) Place();
  }
  return ModalWindow::event(event);
}

// A control that has never been visible has no widget: a screen reader would find it.
void DialogWindow::Show(std::size_t index) {
  const Control& control = description_.controls.at(index);
  ControlView*& view = views_.at(index);
  if (!view && IsSeen(control)) {
    view = MakeControlView(control, this, [this](const auto& action) { Send(action); });
    AddView(view);
    if (control.kind == ControlKind::kList) view->Widget()->setAccessibleName(Name());
  }
  if (view) view->Update(control);
}

void DialogWindow::Change(std::size_t index, const Control& control) {
  Control& known = description_.controls.at(index);
  const bool focus_moved = control.focused && !known.focused;
  known = control;
  Show(index);
  OrderTabs();
  NameInputs();
  if (focus_moved && views_[index]) views_[index]->Widget()->setFocus(Qt::TabFocusReason);
}

// Fields or the list first, then the buttons.
void DialogWindow::OrderTabs() {
  std::vector<QWidget*> inputs;
  std::vector<QWidget*> buttons;
  for (std::size_t i = 0; i < views_.size(); ++i) {
    if (!views_[i]) continue;
    const Control& control = description_.controls[i];
    if (IsInput(control)) inputs.push_back(views_[i]->Widget());
    if (control.kind == ControlKind::kButton) buttons.push_back(views_[i]->Widget());
  }
  inputs.insert(inputs.end(), buttons.begin(), buttons.end());
  SetTabOrder(std::move(inputs));
}

// The message describes the window, and each other text names a field. A text that belongs to
// nothing would be told as a stray one.
void DialogWindow::NameInputs() {
  for (std::size_t i = 0; i < views_.size(); ++i) {
    const Control& label = description_.controls[i];
    if (label.kind != ControlKind::kStatic) continue;
    const QString text = ToQString(label.text.value_or(""));
    const bool message = label.id == control_id::kMessage;
    QWidget* const owner = message ? this : InputOf(label.id);
    if (!owner) continue;
    message ? owner->setAccessibleDescription(text) : owner->setAccessibleName(text);
    auto* shown = views_[i] ? qobject_cast<QLabel*>(views_[i]->Widget()) : nullptr;
    if (shown) shown->setBuddy(owner);
  }
}

// The field that the text of that id belongs to; null if there is none to see.
QWidget* DialogWindow::InputOf(int label) const {
  for (std::size_t i = 0; i < views_.size(); ++i) {
    const Control& input = description_.controls[i];
    if (views_[i] && IsInput(input) && input.kind != ControlKind::kList &&
        control_id::Label(control_id::FieldNumber(input.id)) == label) {
      return views_[i]->Widget();
    }
  }
  return nullptr;
}

}  // namespace desktop
