#include "plugin/windows/list_window.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/carbon/control_ids.h"
#include "platform/carbon/geometry.h"
#include "plugin/frame/string_objects.h"
#include "plugin/windows/controls.h"
#include "plugin/windows/run_window.h"

namespace {

constexpr std::int16_t kWidth = 425;
constexpr std::int16_t kHeight = 325;
constexpr Rect kMessageBounds{5, 5, 90, 420};
constexpr Rect kListBounds{100, 5, 278, 420};
constexpr Rect kButtonBounds[] = {
    {290, 323, 322, 413}, {290, 218, 323, 308}, {290, 113, 323, 203}, {290, 8, 323, 98}};

constexpr std::int16_t kRows = 30;
constexpr std::int16_t kColumns = 1;
constexpr std::int16_t kCellHeight = 16;
constexpr std::int16_t kCellWidth = 415;

constexpr std::int16_t kNoRow = -1;
constexpr std::int16_t kBeyondLastRow = 100;

void CreateMessage(WindowRef window, CFStringRef text) {
  ControlRef message = nullptr;
  CreateStaticTextControl(window, &kMessageBounds, text, nullptr, &message);
  Identify(message, kListMessageCommand, control_id::kMessage);
  SetAppearance(message, kControlSizeSmall);
}

// Lines beyond the last row are not shown. The row of a line for which there is no memory stays
// empty.
void FillRows(ListHandle list) {
  const auto rows = static_cast<std::int16_t>(std::min<std::int32_t>(glistlength, kRows));
  for (std::int16_t row = 0; row < rows; ++row) {
    const ByteString line = ToByteString(ItemAt(myListArray, row));
    if (line) LSetCell(line.get(), static_cast<Size>(std::strlen(line.get())), {row, 0}, list);
  }
}

void CreateList(WindowRef window) {
  CreateListBoxControl(window, &kListBounds, 0, kRows, kColumns, 0, 1, kCellHeight, kCellWidth, 0,
                       kListDefStandardText, &kDialogList);
  FillRows(RunningList());
  Identify(kDialogList, kListCommand, control_id::kList);
  SetAppearance(kDialogList, kControlSizeSmall);
}

// Button 1 always exists, each other one if it has a text.
void CreateButtons(WindowRef window, const std::array<CFStringRef, kFamilySize>& texts) {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    if (i == 0 || !IsEmpty(texts[i])) CreateButton(window, i, kButtonBounds[i], texts[i]);
    if (i == 0 && gdisabling) DisableControl(kDialogButton1);
  }
}

}  // namespace

OSStatus RunListWindow(CFStringRef message,
                       const std::array<CFStringRef, kFamilySize>& button_texts) {
  const WindowRef window = CreateDialogWindow(kWidth, kHeight);
  CreateMessage(window, message);
  CreateList(window);
  CreateButtons(window, button_texts);
  CreateCancelControl(window);
  PrepareDialogWindow(window);
  if (!multiselect) SetListSelectionFlags(RunningList(), lOnlyOne);
  ShowDialogWindow(window);
  lastCell.v = kBeyondLastRow;
  selectedCell.v = kNoRow;
  return RunDialogWindow(window);
}
