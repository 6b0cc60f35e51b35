#include "displays/desktop/modal_window.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>
#include <algorithm>

#include "displays/desktop/accessible_factory.h"
#include "displays/desktop/host_window.h"
#include "displays/desktop/shown_text.h"

namespace desktop {
namespace {

using display::Action;

// A window for a screen reader; Qt does not tell that it is modal.
class AccessibleWindow : public QAccessibleWidget {
 public:
  explicit AccessibleWindow(ModalWindow* window)
      : QAccessibleWidget(window, window->AccessibleRole()) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.modal = !state.invisible;
    return state;
  }
};

bool CanFocus(const QWidget* widget) { return widget->isVisible() && widget->isEnabled(); }

// A letter with Alt is a shortcut on every desktop; Qt types it.
bool TypesNothing(const QKeyEvent& key) {
  return key.modifiers() & Qt::AltModifier && !key.text().isEmpty();
}

// Whether the key types something or moves to an item, and not to another control.
bool ActsOnInput(const QKeyEvent& key) {
  const bool moves = key.key() >= Qt::Key_Home && key.key() <= Qt::Key_PageDown;
  const bool tabs = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
  return moves || (!tabs && !key.text().isEmpty());
}

QAccessibleInterface* MakeAccessibleWindow(const QString&, QObject* object) {
  auto* window = dynamic_cast<ModalWindow*>(object);
  return window ? new AccessibleWindow(window) : nullptr;
}

}  // namespace

ModalWindow::ModalWindow()
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowStaysOnTopHint) {
  InstallAccessibleFactory<MakeAccessibleWindow>();
  setWindowModality(Qt::ApplicationModal);
  setFocusPolicy(Qt::NoFocus);  // a click beside the controls leaves the focus where it is
}

void ModalWindow::Present(Report report) {
  content_.report = std::move(report);
  if (windowState() != Qt::WindowNoState) DropNativeWindow();
  if (!windowHandle()) StandAboveHostWindow();
  qApp->installEventFilter(this);
  content_.grace.Begin();
  if (!focusWidget()) setFocus();
  raise();  // an X server keeps a window at the height at which it was hidden
  show();
  // Updates that were put off while showing become part of the first drawing, not a second one.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
  activateWindow();
}

void ModalWindow::Dismiss() {
  qApp->removeEventFilter(this);  // late keys are not for the next dialog
  hide();
  for (auto* widget : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) widget->deleteLater();
  content_ = {};
  setWindowTitle({});
  setAccessibleName({});
  setAccessibleDescription({});
}

// Qt reads "[*]" in a title as a place for a mark, and a window without a title gets the program's
// name.
void ModalWindow::SetTitle(const QString& title, const QString& name) {
  QString shown = title.isEmpty() ? QStringLiteral(" ") : title;
  setWindowTitle(shown.replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
  setWindowIconText(name);
}

void ModalWindow::Send(const Action& action) {
  if (!content_.report) return;  // the dialog has been dismissed
  QGuiApplication::inputMethod()->commit();
  for (ControlView* view : content_.views) {
    if (const auto edit = view->TakeEdit()) content_.report(*edit);
  }
  content_.report(action);
  KeyGrace::NoteAnswer();
}

bool ModalWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) content_.grace.NoteActive();
  return QWidget::event(event);
}

bool ModalWindow::focusNextPrevChild(bool next) {
  std::vector<QWidget*> order = content_.tab_order;
  std::erase_if(order, [](const QWidget* widget) { return !CanFocus(widget); });
  if (order.empty()) return false;
  if (!next) std::reverse(order.begin(), order.end());

  const auto current = std::find(order.begin(), order.end(), focusWidget());
  const bool wraps = current == order.end() || current + 1 == order.end();
  (wraps ? order.front() : *(current + 1))
      ->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

// Keys are taken before the widget that has the focus sees them, but for those of an open menu. Who
// gets a key is noted when Qt announces it, by ShortcutOverride, since the menu may close on that;
// Wayland then sends the key itself to this window.
bool ModalWindow::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && object->isWindowType()) {
    content_.menu_takes_key = QApplication::activePopupWidget() != nullptr;
  }
  auto* widget = qobject_cast<QWidget*>(object);
  if (!widget || widget->window() != this) return false;
  if (event->type() == QEvent::KeyPress && !content_.menu_takes_key) {
    return HandleKey(*static_cast<QKeyEvent*>(event));
  }
  if (event->type() == QEvent::KeyRelease) {
    const auto* key = static_cast<QKeyEvent*>(event);
    content_.released_key = key->key();
    content_.released_at = key->timestamp();
  }
  if (event->type() == QEvent::ToolTip) {
    return ShowCutText(widget, static_cast<QHelpEvent*>(event)->globalPos());
  }
  return false;
}

