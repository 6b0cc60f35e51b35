#include "displays/desktop/masked_passwords.h"

#include <QAccessible>
#include <QLineEdit>
#include <QStyle>

namespace desktop {
namespace {

void Tell(QAccessibleEvent* event);

// Hands the event to the screen reader, and not to Tell once more.
void PassOn(QAccessibleEvent* event) {
  QAccessible::installUpdateHandler(nullptr);
  QAccessible::updateAccessibility(event);
  QAccessible::installUpdateHandler(Tell);
}

QString Mask(const QLineEdit& field, const QString& text) {
  const int sign = field.style()->styleHint(QStyle::SH_LineEdit_PasswordCharacter, nullptr, &field);
  return {text.size(), QChar(sign)};
}

void TellMasked(QLineEdit& field, QAccessibleEvent* event) {
  if (const auto* in = dynamic_cast<QAccessibleTextInsertEvent*>(event)) {
    QAccessibleTextInsertEvent masked(&field, in->changePosition(),
                                      Mask(field, in->textInserted()));
    PassOn(&masked);
  } else if (const auto* out = dynamic_cast<QAccessibleTextRemoveEvent*>(event)) {
    QAccessibleTextRemoveEvent masked(&field, out->changePosition(),
                                      Mask(field, out->textRemoved()));
    PassOn(&masked);
  } else if (const auto* both = dynamic_cast<QAccessibleTextUpdateEvent*>(event)) {
    QAccessibleTextUpdateEvent masked(&field, both->changePosition(),
                                      Mask(field, both->textRemoved()),
                                      Mask(field, both->textInserted()));
    PassOn(&masked);
  } else {
    PassOn(event);  // it holds no text
  }
}

void Tell(QAccessibleEvent* event) {
  auto* field = qobject_cast<QLineEdit*>(event->object());
  if (field && field->echoMode() == QLineEdit::Password) return TellMasked(*field, event);
  PassOn(event);
}

}  // namespace

void TellPasswordsMasked() { QAccessible::installUpdateHandler(Tell); }

}  // namespace desktop
