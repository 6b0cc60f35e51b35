#include "plugin/windows/standard_window.h"

#include <cstddef>
#include <cstdint>

#include "platform/carbon/control_ids.h"
#include "platform/carbon/geometry.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "plugin/frame/string_objects.h"
#include "plugin/state/dialog_state.h"
#include "plugin/windows/controls.h"
#include "plugin/windows/run_window.h"

namespace {

// What differs with the number of fields: the window's height, where the message ends, the button
// row, and which field has the focus when the next dialog opens.
struct Geometry {
  std::int16_t height;
  std::int16_t message_bottom;
  std::int16_t buttons_top;
  std::int32_t next_focus;
};

constexpr Geometry kGeometries[] = {
    {225, 190, 188, 1}, {127, 55, 90, 1}, {152, 55, 118, 0}, {187, 55, 150, 1}, {225, 55, 188, 1},
};

constexpr std::int16_t kWidth = 425;
constexpr std::int16_t kButtonHeight = 32;
constexpr std::int16_t kButtonWidth = 90;
constexpr std::int16_t kButtonLefts[] = {323, 218, 113, 8};

// The bounds in field 1; each further field lies a step lower.
constexpr std::int16_t kFieldStep = 30;
constexpr Rect kLabelBounds{60, 5, 75, 140};
constexpr Rect kEditBounds{60, 150, 75, 410};
constexpr Rect kPopupBounds{60, 146, 75, 413};
constexpr Rect kToggleBounds{57, 145, 77, 165};

constexpr std::int16_t kNoMenuYet = -12345;

Rect OfField(Rect bounds, std::size_t field) {
  const auto down = static_cast<std::int16_t>(kFieldStep * static_cast<std::int16_t>(field));
  bounds.top = static_cast<std::int16_t>(bounds.top + down);
  bounds.bottom = static_cast<std::int16_t>(bounds.bottom + down);
  return bounds;
}

// A preset position serves one window. Only the low 16 bits of the coordinates count.
void ApplyPosition(WindowRef window) {
  if (!gUsePosition) return;
  MoveWindow(window, static_cast<std::int16_t>(gXpos), static_cast<std::int16_t>(gYpos), 1);
  ForgetPosition();
}

void CreateMessage(WindowRef window, const Geometry& geometry) {
  const Rect bounds{5, 5, geometry.message_bottom, 420};
  CreateStaticTextControl(window, &bounds, gdialogtext, nullptr, &kDialogMainCaption);
  Identify(kDialogMainCaption, kMessageCommand, control_id::kMessage);
  SetAppearance(kDialogMainCaption, kControlSizeSmall);
}

// Button 1 always exists, each other one if it has a text. All keep their places.
void CreateButtons(WindowRef window, const Geometry& geometry) {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    if (i > 0 && IsEmpty(*gbuttontexts[i])) continue;
    const auto bottom = static_cast<std::int16_t>(geometry.buttons_top + kButtonHeight);
    const auto right = static_cast<std::int16_t>(kButtonLefts[i] + kButtonWidth);
    CreateButton(window, i, {geometry.buttons_top, kButtonLefts[i], bottom, right},
                 *gbuttontexts[i]);
  }
}

void CreateLabel(WindowRef window, std::size_t field) {
  const Rect bounds = OfField(kLabelBounds, field);
  ControlRef label = nullptr;
  CreateStaticTextControl(window, &bounds, *gcontroltexts[field], nullptr, &label);
  Identify(label, LabelCommand(field), control_id::Label(NumberOf(field)));
  SetAppearance(label, kControlSizeNormal);
}

// The menu outlives the dialog, until this field is built as a pop-up again.
void CreateMenu(std::size_t field) {
  MenuRef& menu = *popupmenus[field];
  if (menu != nullptr) ReleaseMenu(menu);
  CreateNewMenu(static_cast<std::int16_t>(19007 + field), kMenuAttrExcludesMarkColumn, &menu);
  for (std::int32_t i = 0; i < *popupctrs[field]; ++i) {
    const auto item = static_cast<CFStringRef>(CFArrayGetValueAtIndex(*mypopupArrays[field], i));
    AppendMenuItemTextWithCFString(menu, item, 0, 0, nullptr);
  }
}

