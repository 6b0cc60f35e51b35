#include "state/dialog_state.h"
#include "windows/button_handler.h"

// The window's standard handler disposes of it, and with it of the handler that is running: nothing
// of the window is touched after the event is sent.
void SendWindowCloseEvent(WindowRef window) {
  QuitAppModalLoopForWindow(window);
  EventRef event = nullptr;
  CreateEvent(kCFAllocatorDefault, kEventClassWindow, kEventWindowClose, GetCurrentEventTime(),
              kEventAttributeUserEvent, &event);
  SetEventParameter(event, kEventParamDirectObject, typeWindowRef, sizeof window, &window);
  SendEventToEventTarget(event, GetWindowEventTarget(window));
  ReleaseEvent(event);
  gWindowRef = nullptr;
  RemoveEventHandler(gButtonHandlerRef);
  gButtonHandlerRef = nullptr;
}
