#pragma once

// The controls of the dialog windows: command codes, ids, sizes and fonts.

#include <cstddef>
#include <cstdint>

#include "platform/carbon/Carbon.h"
#include "platform/corefoundation/CoreFoundation.h"

// By these codes the command handler knows what the user used. The list box shares the code of the
// standard dialog's message, which as a static text never issues a command.
inline constexpr OSType kMessageCommand = FourCharCode("ABCC");
inline constexpr OSType kListMessageCommand = FourCharCode("ABCB");
inline constexpr OSType kListCommand = FourCharCode("ABCC");
inline constexpr OSType kCancelCommand = FourCharCode("ACAN");

// Of button 1 to 4, and of the label and the input of field 1 to 4; `index` counts from 0.
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

// Gives a control its size (kControlSizeNormal, kControlSizeSmall) and the small system font.
void SetAppearance(ControlRef control, std::uint16_t size);

// What both dialog windows have alike. The push buttons are created in `window` and identified:
// button `index` (from 0) titled `title`, or "OK" where button 1 has no title, stored in its holder
// and, as button 1, made the default button; the cancel control, outside the window and hidden
// unless Escape may cancel.
void CreateButton(WindowRef window, std::size_t index, const Rect& bounds, CFStringRef title);
void CreateCancelControl(WindowRef window);

// The list of the running list-box dialog.
ListHandle RunningList();
