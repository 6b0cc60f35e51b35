#include "displays/terminal/push_button.h"

#include <utility>

namespace terminal {

using display::Action;

PushButton::PushButton(const display::Control& control, Report report)
    : report_(std::move(report)), number_(control_id::ButtonNumber(control.id)) {}

void PushButton::Update(const display::Control& control) {
  text_ = control.text.value_or("");
  is_default_ = control.is_default;
  enabled_ = control.enabled;
}

// The default button is marked by signs, too, for who sees no bold text.
void PushButton::Draw(const Canvas& canvas, bool focused) {
  const Style edge = is_default_ ? Style::kStrong : Style::kPlain;
  const Style own = enabled_ ? edge : Style::kDisabled;
  const Style style = focused ? Style::kFocused : own;
  const Line left = OneLine(is_default_ ? "[>" : "[");
  const Line right = OneLine(is_default_ ? "<]" : "]");
  const int edges = WidthOf(left);
  const Line text = Elide(OneLine(text_), canvas.Width() - 2 * edges);
  const int start = edges + (canvas.Width() - 2 * edges - WidthOf(text)) / 2;
  canvas.Fill({0, 0, 1, canvas.Width()}, style);
  canvas.Put(0, 0, left, style);
  canvas.Put(0, start, text, style);
  canvas.Put(0, canvas.Width() - edges, right, style);
  if (focused) canvas.SetCursor(0, start);
}

bool PushButton::Handle(const Key& key) {
  if (!key.IsSign(L' ')) return false;
  Press();
  return true;
}

void PushButton::Handle(const Click& /*click*/) { Press(); }

void PushButton::Press() const {
  if (!enabled_) return;
  report_({.kind = Action::Kind::kPress, .number = number_, .text = {}});
}

}  // namespace terminal
