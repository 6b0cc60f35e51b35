#include <algorithm>

#include "platform/carbon/active_display.h"
#include "platform/carbon/objects.h"
#include "platform/carbon/text_conversion.h"

namespace carbon {
namespace {

Rect MovedTo(const Rect& rect, int left, int top) {
  return {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
          static_cast<std::int16_t>(top + rect.bottom - rect.top),
          static_cast<std::int16_t>(left + rect.right - rect.left)};
}

Rect CentredOn(const Rect& screen, const Rect& rect) {
  const int width = rect.right - rect.left;
  const int height = rect.bottom - rect.top;
  return MovedTo(rect, screen.left + (screen.right - screen.left - width) / 2,
                 screen.top + (screen.bottom - screen.top - height) / 2);
}

bool IsInput(const Control& control) {
  return control.kind != display::ControlKind::kStatic &&
         control.kind != display::ControlKind::kButton;
}

}  // namespace

Objects& All() {
  static auto& objects = *new Objects;
  return objects;
}

void Dispose(WindowRef window) {
  const auto object = Find(window);
  if (!object) return;
  for (const ControlRef control : object->controls) {
    All().lists.Remove(Find(control)->list);
    All().controls.Remove(control);
  }
  for (const EventHandlerRef handler : object->handlers) All().handlers.Remove(handler);
  All().windows.Remove(window);
}

Rect ContentBounds(Window& window) {
  if (window.centred) {
    window.content = CentredOn(ActiveDisplay().MainScreen(), window.content);
    window.centred = false;
  }
  return window.content;
}

}  // namespace carbon

using carbon::Find;
using carbon::With;

OSStatus CreateNewWindow(std::uint32_t /*window_class*/, std::uint32_t attributes,
                         const Rect* content, WindowRef* window) {
  carbon::Window object;
  object.content = *content;
  object.standard_handler = (attributes & kWindowStandardHandlerAttribute) != 0;
  return carbon::AddTo(carbon::All().windows, std::move(object), window);
}

void DisposeWindow(WindowRef window) { carbon::Dispose(window); }

OSStatus RepositionWindow(WindowRef window, WindowRef /*parent*/, std::uint32_t method) {
  return With(Find(window), [method](carbon::Window& object) {
    object.centred = method == kWindowCenterOnMainScreen;
  });
}

OSStatus SetWindowTitleWithCFString(WindowRef window, CFStringRef title) {
  return With(Find(window),
              [title](carbon::Window& object) { object.title = carbon::ToUtf16(title); });
}

void MoveWindow(WindowRef window, std::int16_t h, std::int16_t v, Boolean /*front*/) {
  With(Find(window), [=](carbon::Window& object) {
    object.centred = false;
    object.content = carbon::MovedTo(object.content, h, v);
  });
}

OSStatus GetWindowBounds(WindowRef window, std::uint16_t /*region*/, Rect* bounds) {
  return With(Find(window),
              [bounds](carbon::Window& object) { *bounds = carbon::ContentBounds(object); });
}

OSStatus SetWindowDefaultButton(WindowRef window, ControlRef button) {
  return With(Find(window), [button](carbon::Window& object) { object.default_button = button; });
}

OSStatus SetWindowCancelButton(WindowRef window, ControlRef button) {
  return With(Find(window), [button](carbon::Window& object) { object.cancel_button = button; });
}

OSStatus AdvanceKeyboardFocus(WindowRef window) {
  return With(Find(window), [](carbon::Window& object) {
    const auto& controls = object.controls;
    const auto is_input = [](ControlRef control) { return carbon::IsInput(*Find(control)); };
    auto current = std::find(controls.begin(), controls.end(), object.focus);
    if (current != controls.end()) ++current;
    auto next = std::find_if(current, controls.end(), is_input);
    if (next == controls.end()) next = std::find_if(controls.begin(), controls.end(), is_input);
    if (next != controls.end()) object.focus = *next;
  });
}

// How a window looks and when it is drawn is the display's: it shows a window when its modal loop
// starts, in front of all others, on the theme's background, under an arrow.
OSStatus SetThemeWindowBackground(WindowRef window, std::int16_t /*brush*/, Boolean /*redraw*/) {
  return Find(window) ? noErr : paramErr;
}

void ShowWindow(WindowRef /*window*/) {}

void BringToFront(WindowRef /*window*/) {}

void SelectWindow(WindowRef /*window*/) {}

void InitCursor() {}
