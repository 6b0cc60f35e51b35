#include <algorithm>
#include <cstring>

#include "dialogs/dialogs.h"
#include "host/external_function.h"
#include "host/text.h"
#include "results/result_text.h"
#include "state/dialog_state.h"
#include "windows/controls.h"
#include "windows/run_window.h"

namespace {

// Where the items stand.
enum Position : CFIndex { kMessage, kButtons, kDoubleClick = 6, kRequired = 7, kMultiple = 9 };

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

std::uint8_t ReadFlag(CFArrayRef items, CFIndex position) {
  return ReadNumber(ItemAt(items, position)) >= 1 ? 1 : 0;
}

void StoreFlags(CFArrayRef items) {
  dblclick = ReadFlag(items, kDoubleClick);
  multiselect = ReadFlag(items, kMultiple);
  gdisabling = ReadFlag(items, kRequired);
}

void CreateMessage(WindowRef window, CFStringRef text) {
  ControlRef message = nullptr;
  CreateStaticTextControl(window, &kMessageBounds, text, nullptr, &message);
  Identify(message, kListMessageCommand, kMessageId);
  SetAppearance(message, kControlSizeSmall);
}

ListHandle ListOf(ControlRef control) {
  ListHandle list = nullptr;
  GetControlData(control, kControlEntireControl, kControlListBoxListHandleTag, sizeof list, &list,
                 nullptr);
  return list;
}

// As many lines as there are rows. A line for which there is no memory stays empty.
void FillRows(ListHandle list) {
  const auto rows = static_cast<std::int16_t>(std::min<std::int32_t>(glistlength, kRows));
  for (std::int16_t row = 0; row < rows; ++row) {
    const ByteString line = ToByteString(ItemAt(myListArray, row));
    if (line) LSetCell(line.get(), static_cast<Size>(std::strlen(line.get())), {row, 0}, list);
  }
}

void CreateList(WindowRef window) {
  ControlRef control = nullptr;
  CreateListBoxControl(window, &kListBounds, 0, kRows, kColumns, 0, 1, kCellHeight, kCellWidth, 0,
                       kListDefStandardText, &control);
  FillRows(ListOf(control));
  Identify(control, kListCommand, kListId);
  SetAppearance(control, kControlSizeSmall);
  kDialogList = control;
}

// Button 1 always exists, the others where they have a text.
void CreateButtons(WindowRef window, CFArrayRef items) {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    const CFStringRef title = ItemAt(items, kButtons + static_cast<CFIndex>(i));
    if (i == 0 || !IsEmpty(title)) CreateButton(window, i, kButtonBounds[i], title);
  }
  if (gdisabling) DisableControl(kDialogButton1);
}

WindowRef CreateListWindow(CFArrayRef items) {
  const WindowRef window = CreateDialogWindow(kWidth, kHeight);
  CreateMessage(window, ItemAt(items, kMessage));
  CreateList(window);
  CreateButtons(window, items);
  CreateCancelControl(window);
  if (!multiselect) SetListSelectionFlags(ListOf(kDialogList), lOnlyOne);
  return window;
}

// The command handler records the chosen lines while DoListBox is set.
void RunListWindow(CFArrayRef items) {
  DoListBox = 1;
  const WindowRef window = CreateListWindow(items);
  ShowDialogWindow(window);
  lastCell.v = kBeyondLastRow;
  selectedCell.v = kNoRow;
  RunDialogWindow(window);
  DoListBox = 0;
}

void RunListBoxDialog(CFStringRef parameter, fmx::Text& answer) {
  const auto items = Split(parameter, CFSTR("|"));
  if (!items) return Answer(answer, kNoMemory);
  StoreFlags(items.get());
  RunListWindow(items.get());
  Answer(answer, ComposeListResult() ? TextOf(myreturntext) : kNoMemory);
}

}  // namespace

fmx::errcode Do_TarvoDoListBox(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                               const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, RunListBoxDialog);
}
