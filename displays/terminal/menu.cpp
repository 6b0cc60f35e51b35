#include "displays/terminal/menu.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kMostMeasured = 200;  // items whose widths count for the menu's

}  // namespace

Menu::Menu(const std::vector<std::string>& items, int item)
    : items_(items), item_(std::clamp(item, 0, std::max(Count() - 1, 0))) {}

// Below the control if there is room for it, else above, else wherever there is most.
Area Menu::FrameAt(const Canvas& screen, const Area& place) const {
  int width = place.width;
  for (int i = 0; i < std::min(Count(), kMostMeasured); ++i) {
    width = std::max(width, WidthOf(OneLine(items_[static_cast<std::size_t>(i)])) + 4);
  }
  width = std::min(width, screen.Width());
  const int height = std::min(Count() + 2, screen.Height());
  const int column = std::clamp(place.column, 0, screen.Width() - width);
  int row = place.row + 1;
  if (row + height > screen.Height()) row = place.row - height;
  if (row < 0) row = std::clamp(place.row - height / 2, 0, screen.Height() - height);
  return {row, column, height, width};
}

void Menu::Draw(const Canvas& screen, const Area& place) {
  const Area frame = FrameAt(screen, place);
  inside_ = {frame.row + 1, frame.column + 1, frame.height - 2, frame.width - 2};
  top_ = ScrollTo(item_, top_, inside_.height, Count());
  screen.Fill(frame, Style::kPlain);
  screen.Frame(frame, {});
  const Canvas canvas = screen.Part(inside_);
  for (int line = 0; line < std::min(inside_.height, Count() - top_); ++line) {
    const int item = top_ + line;
    const bool current = item == item_;
    const Style style = current ? Style::kFocused : Style::kPlain;
    const Line text = OneLine(items_[static_cast<std::size_t>(item)]);
    canvas.Fill({line, 0, 1, inside_.width}, style);
    canvas.Put(line, 1, Elide(text, inside_.width - 2), style);
    if (current) canvas.SetCursor(line, 1);
  }
  const int edge = frame.column + frame.width - 1;
  if (top_ > 0) screen.Arrow(frame.row + 1, edge, false, Style::kFrame);
  if (top_ + inside_.height < Count()) {
    screen.Arrow(frame.row + frame.height - 2, edge, true, Style::kFrame);
  }
}

Menu::State Menu::Handle(const Key& key) {
  if (key.kind == Key::Kind::kEscape) return State::kDropped;
  if (key.kind == Key::Kind::kReturn || (key.IsSign(L' ') && !type_ahead_.Continues(key))) {
    return State::kChosen;
  }
  const int moved = RowAfterKey(key, item_, Count(), std::max(inside_.height - 1, 1));
  const int found = moved >= 0 ? moved : type_ahead_.Find(key, items_, item_);
  if (found >= 0) item_ = found;
  return State::kOpen;
}

Menu::State Menu::Handle(const Click& click) {
  if (click.wheel != 0) {
    item_ = std::clamp(item_ + click.wheel, 0, Count() - 1);
    return State::kOpen;
  }
  if (!inside_.Holds(click.row, click.column)) return State::kDropped;
  item_ = std::min(top_ + click.row - inside_.row, Count() - 1);
  return State::kChosen;
}

}  // namespace terminal
