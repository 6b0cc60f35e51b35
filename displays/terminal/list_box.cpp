#include "displays/terminal/list_box.h"

#include <algorithm>
#include <utility>

namespace terminal {

using display::Action;

namespace {

constexpr int kScrollBar = 17;  // pixels at the right of the rectangle

template <class Input>
Action::Kind KindFor(const Input& input) {
  if (input.control) return Action::Kind::kRowToggle;
  return input.shift ? Action::Kind::kRowExtend : Action::Kind::kRow;
}

}  // namespace

ListBox::ListBox(const display::Control& control, Report report)
    : report_(std::move(report)), rect_(control.rect) {}

void ListBox::Update(const display::Control& control) {
  rows_ = control.rows.value_or(std::vector<std::string>());
  selected_ = control.selected;
  enabled_ = control.enabled;
}

void ListBox::Draw(const Canvas& canvas, bool focused) {
  height_ = canvas.Height();
  width_ = canvas.Width();
  top_ = ScrollTo(follow_ ? row_ : -1, top_, height_, Count());
  for (int line = 0; line < height_; ++line) DrawRow(canvas, top_ + line, line, focused);
  const Style edge = focused ? Style::kFocused : Style::kFrame;
  if (top_ > 0) canvas.Arrow(0, width_ - 1, false, edge);
  if (top_ + height_ < Count()) canvas.Arrow(height_ - 1, width_ - 1, true, edge);
  if (focused) canvas.SetCursor(std::clamp(row_ - top_, 0, height_ - 1), 1);
}

// A selected row is marked by a sign, too, for who sees no colours.
void ListBox::DrawRow(const Canvas& canvas, int row, int line, bool focused) const {
  canvas.Bar(line, 0);
  canvas.Bar(line, width_ - 1);
  if (row >= Count()) return;
  const bool selected = std::find(selected_.begin(), selected_.end(), row + 1) != selected_.end();
  const Style marked = focused ? Style::kFocused : Style::kSelected;
  const Style own = enabled_ ? Style::kPlain : Style::kDisabled;
  const Canvas inside = canvas.Part({line, 1, 1, width_ - 2});
  inside.Fill({0, 0, 1, width_ - 2}, selected ? marked : own);
  inside.Put(0, 0, OneLine(selected ? "*" : " "), selected ? marked : own);
  inside.Put(0, 2, Elide(OneLine(rows_[static_cast<std::size_t>(row)]), width_ - 5),
             selected ? marked : own);
}

bool ListBox::Handle(const Key& key) {
  if (key.kind == Key::Kind::kSign && key.sign == L' ' && !type_ahead_.Continues(key)) {
    if (row_ >= 0) Choose(KindFor(key), row_, display::kRowMiddle);
    return true;
  }
  const int moved = RowAfterKey(key, row_, LineCount(), std::max(height_ - 1, 1));
  const int found = moved >= 0 ? moved : type_ahead_.Find(key, rows_, row_);
  if (found < 0) return false;
  const bool extends = key.shift && moved >= 0;
  if (found != row_) {
    Choose(extends ? Action::Kind::kRowExtend : Action::Kind::kRow, found, display::kRowMiddle);
  }
  return true;
}

// The bar at the right scrolls by pages.
void ListBox::Handle(const Click& click) {
  if (click.column == width_ - 1) {
    Scroll(click.row < height_ / 2 ? -height_ : height_);
  } else if (enabled_ && top_ + click.row < Count()) {
    Choose(KindFor(click), top_ + click.row, WindowX(click.column));
  }
}

bool ListBox::Scroll(int rows) {
  const int before = std::exchange(top_, ScrollTo(-1, top_ + rows, height_, Count()));
  follow_ = false;
  return top_ != before;
}

// How many rows there are up to the last one that holds a text, but one at least: the empty ones
// below are the pointer's alone.
int ListBox::LineCount() const {
  const auto last = std::find_if(rows_.rbegin(), rows_.rend(),
                                 [](const std::string& row) { return !row.empty(); });
  return std::max(1, static_cast<int>(rows_.rend() - last));
}

// The middle of the column in the window, as a pointer on the desktop would have it.
int ListBox::WindowX(int column) const {
  const int pixels = rect_.right - rect_.left;
  return std::min(rect_.left + (2 * column + 1) * pixels / (2 * width_),
                  rect_.right - kScrollBar - 1);
}

void ListBox::Choose(Action::Kind kind, int row, int x) {
  row_ = row;
  follow_ = true;
  report_({.kind = kind, .number = row + 1, .x = x, .text = {}});
}

}  // namespace terminal
