#include "platform/carbon/window_bounds.h"

#include <cstdint>

#include "platform/carbon/active_display.h"
#include "platform/carbon/display.h"

namespace carbon {
namespace {

void CentreOn(const Rect& screen, Window& window) {
  const int width = window.content.right - window.content.left;
  const int height = window.content.bottom - window.content.top;
  MoveContent(window, screen.left + (screen.right - screen.left - width) / 2,
              screen.top + (screen.bottom - screen.top - height) / 2);
}

}  // namespace

Rect ContentBounds(Window& window) {
  if (window.centred) CentreOn(ActiveDisplay().MainScreen(), window);
  return window.content;
}

void MoveContent(Window& window, int left, int top) {
  Rect& content = window.content;
  content = {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
             static_cast<std::int16_t>(top + content.bottom - content.top),
             static_cast<std::int16_t>(left + content.right - content.left)};
  window.centred = false;
}

}  // namespace carbon
