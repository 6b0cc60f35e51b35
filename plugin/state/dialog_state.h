#pragma once

// The dialog state: the one record that the next dialog is built from, that the running dialog
// works on, and that holds what the last dialog produced. Read this page first.
//
// Lifetimes. Persisting: in force for every later dialog until it is set again. One-shot: serves
// the next dialog and is reset after it. Result: describes the last dialog until the next replaces
// it. Running: meaningful only while a dialog is open.
//
// Ownership. The state owns the string objects, arrays, menus and byte buffers in it. Texts are
// never null once the plug-in is initialised; StoreText and StoreArray release what they replace.
//
// Before initialisation every member is zero or null, but for theVal1 to theVal4, which start at 1.
// All access is on FileMaker's main thread.
//
// A numbered family of four has its four members and one array of their addresses, by which it is
// walked: element 0 stands for field (or button) 1.
//
// Prefixes of the names: g for a global of any kind, i for a number, k for a control of the running
// dialog (kCanEscape, a flag, is the exception), my for what the plug-in has put together; the
// other members have none.

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/carbon/Carbon.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "plugin/state/byte_buffer.h"

inline constexpr std::size_t kFamilySize = 4;

template <class Member>
using Family = std::array<Member*, kFamilySize>;

// The number of a family's element, as users count fields and buttons.
constexpr std::int32_t NumberOf(std::size_t element) {
  return static_cast<std::int32_t>(element) + 1;
}

// --- Texts of the next dialog ---

// Caption of every dialog window; persisting.
extern CFStringRef gWindowTitle;

// Message, titles of the buttons and labels of the fields; set by each call of the standard or the
// custom dialog.
extern CFStringRef gdialogtext;
extern CFStringRef gbutton1text, gbutton2text, gbutton3text, gbutton4text;
extern CFStringRef gcontrol1text, gcontrol2text, gcontrol3text, gcontrol4text;

// The number of the password field as the call gives it; iPasswordField is what it reads as.
extern CFStringRef gpasswordfield;

// What the fields start with; one-shot.
extern CFStringRef gPreEnter1, gPreEnter2, gPreEnter3, gPreEnter4;

inline constexpr Family<CFStringRef> gbuttontexts{&gbutton1text, &gbutton2text, &gbutton3text,
                                                  &gbutton4text};
inline constexpr Family<CFStringRef> gcontroltexts{&gcontrol1text, &gcontrol2text, &gcontrol3text,
                                                   &gcontrol4text};
inline constexpr Family<CFStringRef> gPreEnters{&gPreEnter1, &gPreEnter2, &gPreEnter3, &gPreEnter4};

// --- Fields and their controls ---

// The kind of a field's control; any other value shows the label alone.
enum ControlStyle : std::int32_t {
  kEditText = 0,
  kPasswordText = 1,
  kPopUpMenu = 2,
  kCheckBox = 3,
  kRadioButton = 4,
};

// Number of fields of the running dialog; 0 after each dialog.
extern std::int32_t iFieldCount;

// Number of the password field, 0 for none; set by each call of the standard or the custom dialog.
extern std::int32_t iPasswordField;

// Kinds of the fields; persisting, but the standard dialog sets all four.
extern std::int32_t iControlStyle1, iControlStyle2, iControlStyle3, iControlStyle4;

// Number of the field that has the focus when the next dialog opens; one-shot.
extern std::int32_t iFocusField;

inline constexpr Family<std::int32_t> iControlStyles{&iControlStyle1, &iControlStyle2,
                                                     &iControlStyle3, &iControlStyle4};

// --- Pop-up menus ---

// Items of the four menus; persisting.
extern CFArrayRef mypopupArray1, mypopupArray2, mypopupArray3, mypopupArray4;

// Numbers of their items, 0 for no menu; persisting.
extern std::int32_t popupctr1, popupctr2, popupctr3, popupctr4;

// The menus as built for the last dialog that showed them.
extern MenuRef popupmenu1, popupmenu2, popupmenu3, popupmenu4;

inline constexpr Family<CFArrayRef> mypopupArrays{&mypopupArray1, &mypopupArray2, &mypopupArray3,
                                                  &mypopupArray4};
inline constexpr Family<std::int32_t> popupctrs{&popupctr1, &popupctr2, &popupctr3, &popupctr4};
inline constexpr Family<MenuRef> popupmenus{&popupmenu1, &popupmenu2, &popupmenu3, &popupmenu4};

// --- The list-box dialog ---

extern CFArrayRef myListArray;    // lines of the list; persisting
extern std::int32_t glistlength;  // number of lines
extern std::uint8_t multiselect;  // more than one line may be selected; by each list-box call
extern std::uint8_t dblclick;     // a second click on a line chooses it; by each list-box call
extern std::uint8_t gdisabling;   // button 1 waits for a click in the list; by each list-box call
extern std::uint8_t DoListBox;    // the dialog being shown is the list-box dialog
extern Cell lastCell;             // previous click in the list; running
extern Cell selectedCell;         // latest click in the list; running

// --- Position and Escape ---

extern std::int32_t gXpos, gYpos;  // content's corner on the screen, -1 for unset; one-shot
extern std::uint8_t gUsePosition;  // place the next dialog there instead of centring it; one-shot
extern std::uint8_t kCanEscape;    // Escape cancels; cleared after each standard dialog

// --- Results of the last dialog ---

extern ByteBuffer FieldLC;                         // "1" to "4" for the button, "E" for Escape
extern ByteBuffer Field1, Field2, Field3, Field4;  // values of the fields
extern std::int32_t theVal1, theVal2, theVal3, theVal4;  // items chosen in pop-up menus, from 1
extern ByteBuffer myreturntext;                          // the composed result text

inline constexpr Family<ByteBuffer> Fields{&Field1, &Field2, &Field3, &Field4};
inline constexpr Family<std::int32_t> theVals{&theVal1, &theVal2, &theVal3, &theVal4};

// A result buffer has this many bytes unless a longer text is recorded in it.
inline constexpr std::size_t kResultSize = 1024;

// --- The running dialog ---

extern WindowRef gWindowRef;  // null when no dialog is open
extern ControlRef kDialogMainCaption;
extern ControlRef kDialogButton1, kDialogButton2, kDialogButton3, kDialogButton4;
extern ControlRef kDialogControl1, kDialogControl2, kDialogControl3, kDialogControl4;
extern ControlRef kDialogPopup1, kDialogPopup2, kDialogPopup3, kDialogPopup4;
extern ControlRef kDialogList;
extern EventHandlerRef gButtonHandlerRef;  // removed when the dialog closes

inline constexpr Family<ControlRef> kDialogButtons{&kDialogButton1, &kDialogButton2,
                                                   &kDialogButton3, &kDialogButton4};
inline constexpr Family<ControlRef> kDialogControls{&kDialogControl1, &kDialogControl2,
                                                    &kDialogControl3, &kDialogControl4};
inline constexpr Family<ControlRef> kDialogPopups{&kDialogPopup1, &kDialogPopup2, &kDialogPopup3,
                                                  &kDialogPopup4};

// --- Operations ---

// Gives every member its starting value. False if memory for a result buffer runs out; menus, list,
// list-box flags, position and focus then keep their values.
bool ResetDialogState();

// Stores a copy of `text` that keeps nothing else in memory, or the empty text if memory runs out.
void StoreText(CFStringRef& member, CFStringRef text);
void StoreEmptyTexts(const Family<CFStringRef>& members);

// Stores `array`, which the state owns from now on.
void StoreArray(CFArrayRef& member, CFArrayRef array);

// Forgets a preset position.
void ForgetPosition();
