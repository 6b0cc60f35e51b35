#include "plugin/windows/controls.h"

#include "platform/carbon/control_ids.h"
#include "plugin/frame/string_objects.h"
#include "plugin/state/dialog_state.h"

namespace {

constexpr OSType kSignature = FourCharCode("TRVO");

// Outside the content of every dialog window, so it is never seen.
constexpr Rect kCancelBounds{500, 500, 510, 510};

void MarkAsDefault(ControlRef button) {
  constexpr Boolean kOn = 1;
  SetControlData(button, kControlEntireControl, kControlPushButtonDefaultTag, sizeof kOn, &kOn);
}

}  // namespace

void Identify(ControlRef control, OSType command, std::int32_t id) {
  SetControlCommandID(control, command);
  const ControlID control_id{kSignature, id};
  SetControlID(control, &control_id);
}

void SetAppearance(ControlRef control, std::uint16_t size, bool is_default) {
  SetControlData(control, kControlEntireControl, kControlSizeTag, sizeof size, &size);
  if (is_default) MarkAsDefault(control);
  ControlFontStyleRec style{};
  style.flags = kControlUseThemeFontIDMask;
  style.font = kThemeSmallSystemFont;
  SetControlFontStyle(control, &style);
}

void CreateButton(WindowRef window, std::size_t index, const Rect& bounds, CFStringRef title) {
  const bool is_first = index == 0;
  ControlRef button = nullptr;
  CreatePushButtonControl(window, &bounds, is_first && IsEmpty(title) ? CFSTR("OK") : title,
                          &button);
  Identify(button, ButtonCommand(index), control_id::Button(NumberOf(index)));
  SetAppearance(button, kControlSizeNormal, is_first);
  *kDialogButtons[index] = button;
  if (is_first) SetWindowDefaultButton(window, button);
}

void CreateCancelControl(WindowRef window) {
  ControlRef cancel = nullptr;
  CreatePushButtonControl(window, &kCancelBounds, EmptyText(), &cancel);
  Identify(cancel, kCancelCommand, control_id::kCancel);
  SetWindowCancelButton(window, cancel);
  if (!kCanEscape) HideControl(cancel);
}

ListHandle RunningList() {
  ListHandle list = nullptr;
  GetControlData(kDialogList, kControlEntireControl, kControlListBoxListHandleTag, sizeof list,
                 &list, nullptr);
  return list;
}
