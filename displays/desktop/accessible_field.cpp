#include "displays/desktop/accessible_field.h"

#include <QAccessibleWidget>
#include <QFontMetrics>

#include "displays/desktop/accessible_factory.h"
#include "displays/desktop/edit_text.h"

namespace desktop {
namespace {

class AccessibleField : public QAccessibleWidget,
                        public QAccessibleTextInterface,
                        public QAccessibleEditableTextInterface {
 public:
  explicit AccessibleField(EditText* field)
      : QAccessibleWidget(field, QAccessible::EditableText), field_(field) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface) {
      return static_cast<QAccessibleEditableTextInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.selectableText = true;
    state.passwordEdit = IsSecret();
    return state;
  }

  // Of a password the mask.
  QString text(QAccessible::Text text) const override {
    return text == QAccessible::Value ? field_->displayText() : QAccessibleWidget::text(text);
  }
  void setText(QAccessible::Text what, const QString& text) override {
    if (what == QAccessible::Value) field_->setText(text);
  }

  // Of a password nothing at all.
  QString text(int start, int end) const override {
    return IsSecret() ? QString() : field_->text().mid(start, end - start);
  }
  int characterCount() const override { return static_cast<int>(field_->text().size()); }

  int cursorPosition() const override { return field_->cursorPosition(); }
  void setCursorPosition(int position) override { field_->setCursorPosition(position); }

  int selectionCount() const override { return field_->hasSelectedText() ? 1 : 0; }
  void selection(int, int* start, int* end) const override {
    const bool selected = field_->hasSelectedText();
    *start = selected ? field_->selectionStart() : 0;
    *end = selected ? field_->selectionEnd() : 0;
  }
  void addSelection(int start, int end) override { setSelection(0, start, end); }
  void setSelection(int, int start, int end) override { field_->setSelection(start, end - start); }
  void removeSelection(int) override { field_->deselect(); }

  // None, and that for the whole text.
  QString attributes(int, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }

  QRect characterRect(int offset) const override {
    const QRect caret = field_->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const QFontMetrics metrics = field_->fontMetrics();
    const QString shown = field_->displayText();
    const auto width = [&](int from, int count) {
      return metrics.horizontalAdvance(shown.mid(from, count));
    };
    const int x = caret.center().x() + width(0, offset) - width(0, cursorPosition());
    return {field_->mapToGlobal(QPoint(x, caret.y())), QSize(width(offset, 1), caret.height())};
  }
  int offsetAtPoint(const QPoint& point) const override {
    return field_->cursorPositionAt(field_->mapFromGlobal(point));
  }
  void scrollToSubstring(int start, int) override { setCursorPosition(start); }

  void insertText(int offset, const QString& text) override {
    field_->setText(field_->text().insert(offset, text));
  }
  void deleteText(int start, int end) override {
    field_->setText(field_->text().remove(start, end - start));
  }
  void replaceText(int start, int end, const QString& text) override {
    field_->setText(field_->text().replace(start, end - start, text));
  }

 private:
  bool IsSecret() const { return field_->echoMode() != QLineEdit::Normal; }

  EditText* field_;
};

QAccessibleInterface* MakeAccessibleField(const QString&, QObject* object) {
  auto* field = dynamic_cast<EditText*>(object);
  return field ? new AccessibleField(field) : nullptr;
}

}  // namespace

void InstallAccessibleFields() { InstallAccessibleFactory<MakeAccessibleField>(); }

}  // namespace desktop
