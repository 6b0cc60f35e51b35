#include <cstddef>
#include <optional>
#include <utility>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/active_display.h"
#include "platform/carbon/describe.h"
#include "platform/carbon/dispatch.h"
#include "platform/carbon/display.h"
#include "platform/carbon/objects.h"
#include "platform/carbon/refusal.h"
#include "platform/carbon/shown_dialog.h"

namespace carbon {
namespace {

void ForgetChanges(const Window& window) {
  for (const ControlRef reference : window.controls) Find(reference)->changed = false;
}

void SendChanges(const Window& window, display::Display& display) {
  for (std::size_t i = 0; i < window.controls.size(); ++i) {
    const auto control = Find(window.controls[i]);
    if (!control || !std::exchange(control->changed, false)) continue;
    display.Change(i, Describe(window, window.controls[i], *control));
  }
}

// The window is held: a command may dispose of it.
OSStatus RunModalLoop(WindowRef reference, Window& window) {
  display::Display& display = ActiveDisplay();
  const ShownDialog dialog(display, Describe(window));
  if (!dialog.IsShown()) return eventLoopQuitErr;
  ForgetChanges(window);
  while (!window.quit && Find(reference)) {
    const std::optional<display::Action> action = display.NextAction();
    if (!action) return eventLoopQuitErr;
    if (const Refusal refusal = Dispatch(reference, *action)) {
      display.Reject(*refusal);
    } else if (!window.quit) {
      SendChanges(window, display);
    }
  }
  return window.quit ? noErr : eventLoopQuitErr;
}

}  // namespace
}  // namespace carbon

OSStatus RunAppModalLoopForWindow(WindowRef window) {
  return carbon::ApplyTo(carbon::Find(window), [=](carbon::Window& object) {
    return carbon::RunModalLoop(window, object);
  });
}

OSStatus QuitAppModalLoopForWindow(WindowRef window) {
  return carbon::ApplyTo(carbon::Find(window), [](carbon::Window& object) { object.quit = true; });
}
