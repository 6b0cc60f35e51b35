#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/display.h"
#include "platform/carbon/objects.h"
#include "platform/carbon/text_conversion.h"
#include "platform/carbon/window_bounds.h"
#include "platform/corefoundation/CoreFoundation.h"

namespace {

bool IsInput(const carbon::Control& control) {
  return control.kind != display::ControlKind::kStatic &&
         control.kind != display::ControlKind::kButton;
}

}  // namespace

using carbon::ApplyTo;
using carbon::Find;

OSStatus CreateNewWindow(std::uint32_t window_class, std::uint32_t attributes, const Rect* content,
                         WindowRef* window) {
  carbon::Window object;
  object.content = *content;
  object.window_class = window_class;
  object.standard_handler = (attributes & kWindowStandardHandlerAttribute) != 0;
  return carbon::AddTo(carbon::AllObjects().windows, std::move(object), window);
}

void DisposeWindow(WindowRef window) { carbon::Dispose(window); }

OSStatus RepositionWindow(WindowRef window, WindowRef /*parent*/, std::uint32_t method) {
  return ApplyTo(Find(window), [method](carbon::Window& object) {
    object.centred = method == kWindowCenterOnMainScreen;
  });
}

OSStatus SetWindowTitleWithCFString(WindowRef window, CFStringRef title) {
  return ApplyTo(Find(window),
                 [title](carbon::Window& object) { object.title = carbon::ToUtf16(title); });
}

void MoveWindow(WindowRef window, std::int16_t h, std::int16_t v, Boolean /*front*/) {
  ApplyTo(Find(window), [=](carbon::Window& object) { carbon::MoveContent(object, h, v); });
}

OSStatus GetWindowBounds(WindowRef window, std::uint16_t /*region*/, Rect* bounds) {
  return ApplyTo(Find(window),
                 [bounds](carbon::Window& object) { *bounds = carbon::ContentBounds(object); });
}

OSStatus SetWindowDefaultButton(WindowRef window, ControlRef button) {
  return ApplyTo(Find(window),
                 [button](carbon::Window& object) { object.default_button = button; });
}

OSStatus SetWindowCancelButton(WindowRef window, ControlRef button) {
  return ApplyTo(Find(window), [button](carbon::Window& object) { object.cancel_button = button; });
}

OSStatus AdvanceKeyboardFocus(WindowRef window) {
  return ApplyTo(Find(window), [](carbon::Window& object) {
    const auto& controls = object.controls;
    const auto is_input = [](ControlRef control) { return IsInput(*Find(control)); };
    auto current = std::find(controls.begin(), controls.end(), object.focus);
    if (current != controls.end()) ++current;
    auto next = std::find_if(current, controls.end(), is_input);
    if (next == controls.end()) next = std::find_if(controls.begin(), controls.end(), is_input);
    if (next != controls.end()) object.focus = *next;
  });
}

// How a window looks and when it is drawn is the display's: it shows a window when its modal loop
// starts, in front of all others, on the theme's background, under an arrow.
OSStatus SetThemeWindowBackground(WindowRef window, std::int16_t brush, Boolean /*redraw*/) {
  return ApplyTo(Find(window), [brush](carbon::Window& object) { object.background = brush; });
}

void ShowWindow(WindowRef /*window*/) {}

void BringToFront(WindowRef /*window*/) {}

void SelectWindow(WindowRef /*window*/) {}

void InitCursor() {}
