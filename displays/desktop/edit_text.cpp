#include "displays/desktop/edit_text.h"

#include <sys/prctl.h>

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QMenu>
#include <algorithm>
#include <limits>

#include "displays/desktop/accessible_field.h"
#include "displays/desktop/dialog_style.h"
#include "displays/desktop/masked_passwords.h"
#include "displays/desktop/shown_text.h"
#include "platform/carbon/control_ids.h"

namespace desktop {

using display::Action;

EditText::EditText(const display::Control& control, QWidget* parent)
    : QLineEdit(parent), number_(control_id::FieldNumber(control.id)) {
  InstallAccessibleFields();
  setMaxLength(std::numeric_limits<int>::max());
  if (control.kind == display::ControlKind::kPassword) KeepSecret();
  setFont(SmallFont());
  setTextMargins(1, 0, 1, 0);  // the text begins at the rectangle: Qt keeps 3 pixels
  setGeometry(RectOf(control).adjusted(-kFieldFrame, -kFieldFrame, kFieldFrame, kFieldFrame));
  // Not textEdited: what a screen reader or a dictation puts in is the user's, too.
  connect(this, &QLineEdit::textChanged, this, [this] { edited_ = true; });
}

EditText::~EditText() { WipeHeld(); }

// The field that has the focus when its window opens is entered as by Tab: its text is selected.
void EditText::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (!entered_ && event->reason() == Qt::ActiveWindowFocusReason) selectAll();
  entered_ = true;
}

// The menu runs as its language does; the field is where it is in every language.
void EditText::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setLayoutDirection(QGuiApplication::layoutDirection());
  menu->popup(event->globalPos());
}

void EditText::KeepSecret() {
  setEchoMode(QLineEdit::Password);
  TellPasswordsMasked();
  prctl(PR_SET_DUMPABLE, 0);  // from here on no core dump
  connect(this, &QLineEdit::textChanged, this, [this](const QString& now) {
    WipeHeld();
    held_ = now;
  });
}

// In place: a string that is assigned to would be written elsewhere.
void EditText::WipeHeld() {
  auto* characters = const_cast<QChar*>(held_.constData());
  std::fill_n(characters, held_.size(), QChar());
}

// A password is never told, so the host's empty text is no reason to empty the field.
void EditText::Update(const display::Control& control) {
  const QString content = ToQString(control.text.value_or(""));
  const bool known = echoMode() == QLineEdit::Normal;
  if (known && !edited_ && content != text()) {
    setText(content);
    edited_ = false;
  }
  setEnabled(control.enabled);
  setVisible(control.visible);
}

std::optional<Action> EditText::TakeEdit() {
  if (!edited_) return std::nullopt;
  edited_ = false;
  return Action{.kind = Action::Kind::kEnter, .number = number_, .text = text().toStdString()};
}

}  // namespace desktop
