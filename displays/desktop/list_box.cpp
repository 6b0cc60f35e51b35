#include "displays/desktop/list_box.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <string>
#include <utility>

#include "displays/desktop/shown_text.h"

namespace desktop {
namespace {

using display::Action;

constexpr int kUsualRowHeight = 16;  // for a description that says none
constexpr int kRowMargin = 5;
constexpr int kFrame = 2;  // outside the rectangle

Action::Kind KindFor(Qt::KeyboardModifiers modifiers) {
  if (modifiers & Qt::ControlModifier) return Action::Kind::kRowToggle;
  if (modifiers & Qt::ShiftModifier) return Action::Kind::kRowExtend;
  return Action::Kind::kRow;
}

// How many rows there are up to the last one that holds a text, but one at least.
std::size_t LineCount(const std::vector<std::string>& rows) {
  const auto last =
      std::find_if(rows.rbegin(), rows.rend(), [](const std::string& row) { return !row.empty(); });
  return std::max<std::size_t>(1, static_cast<std::size_t>(rows.rend() - last));
}

}  // namespace

ListBox::ListBox(const display::Control& control, QWidget* parent, Report report)
    : TypedSearch(parent),
      report_(std::move(report)),
      rows_(static_cast<int>(control.rows->size())),
      row_height_(control.cell ? control.cell->height : kUsualRowHeight),
      lines_(new LineDelegate(row_height_, kRowMargin, this)) {
  setFont(SmallFont());
  setGeometry(RectOf(control).adjusted(-kFrame, -kFrame, kFrame, kFrame));
  setFrameShape(QFrame::StyledPanel);
  setItemDelegate(lines_);
  setUniformItemSizes(true);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  verticalScrollBar()->setSingleStep(row_height_);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSelectionMode(control.multiple ? QAbstractItemView::MultiSelection
                                    : QAbstractItemView::SingleSelection);
  const std::size_t lines = std::min(LineCount(*control.rows), control.rows->size());
  for (std::size_t i = 0; i < lines; ++i) addItem(ToQString((*control.rows)[i]));
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ListBox::ReportForeignSelection);
}

void ListBox::Update(const display::Control& control) {
  QItemSelection selection;
  selected_empty_.clear();
  for (const int row : control.selected) {
    const QModelIndex index = model()->index(row - 1, 0);
    if (index.isValid()) {
      selection.select(index, index);
    } else {
      selected_empty_.push_back(row - 1);
    }
  }
  viewport()->update();
  updating_ = true;
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  updating_ = false;
  setEnabled(control.enabled);
  setVisible(control.visible);
}

// That of the row that the keys are on.
QString ListBox::CutText() const { return lines_->CutText(*this, currentIndex()); }

QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex&,
                                                              const QEvent*) const {
  return QItemSelectionModel::NoUpdate;
}

// The row under the pointer; below the last row it is none of the list's.
int ListBox::RowAt(const QMouseEvent& event) const {
  return (event.position().toPoint().y() + verticalScrollBar()->value()) / row_height_;
}

void ListBox::mousePressEvent(QMouseEvent* event) {
  const int row = RowAt(*event);
  if (event->button() != Qt::LeftButton || row >= rows_) return;
  setCurrentIndex(model()->index(row, 0));
  const QPoint point = viewport()->mapTo(window(), event->position().toPoint());
  Choose(KindFor(event->modifiers()), row, point.x());
}

// The second press of a double click is a click like the first.
void ListBox::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

// Dragging selects the lines between, if several may be selected.
void ListBox::mouseMoveEvent(QMouseEvent* event) {
  const bool drags = event->buttons() & Qt::LeftButton && chosen_ >= 0;
  if (!drags || selectionMode() != QAbstractItemView::MultiSelection) return;
  const int row = std::clamp(RowAt(*event), 0, count() - 1);
  if (row == std::min(chosen_, count() - 1)) return;
  setCurrentIndex(model()->index(row, 0));
  Choose(Action::Kind::kRowExtend, row, display::kRowMiddle);
}

void ListBox::keyPressEvent(QKeyEvent* event) {
  const int row = currentRow();
  const bool searches = Continues(*event);
  if (event->key() == Qt::Key_Space && row >= 0 && !searches) {
    Choose(KindFor(event->modifiers()), row, display::kRowMiddle);
    return;
  }
  if (event->matches(QKeySequence::SelectAll)) return ChooseAll();
  const int moved = RowAfterKey(*event);
  if (moved >= 0) {
    setCurrentIndex(model()->index(moved, 0));  // setCurrentRow would select it
  } else {
    TypedSearch::keyPressEvent(event);
  }
  if (currentRow() == row) return;
  const Qt::KeyboardModifiers held = event->modifiers();
  if (moved >= 0 && held & Qt::ControlModifier && !(held & Qt::ShiftModifier)) return;
  const bool extends = held & Qt::ShiftModifier && moved >= 0;
  Choose(extends ? Action::Kind::kRowExtend : Action::Kind::kRow, currentRow(),
         display::kRowMiddle);
}

// From one end to the other, beginning with the end that was not chosen last: the same row twice in
// a row may close the dialog.
void ListBox::ChooseAll() {
  const int last = count() - 1;
  if (selectionMode() != QAbstractItemView::MultiSelection) return;
  if (selectionModel()->selectedRows().size() == count() && selected_empty_.empty()) return;
  const int from = chosen_ == 0 ? last : 0;
  if (from == chosen_) return;
  Choose(Action::Kind::kRow, from, display::kRowMiddle);
  if (last > 0) Choose(Action::Kind::kRowExtend, last - from, display::kRowMiddle);
}

// The row that a movement key leads to, or -1 for any other key.
int ListBox::RowAfterKey(const QKeyEvent& key) const {
  const int row = currentRow();
  const int last = count() - 1;
  const int page = viewport()->height() / row_height_ - 1;
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
  chosen_ = row;
  report_({.kind = kind, .number = row + 1, .x = x, .text = {}});
}

void ListBox::paintEvent(QPaintEvent* event) {
  TypedSearch::paintEvent(event);
  QPainter painter(viewport());
  for (const int row : selected_empty_) {
    const int top = row * row_height_ - verticalScrollBar()->value();
    painter.fillRect(0, top, viewport()->width(), row_height_, palette().highlight());
  }
}

// The scroll bar reaches the empty rows, too.
void ListBox::updateGeometries() {
  TypedSearch::updateGeometries();
  verticalScrollBar()->setRange(0, std::max(0, rows_ * row_height_ - viewport()->height()));
}

// The frame shows the focus. Qt would step onto the first row, which nobody has chosen.
void ListBox::focusInEvent(QFocusEvent* event) {
  const QModelIndex current = currentIndex();
  TypedSearch::focusInEvent(event);
  setCurrentIndex(current);
  update();
}

void ListBox::focusOutEvent(QFocusEvent* event) {
  TypedSearch::focusOutEvent(event);
  update();
}

}  // namespace desktop
