#include "displays/desktop/popup.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <string>

#include "displays/desktop/accessible_factory.h"
#include "displays/desktop/dialog_style.h"
#include "displays/desktop/shown_text.h"
#include "platform/carbon/control_ids.h"

namespace desktop {
namespace {

using display::Action;

constexpr int kItemHeight = 20;
constexpr int kMenuFrame = 1;
constexpr int kScrollBarRoom = 20;
constexpr int kMostWidth = 600;

QStringList ItemTexts(const display::Control& control) {
  QStringList texts;
  for (const std::string& item : *control.items) texts += ToQString(item);
  return texts;
}

// A pop-up for a screen reader. Qt's own would go by the item that it shows, not by its label.
class AccessiblePopup : public QAccessibleWidget {
 public:
  explicit AccessiblePopup(Popup* popup)
      : QAccessibleWidget(popup, QAccessible::ComboBox), popup_(popup) {}

  QString text(QAccessible::Text text) const override {
    const bool value = text == QAccessible::Value || text == QAccessible::Description;
    return value ? popup_->currentText() : QAccessibleWidget::text(text);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = popup_->view()->isVisible();
    return state;
  }

  // Its one child is the list of the items.
  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(popup_->view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child && child->object() == popup_->view() ? 0 : -1;
  }

  QStringList actionNames() const override { return {showMenuAction(), setFocusAction()}; }
  void doAction(const QString& action) override {
    if (action == showMenuAction()) popup_->showPopup();
    if (action == setFocusAction()) popup_->setFocus();
  }

 private:
  Popup* popup_;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* popup = dynamic_cast<Popup*>(object);
  return popup ? new AccessiblePopup(popup) : nullptr;
}

}  // namespace

Popup::Popup(const display::Control& control, QWidget* parent, const Report& report)
    : QComboBox(parent), menu_(new TypedSearch<QListView>) {
  InstallAccessibleFactory<MakeAccessible>();
  setView(menu_);
  setFont(SmallFont());
  setGeometry(RectOf(control).adjusted(0, -kFieldFrame, 1, kFieldFrame));
  setItemDelegate(new LineDelegate(kItemHeight, kFieldFrame - kMenuFrame, this));
  setAttribute(Qt::WA_Hover);
  if (control.items) addItems(ItemTexts(control));
  setMaxVisibleItems(std::max(1, count()));  // as many as the screen has room for
  connect(this, &QComboBox::currentIndexChanged, this, [this](int item) {
    if (hasFocus()) TellItem(item);
  });
  // A screen reader selects an item past our keys and pointer, which make it the current one.
  opened_.setSingleShot(true);
  connect(&opened_, &QTimer::timeout, this, [this] { TellItem(currentIndex()); });
  connect(
      menu_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
      [this](const QItemSelection& added) {
        if (!added.isEmpty()) ChooseForeign(added.first().top());
      },
      Qt::QueuedConnection);
  connect(
      this, &QComboBox::activated, this,
      [number = control_id::FieldNumber(control.id), report](int index) {
        report({.kind = Action::Kind::kChoose, .number = number, .item = index + 1, .text = {}});
      });
}

void Popup::Update(const display::Control& control) {
  setCurrentIndex(control.value.value_or(0) - 1);
  setEnabled(control.enabled);
  setVisible(control.visible);
}

QString Popup::CutText() const {
  return IsCut(currentText(), font(), TextRect().width()) ? currentText() : QString();
}

// The menu is as wide as its items, within reason.
void Popup::showPopup() {
  if (count() == 0) return;
  view()->setMinimumWidth(std::min(view()->sizeHintForColumn(0) + kScrollBarRoom, kMostWidth));
  QComboBox::showPopup();
  opened_.start(0);  // told after the menu itself
}

// What Qt tells of a change goes unheard, since it has readers ask for a selection that there is
// not. They tell what the focus moves to.
void Popup::TellItem(int item) const {
  if (!QAccessible::isActive()) return;
  QAccessibleInterface* menu = QAccessible::queryAccessibleInterface(menu_);
  QAccessibleInterface* shown = menu ? menu->child(item) : nullptr;
  if (!shown) return;
  QAccessibleEvent event(shown, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

void Popup::ChooseForeign(int item) {
  const bool selected = menu_->selectionModel()->isSelected(model()->index(item, 0));
  if (!selected || item == menu_->currentIndex().row() || item == currentIndex()) return;
  hidePopup();
  setCurrentIndex(item);
  emit activated(item);
}

QRect Popup::TextRect() const { return rect().adjusted(kFieldFrame, 0, -22, 0); }

void Popup::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  DrawPopupFrame(painter, *this, view()->isVisible());
  painter.setPen(ButtonTextColor(*this, false));
  DrawOneLine(painter, TextRect(), currentText());
}

// A blank in what is being typed opens no menu.
void Popup::keyPressEvent(QKeyEvent* event) {
  if (!menu_->Continues(*event)) return QComboBox::keyPressEvent(event);
  QKeyEvent letter(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, event->text());
  QComboBox::keyPressEvent(&letter);
}

// Turning the wheel over a closed pop-up would choose by accident.
void Popup::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace desktop
