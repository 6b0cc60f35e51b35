#include "plugin/state/dialog_state.h"

#include <algorithm>
#include <utility>

#include "plugin/frame/string_objects.h"

CFStringRef gWindowTitle;
CFStringRef gdialogtext;
CFStringRef gbutton1text, gbutton2text, gbutton3text, gbutton4text;
CFStringRef gcontrol1text, gcontrol2text, gcontrol3text, gcontrol4text;
CFStringRef gpasswordfield;
CFStringRef gPreEnter1, gPreEnter2, gPreEnter3, gPreEnter4;

std::int32_t iFieldCount;
std::int32_t iPasswordField;
std::int32_t iControlStyle1, iControlStyle2, iControlStyle3, iControlStyle4;
std::int32_t iFocusField;

CFArrayRef mypopupArray1, mypopupArray2, mypopupArray3, mypopupArray4;
std::int32_t popupctr1, popupctr2, popupctr3, popupctr4;
MenuRef popupmenu1, popupmenu2, popupmenu3, popupmenu4;

CFArrayRef myListArray;
std::int32_t glistlength;
std::uint8_t multiselect;
std::uint8_t dblclick;
std::uint8_t gdisabling;
std::uint8_t DoListBox;
Cell lastCell;
Cell selectedCell;

std::int32_t gXpos, gYpos;
std::uint8_t gUsePosition;
std::uint8_t kCanEscape;

ByteBuffer FieldLC;
ByteBuffer Field1, Field2, Field3, Field4;
std::int32_t theVal1 = 1, theVal2 = 1, theVal3 = 1, theVal4 = 1;
ByteBuffer myreturntext;

WindowRef gWindowRef;
ControlRef kDialogMainCaption;
ControlRef kDialogButton1, kDialogButton2, kDialogButton3, kDialogButton4;
ControlRef kDialogControl1, kDialogControl2, kDialogControl3, kDialogControl4;
ControlRef kDialogPopup1, kDialogPopup2, kDialogPopup3, kDialogPopup4;
ControlRef kDialogList;
EventHandlerRef gButtonHandlerRef;

namespace {

// The result buffers, in the order in which they are resized.
constexpr ByteBuffer* kResults[] = {&Field1, &Field2, &Field3, &Field4, &FieldLC, &myreturntext};

void ResetTexts() {
  for (CFStringRef* text : {&gWindowTitle, &gdialogtext, &gpasswordfield}) {
    StoreText(*text, EmptyText());
  }
  for (const auto& family : {gbuttontexts, gcontroltexts, gPreEnters}) StoreEmptyTexts(family);
}

bool EmptyResults() {
  return std::ranges::all_of(
      kResults, [](ByteBuffer* result) { return ResizeEmptied(*result, kResultSize); });
}

// Menus and lines that were set before an earlier shutdown go too, and so do the choices in them.
void ResetLists() {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    ReleaseMenu(std::exchange(*popupmenus[i], nullptr));
    StoreArray(*mypopupArrays[i], nullptr);
    *popupctrs[i] = 0;
    *theVals[i] = 1;
  }
  StoreArray(myListArray, nullptr);
  glistlength = 0;
  lastCell = selectedCell = {};
}

}  // namespace

bool ResetDialogState() {
  ResetTexts();
  kCanEscape = 0;
  iFieldCount = 0;
  iPasswordField = 0;
  for (std::int32_t* style : iControlStyles) *style = kEditText;
  if (!EmptyResults()) return false;
  ResetLists();
  DoListBox = 0;
  dblclick = 1;
  multiselect = 1;
  ForgetPosition();
  gdisabling = 0;
  iFocusField = 1;
  return true;
}

void StoreText(CFStringRef& member, CFStringRef text) {
  const CFStringRef copy = CFStringCreateCopy(kCFAllocatorDefault, text);
  const CFStringRef old = std::exchange(member, copy == nullptr ? EmptyText() : copy);
  CFRelease(old);
}

void StoreEmptyTexts(const Family<CFStringRef>& members) {
  for (CFStringRef* member : members) StoreText(*member, EmptyText());
}

void StoreArray(CFArrayRef& member, CFArrayRef array) { CFRelease(std::exchange(member, array)); }

void ForgetPosition() {
  gXpos = gYpos = -1;
  gUsePosition = 0;
}
