#include "displays/terminal/static_text.h"

#include <algorithm>

#include "displays/terminal/layout.h"

namespace terminal {
namespace {

constexpr int kArrowRoom = 2;
constexpr int kSystemFont = 0;  // which is bold

}  // namespace

StaticText::StaticText(const display::Control& control)
    : is_message_(IsMessage(control)), is_strong_(control.font == kSystemFont) {}

void StaticText::Update(const display::Control& control) {
  text_ = control.text.value_or("");
  enabled_ = control.enabled;
}

Style StaticText::TextStyle() const {
  if (!enabled_) return Style::kDisabled;
  return is_strong_ ? Style::kStrong : Style::kPlain;
}

void StaticText::Draw(const Canvas& canvas, bool focused) {
  if (is_message_) {
    DrawMessage(canvas, focused);
  } else {
    DrawLabel(canvas);
  }
}

void StaticText::DrawLabel(const Canvas& canvas) const {
  canvas.Put(0, 0, Elide(OneLine(text_), canvas.Width()), TextStyle());
}

void StaticText::DrawMessage(const Canvas& canvas, bool focused) {
  std::vector<Line> lines = Wrap(text_, canvas.Width());
  height_ = canvas.Height();
  scrolls_ = static_cast<int>(lines.size()) > height_;
  if (scrolls_) lines = Wrap(text_, std::max(canvas.Width() - kArrowRoom, 1));
  lines_ = static_cast<int>(lines.size());
  top_ = std::clamp(top_, 0, std::max(lines_ - height_, 0));
  for (int row = 0; row < std::min(height_, lines_ - top_); ++row) {
    const int line = top_ + row;
    canvas.Put(row, 0, lines[static_cast<std::size_t>(line)], TextStyle());
  }
  const Style arrows = focused ? Style::kFocused : Style::kFrame;
  if (top_ > 0) canvas.Arrow(0, canvas.Width() - 1, false, arrows);
  if (top_ + height_ < lines_) canvas.Arrow(height_ - 1, canvas.Width() - 1, true, arrows);
  if (focused) canvas.SetCursor(0, 0);
}

bool StaticText::Handle(const Key& key) {
  using Kind = Key::Kind;
  switch (key.kind) {
    case Kind::kUp:
      return Scroll(-1), true;
    case Kind::kDown:
      return Scroll(1), true;
    case Kind::kPageUp:
      return Scroll(-height_), true;
    case Kind::kPageDown:
      return Scroll(height_), true;
    case Kind::kHome:
      return Scroll(-lines_), true;
    case Kind::kEnd:
      return Scroll(lines_), true;
    default:
      return false;
  }
}

bool StaticText::Scroll(int rows) {
  const int before = top_;
  top_ = std::clamp(top_ + rows, 0, std::max(lines_ - height_, 0));
  return top_ != before;
}

}  // namespace terminal
