#include "displays/desktop/list_box.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <string>
#include <utility>

#include "displays/desktop/dialog_style.h"
#include "displays/desktop/shown_text.h"

namespace desktop {
namespace {

using display::Action;

constexpr int kUsualRowHeight = 16;  // for a description that says none
constexpr int kFrame = 2;            // outside the rectangle

Action::Kind KindFor(Qt::KeyboardModifiers modifiers) {
  if (modifiers & Qt::ControlModifier) return Action::Kind::kRowToggle;
  if (modifiers & Qt::ShiftModifier) return Action::Kind::kRowExtend;
  return Action::Kind::kRow;
}

}  // namespace

ListBox::ListBox(const display::Control& control, QWidget* parent, Report report)
    : QListWidget(parent), report_(std::move(report)) {
  setFont(SmallFont());
  setGeometry(RectOf(control).adjusted(-kFrame, -kFrame, kFrame, kFrame));
  setFrameShape(QFrame::StyledPanel);
  const int row_height = control.cell ? control.cell->height : kUsualRowHeight;
  setItemDelegate(new LineDelegate(row_height, this));
  setUniformItemSizes(true);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  verticalScrollBar()->setSingleStep(row_height);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSelectionMode(control.multiple ? QAbstractItemView::MultiSelection
                                    : QAbstractItemView::SingleSelection);
  for (const std::string& row : *control.rows) addItem(ToQString(row));
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ListBox::ReportForeignSelection);
}

void ListBox::Update(const display::Control& control) {
  QItemSelection selection;
  for (const int row : control.selected) {
    const QModelIndex index = model()->index(row - 1, 0);
    selection.select(index, index);
  }
  updating_ = true;
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  updating_ = false;
  setEnabled(control.enabled);
  setVisible(control.visible);
}

QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex&,
                                                              const QEvent*) const {
  return QItemSelectionModel::NoUpdate;
}

void ListBox::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !index.isValid()) return;
  setCurrentIndex(index);
  const QPoint point = viewport()->mapTo(window(), event->position().toPoint());
  Choose(KindFor(event->modifiers()), index.row(), point.x());
}

// The second press of a double click is a click like the first.
void ListBox::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void ListBox::keyPressEvent(QKeyEvent* event) {
  const int row = currentRow();
  if (event->key() == Qt::Key_Space && row >= 0) {
    Choose(KindFor(event->modifiers()), row, display::kRowMiddle);
    return;
  }
  const int moved = RowAfterKey(*event);
  if (moved >= 0) {
    setCurrentIndex(model()->index(moved, 0));  // setCurrentRow would select it
  } else {
    QListWidget::keyPressEvent(event);  // typing the beginning of a row finds it
  }
  if (currentRow() == row) return;
  const bool extends = event->modifiers() & Qt::ShiftModifier && moved >= 0;
  Choose(extends ? Action::Kind::kRowExtend : Action::Kind::kRow, currentRow(),
         display::kRowMiddle);
}

// The row that a movement key leads to, or -1 for any other key.
int ListBox::RowAfterKey(const QKeyEvent& key) const {
  const int row = currentRow();
  const int last = count() - 1;
  const int page = viewport()->height() / sizeHintForRow(0) - 1;
  switch (key.key()) {
    case Qt::Key_Up:
      return row < 0 ? last : std::max(row - 1, 0);
    case Qt::Key_Down:
      return std::min(row + 1, last);
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return last;
    case Qt::Key_PageUp:
      return std::max(row - page, 0);
    case Qt::Key_PageDown:
      return std::min(row + page, last);
    default:
      return -1;
  }
}

// A screen reader selects past our keys and pointer.
void ListBox::ReportForeignSelection(const QItemSelection& added, const QItemSelection& removed) {
  const bool multiple = selectionMode() == QAbstractItemView::MultiSelection;
  const QItemSelection& changed = added.isEmpty() && multiple ? removed : added;
  if (updating_ || changed.isEmpty()) return;
  Choose(multiple ? Action::Kind::kRowToggle : Action::Kind::kRow, changed.first().top(),
         display::kRowMiddle);
}

void ListBox::Choose(Action::Kind kind, int row, int x) {
  report_({.kind = kind, .number = row + 1, .x = x, .text = {}});
}

// The frame shows the focus. Qt would step onto the first row, which nobody has chosen.
void ListBox::focusInEvent(QFocusEvent* event) {
  const QModelIndex current = currentIndex();
  QListWidget::focusInEvent(event);
  setCurrentIndex(current);
  update();
}

void ListBox::focusOutEvent(QFocusEvent* event) {
  QListWidget::focusOutEvent(event);
  update();
}

}  // namespace desktop