// A key that is held down acts once, and not at all if it has been held since the dialog before or
// was meant for another program. Only in an edit text a held space bar goes on typing.
bool ModalWindow::HandleKey(QKeyEvent& key) {
  const bool expected = content_.grace.IsOver();
  const bool acts = expected && !Repeats(key);
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (acts) Send({.kind = Action::Kind::kReturn, .text = {}});
      return true;
    case Qt::Key_Escape:
      if (acts) Send({.kind = Action::Kind::kEscape, .text = {}});
      return true;
    case Qt::Key_Space:
      if (!acts && !(expected && qobject_cast<QLineEdit*>(focusWidget()))) return true;
      break;
    case Qt::Key_F1:
      ShowCutTextsOfFocus();
      return true;
    default:
      break;
  }
  return TypesNothing(key) || PassToFirstInput(key);
}

// Without a control that has the focus, what is typed goes to the first input and so does the
// focus.
bool ModalWindow::PassToFirstInput(QKeyEvent& key) {
  if (focusWidget() != this || !ActsOnInput(key)) return false;
  const auto input = std::find_if(content_.tab_order.begin(), content_.tab_order.end(), CanFocus);
  if (input == content_.tab_order.end() || qobject_cast<QPushButton*>(*input)) return false;
  (*input)->setFocus(Qt::TabFocusReason);
  QCoreApplication::sendEvent(*input, &key);
  return true;
}

// An X server reports a held key as pairs of release and press, each with one timestamp. Qt takes a
// pair for a repetition only if both have arrived when it looks. A key that has been offered to a
// screen reader first comes without a time.
bool ModalWindow::Repeats(const QKeyEvent& key) const {
  const bool at_once = key.timestamp() != 0 && key.timestamp() == content_.released_at;
  return key.isAutoRepeat() || (at_once && key.key() == content_.released_key);
}

QStringList ModalWindow::CutTexts() const {
  QStringList texts;
  for (const ControlView* view : content_.views) {
    if (const QString text = view->CutText(); !text.isEmpty()) texts.push_back(text);
  }
  return texts;
}

bool ModalWindow::ShowCutText(const QObject* object, const QPoint& position) {
  for (ControlView* view : content_.views) {
    if (view->Widget() != object) continue;
    ShowToolTip(view->CutText(), position, this);
    return true;
  }
  return false;
}

// Whether the text belongs to the control: it is the control's own, its label's, or the message,
// which belongs to all.
bool ModalWindow::BelongsTo(ControlView& text, const QWidget* control) const {
  const auto* label = qobject_cast<QLabel*>(text.Widget());
  return text.Widget() == control ||
         (label && (label->buddy() == control || label->buddy() == this));
}

// What a pointer would find by resting on one text after the other.
void ModalWindow::ShowCutTextsOfFocus() {
  QWidget* const focus = focusWidget() ? focusWidget() : this;
  QStringList texts;
  for (ControlView* view : content_.views) {
    if (BelongsTo(*view, focus)) texts.push_back(view->CutText());
  }
  texts.removeAll(QString());
  const QRect place = focus->inputMethodQuery(Qt::ImCursorRectangle).toRect();
  ShowToolTip(texts.join('\n'), focus->mapToGlobal(place.bottomLeft()), this);
}

void ModalWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  Send({.kind = Action::Kind::kClose, .text = {}});
}

// If the user minimised the window during its last dialog, Qt cannot restore it without showing it,
// so the next dialog gets a new one on the screen.
void ModalWindow::DropNativeWindow() {
  destroy();
  setWindowState(Qt::WindowNoState);
}

// Above the host's window alone, if there is one.
void ModalWindow::StandAboveHostWindow() {
  if (HostWindow() == 0) return;
  setWindowFlag(Qt::WindowStaysOnTopHint, !HostWindowRect());
  host_window_.reset(QWindow::fromWinId(HostWindow()));
  winId();  // makes the native window
  if (host_window_) windowHandle()->setTransientParent(host_window_.get());
}

}  // namespace desktop
