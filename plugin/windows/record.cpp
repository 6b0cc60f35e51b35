#include "plugin/windows/record.h"

#include <cstdint>
#include <cstring>

#include "platform/corefoundation/CoreFoundation.h"
#include "plugin/frame/string_objects.h"
#include "plugin/state/byte_buffer.h"
#include "plugin/state/dialog_state.h"
#include "plugin/windows/controls.h"

namespace {

constexpr Size kCellSize = 2048;

// One cell's text, terminated even if it fills the whole area.
struct CellText {
  char bytes[kCellSize + 1];
};

CellText ReadCell(ListHandle list, Cell cell) {
  CellText text;
  Size size = kCellSize;
  LGetCell(text.bytes, &size, cell, list);
  text.bytes[size] = '\0';
  return text;
}

void EmptyResults() {
  for (ByteBuffer* field : Fields) ResizeEmptied(*field, kResultSize);
  ResizeEmptied(FieldLC, kResultSize);
}

void SetCode(char code) {
  FieldLC.bytes[0] = code;
  FieldLC.bytes[1] = '\0';
}

// A text for which there is no memory is recorded as an empty one.
void RecordText(ByteBuffer& field, CFStringRef text) {
  const ByteString bytes = ToByteString(text);
  const auto size = 4 * static_cast<std::size_t>(MaximumByteCount(text));
  if (bytes && ResizeEmptied(field, size)) std::strcpy(field.bytes, bytes.get());
}

void RecordEdit(ByteBuffer& field, ControlRef control) {
  CFStringRef text = nullptr;
  GetControlData(control, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text,
                 nullptr);
  const auto owner = Owned(text);
  if (text != nullptr) RecordText(field, text);
}

void RecordToggle(ByteBuffer& field, ControlRef control) {
  const std::int32_t value = GetControlValue(control);
  if (value == 0 || value == 1) std::strcpy(field.bytes, value == 0 ? "0" : "1");
}

void RecordPopUp(ByteBuffer& field, CFArrayRef items, std::int32_t count, std::int32_t chosen) {
  if (count < 1) return;
  const void* item = CFArrayGetValueAtIndex(items, chosen - 1);
  if (item != nullptr) RecordText(field, static_cast<CFStringRef>(item));
}

void RecordField(std::size_t i) {
  switch (*iControlStyles[i]) {
    case kEditText:
    case kPasswordText:
      RecordEdit(*Fields[i], *kDialogControls[i]);
      break;
    case kPopUpMenu:
      RecordPopUp(*Fields[i], *mypopupArrays[i], *popupctrs[i], *theVals[i]);
      break;
    case kCheckBox:
    case kRadioButton:
      RecordToggle(*Fields[i], *kDialogControls[i]);
      break;
    default:
      break;
  }
}

// Appends a row's text to the chosen lines in Field1, behind a separator if there is text already.
// A line for which there is no memory is left out.
void AppendRow(const char* text) {
  const std::size_t length = std::strlen(Field1.bytes);
  const char* separator = length == 0 ? "" : "|";
  if (!Grow(Field1, length + std::strlen(separator) + std::strlen(text) + 1)) return;
  std::strcpy(Field1.bytes + length, separator);
  std::strcat(Field1.bytes + length, text);
}

void RecordSelection() {
  const ListHandle list = RunningList();
  for (Cell cell{0, 0}; LGetSelect(1, &cell, list); ++cell.v) {
    AppendRow(ReadCell(list, cell).bytes);
  }
}

}  // namespace

void RecordButton(std::size_t index) {
  EmptyResults();
  SetCode(static_cast<char>('1' + index));
  if (DoListBox) {
    RecordSelection();
  } else {
    for (std::size_t i = 0; i < kFamilySize && static_cast<std::int32_t>(i) < iFieldCount; ++i) {
      RecordField(i);
    }
  }
}

void RecordCancel() {
  EmptyResults();
  SetCode('E');
}

void RecordRow(ListHandle list, Cell row) {
  SetCode('1');
  const CellText text = ReadCell(list, row);
  for (ByteBuffer* field : Fields) Empty(*field);
  AppendRow(text.bytes);
}
