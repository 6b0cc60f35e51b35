#include "plugin/windows/run_window.h"

#include "platform/carbon/geometry.h"
#include "plugin/state/dialog_state.h"
#include "plugin/windows/button_handler.h"
#include "plugin/windows/close_window.h"

namespace {

constexpr EventTypeSpec kCommands{kEventClassCommand, kEventCommandProcess};

}  // namespace

WindowRef CreateDialogWindow(std::int16_t width, std::int16_t height) {
  const Rect content{0, 0, height, width};
  WindowRef window = nullptr;
  CreateNewWindow(kMovableModalWindowClass, kWindowStandardHandlerAttribute, &content, &window);
  RepositionWindow(window, nullptr, kWindowCenterOnMainScreen);
  SetWindowTitleWithCFString(window, gWindowTitle);
  return window;
}

void PrepareDialogWindow(WindowRef window) {
  SetThemeWindowBackground(window, kThemeBrushUtilityWindowBackgroundActive, 1);
  RemoveEventHandler(gButtonHandlerRef);
  InstallEventHandler(GetWindowEventTarget(window), NewEventHandlerUPP(ButtonHandler), 1,
                      &kCommands, nullptr, &gButtonHandlerRef);
  gWindowRef = window;
}

void ShowDialogWindow(WindowRef window) {
  ShowWindow(window);
  BringToFront(window);
  SelectWindow(window);
}

OSStatus RunDialogWindow(WindowRef window) {
  InitCursor();
  const OSStatus status = RunAppModalLoopForWindow(window);
  if (gWindowRef != nullptr) SendWindowCloseEvent(gWindowRef);
  return status;
}
