#pragma once

// The controls of the dialog windows: command codes, ids, sizes and fonts.

#include <cstddef>
#include <cstdint>

#include "platform/carbon/Carbon.h"
#include "platform/corefoundation/CoreFoundation.h"

// By these codes the command handler knows which control the user used. The list has the same code
// as the standard dialog's message, which is a static text and never issues a command.
inline constexpr OSType kMessageCommand = FourCharCode("ABCC");
inline constexpr OSType kListMessageCommand = FourCharCode("ABCB");
inline constexpr OSType kListCommand = FourCharCode("ABCC");
inline constexpr OSType kCancelCommand = FourCharCode("ACAN");

// The codes of the buttons, and of the labels and inputs of the fields; `index` counts from 0.
constexpr OSType ButtonCommand(std::size_t index) {
  return FourCharCode("ABCD") + static_cast<OSType>(index);
}
constexpr OSType LabelCommand(std::size_t index) {
  return FourCharCode("ABCH") + 2 * static_cast<OSType>(index);
}
constexpr OSType InputCommand(std::size_t index) {
  return FourCharCode("ABCI") + 2 * static_cast<OSType>(index);
}

// Gives a new control its command code and id.
void Identify(ControlRef control, OSType command, std::int32_t id);

// Gives a control its size (kControlSizeNormal, kControlSizeSmall), the mark of the default button
// if it is that, and the small system font.
void SetAppearance(ControlRef control, std::uint16_t size, bool is_default = false);

// Creates button `index` (from 0), identifies it and stores it in kDialogButtons. Button 1 is the
// default button, and its title is "OK" if `title` is empty.
void CreateButton(WindowRef window, std::size_t index, const Rect& bounds, CFStringRef title);

// Creates the control that stands for Escape: outside the window's content, and hidden unless
// Escape may cancel.
void CreateCancelControl(WindowRef window);

// The list of the running list-box dialog.
ListHandle RunningList();
