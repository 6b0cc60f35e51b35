#include "displays/terminal/alert.h"

#include "displays/terminal/layout.h"

namespace terminal {
namespace {

using display::Control;
using display::ControlKind;

constexpr std::int16_t kWidth = 425;
constexpr std::int16_t kTextLeft = 48;

Control MakeControl(ControlKind kind, int id, const Rect& rect, const std::string& text) {
  Control control;
  control.kind = kind;
  control.id = id;
  control.rect = rect;
  control.text = text;
  return control;
}

void AddText(display::Window& window, const std::string& text, std::int16_t top, int font) {
  if (text.empty()) return;
  const Rect rect{top, kTextLeft, static_cast<std::int16_t>(top + 15), kWidth - 8};
  window.controls.push_back(MakeControl(ControlKind::kStatic, control_id::kMessage, rect, text));
  window.controls.back().font = font;
}

void AddButton(display::Window& window, int number, const std::optional<std::string>& text,
               std::int16_t left, bool is_default) {
  if (!text) return;
  const Rect rect{75, left, 95, static_cast<std::int16_t>(left + 95)};
  Control button = MakeControl(ControlKind::kButton, control_id::Button(number), rect, *text);
  button.is_default = is_default;
  window.controls.push_back(button);
}

}  // namespace

display::Window WindowOf(const display::Alert& alert) {
  display::Window window{"", {0, 0, 105, kWidth}, {}};
  AddText(window, alert.message, 15, 0);
  AddText(window, alert.explanation, 45, 1);
  const int marked = alert.return_button;
  AddButton(window, 1, alert.default_button, 322, marked == 1);
  AddButton(window, 2, alert.cancel_button, 217, marked == 2);
  AddButton(window, 3, alert.other_button, 8, marked == 3);
  for (Control& control : window.controls) {
    if (control.kind != ControlKind::kButton) continue;
    control.focused = true;
    break;
  }
  // In the middle of the screen, a third of what is left above it.
  window.content.left = (kMainScreen.right - kWidth) / 2;
  window.content.right = static_cast<std::int16_t>(window.content.left + kWidth);
  window.content.top = static_cast<std::int16_t>((kMainScreen.bottom - window.content.bottom) / 3);
  window.content.bottom = static_cast<std::int16_t>(window.content.bottom + window.content.top);
  return window;
}

}  // namespace terminal