ControlRef CreatePopup(WindowRef window, std::size_t field) {
  const Rect bounds = OfField(kPopupBounds, field);
  ControlRef popup = nullptr;
  CreatePopupButtonControl(window, &bounds, nullptr, kNoMenuYet, 1, 0, teFlushLeft, 0, &popup);
  CreateMenu(field);
  const MenuRef menu = *popupmenus[field];
  SetControlData(popup, kControlEntireControl, kControlPopupButtonMenuHandleTag, sizeof menu,
                 &menu);
  SetControlMinimum(popup, 1);
  *kDialogPopups[field] = popup;
  return popup;
}

// The input control of a field by its kind; null for a field that has none.
ControlRef CreateInput(WindowRef window, std::size_t field) {
  const std::int32_t style = *iControlStyles[field];
  const Rect edit_bounds = OfField(kEditBounds, field);
  const Rect toggle_bounds = OfField(kToggleBounds, field);
  ControlRef input = nullptr;
  switch (style) {
    case kEditText:
    case kPasswordText:
      CreateEditUnicodeTextControl(window, &edit_bounds, nullptr, style == kPasswordText, nullptr,
                                   &input);
      break;
    case kPopUpMenu:
      input = CreatePopup(window, field);
      break;
    case kCheckBox:
      CreateCheckBoxControl(window, &toggle_bounds, EmptyText(), 0, 1, &input);
      break;
    case kRadioButton:
      CreateRadioButtonControl(window, &toggle_bounds, EmptyText(), 0, 1, &input);
      break;
    default:
      break;
  }
  return input;
}

// If several items equal the text, the last is chosen. The raised minimum makes the pop-up show it.
void ChooseItem(ControlRef popup, std::size_t field, CFStringRef text) {
  for (std::int32_t i = 1; i <= *popupctrs[field]; ++i) {
    const void* item = CFArrayGetValueAtIndex(*mypopupArrays[field], i - 1);
    if (!AreEqual(text, static_cast<CFStringRef>(item))) continue;
    SetControlMinimum(popup, i);
    *theVals[field] = i;
  }
}

// A password field is never filled.
void PreEnter(ControlRef input, std::size_t field) {
  const CFStringRef text = *gPreEnters[field];
  if (IsEmpty(text)) return;
  switch (*iControlStyles[field]) {
    case kEditText:
      SetControlData(input, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text);
      break;
    case kPopUpMenu:
      ChooseItem(input, field, text);
      break;
    case kCheckBox:
    case kRadioButton:
      if (AreEqual(text, CFSTR("1"))) SetControlValue(input, 1);
      break;
    default:
      break;
  }
}

void CreateField(WindowRef window, std::size_t field) {
  CreateLabel(window, field);
  const ControlRef input = CreateInput(window, field);
  if (input == nullptr) return;
  Identify(input, InputCommand(field), control_id::Field(NumberOf(field)));
  SetAppearance(input, kControlSizeNormal);
  *kDialogControls[field] = input;
  PreEnter(input, field);
}

// A single field always has the focus; among several it is the one that iFocusField numbers, if
// there is such a field.
void SetFocus(WindowRef window, std::int32_t fields, std::int32_t next_focus) {
  if (fields == 0) return;
  const bool in_range = iFocusField >= 1 && iFocusField <= fields;
  const std::int32_t steps = fields == 1 ? 1 : in_range ? iFocusField : 0;
  for (std::int32_t i = 0; i < steps; ++i) AdvanceKeyboardFocus(window);
  iFocusField = next_focus;
}

OSStatus RunDialog(std::int32_t fields) {
  const Geometry& geometry = kGeometries[fields];
  const WindowRef window = CreateDialogWindow(kWidth, geometry.height);
  ApplyPosition(window);
  CreateMessage(window, geometry);
  CreateButtons(window, geometry);
  CreateCancelControl(window);
  for (std::int32_t i = 0; i < fields; ++i) CreateField(window, static_cast<std::size_t>(i));
  PrepareDialogWindow(window);
  ShowDialogWindow(window);
  SetFocus(window, fields, geometry.next_focus);
  return RunDialogWindow(window);
}

}  // namespace

OSStatus dialog0() { return RunDialog(0); }

OSStatus dialog1() { return RunDialog(1); }

OSStatus dialog2() { return RunDialog(2); }

OSStatus dialog3() { return RunDialog(3); }

OSStatus dialog4() { return RunDialog(4); }
