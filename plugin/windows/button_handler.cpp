#include "plugin/windows/button_handler.h"

#include <cstddef>
#include <cstdint>

#include "plugin/state/dialog_state.h"
#include "plugin/windows/close_window.h"
#include "plugin/windows/controls.h"
#include "plugin/windows/list_click.h"
#include "plugin/windows/record.h"

namespace {

// Remembers the chosen item, and makes it the only value that the pop-up can have.
void KeepPopUpChoice(const HICommand& command) {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    if (*popupmenus[i] == nullptr || command.menu != *popupmenus[i]) continue;
    *theVals[i] = command.menu_index;
    SetControlMinimum(*kDialogPopups[i], command.menu_index);
    SetControlMaximum(*kDialogPopups[i], command.menu_index);
  }
}

bool IsRadioButton(std::size_t field) {
  return static_cast<std::int32_t>(field) < iFieldCount && *iControlStyles[field] == kRadioButton;
}

// All radio buttons of a dialog are one group: if one goes on, the others go off.
void KeepRadioGroup(std::size_t used) {
  if (*iControlStyles[used] != kRadioButton || GetControlValue(*kDialogControls[used]) != 1) return;
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    if (i != used && IsRadioButton(i)) SetControlValue(*kDialogControls[i], 0);
  }
}

void Cancel() {
  RecordCancel();
  SendWindowCloseEvent(gWindowRef);
}

void PressButton(std::size_t index) {
  RecordButton(index);
  SendWindowCloseEvent(gWindowRef);
}

void Handle(const HICommand& command) {
  KeepPopUpChoice(command);
  if (command.command_id == kListCommand) ClickList();
  if (command.command_id == kCancelCommand) Cancel();
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    if (command.command_id == ButtonCommand(i)) PressButton(i);
    if (command.command_id == InputCommand(i)) KeepRadioGroup(i);
  }
}

}  // namespace

OSStatus ButtonHandler(EventHandlerCallRef /*call*/, EventRef event, void* /*user_data*/) {
  HICommand command{};
  GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                    &command);
  Handle(command);
  return eventNotHandledErr;
}
