#include "plugin/windows/close_window.h"

#include "platform/corefoundation/CoreFoundation.h"
#include "plugin/state/dialog_state.h"

namespace {

// The window's standard handler disposes of it, and with it of the command handler, which may be
// running. If there is no memory for an event, the window is disposed of all the same.
void CloseWindow(WindowRef window) {
  EventRef event = nullptr;
  CreateEvent(kCFAllocatorDefault, kEventClassWindow, kEventWindowClose, GetCurrentEventTime(),
              kEventAttributeUserEvent, &event);
  if (event == nullptr) return DisposeWindow(window);
  SetEventParameter(event, kEventParamDirectObject, typeWindowRef, sizeof window, &window);
  SendEventToEventTarget(event, GetWindowEventTarget(window));
  ReleaseEvent(event);
}

}  // namespace

void SendWindowCloseEvent(WindowRef window) {
  QuitAppModalLoopForWindow(window);
  CloseWindow(window);
  gWindowRef = nullptr;
  RemoveEventHandler(gButtonHandlerRef);
  gButtonHandlerRef = nullptr;
}
