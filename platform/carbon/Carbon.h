#pragma once

// The part of Carbon that the plug-in stands on: windows, controls, menus, events, the
// application-modal loop, lists and the standard alert. Carbon owns what they hold and how they
// behave; a display (display.h) draws them.
//
// References name an object and are never reused: an operation on an object that is gone, or on a
// null reference, does nothing and returns paramErr. If memory runs out, an operation returns
// memFullErr, hands out null and changes nothing. Nothing here throws of its own. Lengths are in
// bytes, texts are CoreFoundation strings, coordinates as in geometry.h. Everything runs on the
// host's main thread.

#include <cstddef>
#include <cstdint>

#include "platform/carbon/geometry.h"
#include "platform/corefoundation/CoreFoundation.h"

#pragma GCC visibility push(default)

using OSStatus = std::int32_t;
using OSType = std::uint32_t;  // four characters, the first in the high byte
using Size = std::ptrdiff_t;
using Cell = Point;  // row, then column, both from 0

using WindowRef = struct OpaqueWindow*;
using ControlRef = struct OpaqueControl*;
using MenuRef = struct OpaqueMenu*;
using EventRef = struct OpaqueEvent*;
using EventTargetRef = struct OpaqueEventTarget*;
using EventHandlerRef = struct OpaqueEventHandler*;
using EventHandlerCallRef = struct OpaqueEventHandlerCall*;
using ListHandle = struct OpaqueList*;
using DialogRef = struct OpaqueDialog*;
using CGrafPtr = struct OpaqueGrafPort*;

enum : OSStatus {
  noErr = 0,
  paramErr = -50,
  memFullErr = -108,
  eventNotHandledErr = -9874,
  eventLoopQuitErr = -9876,  // the modal loop ended without being told to
};

constexpr OSType FourCharCode(const char (&text)[5]) {
  OSType code = 0;
  for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(text[i]);
  return code;
}

extern "C" {

// --- Windows ---

enum : std::uint32_t { kMovableModalWindowClass = 4 };
enum : std::uint32_t { kWindowStandardHandlerAttribute = 0x02000000 };
enum : std::uint32_t { kWindowCenterOnMainScreen = 1 };
enum : std::uint16_t { kWindowContentRgn = 33 };
enum : std::int16_t { kThemeBrushUtilityWindowBackgroundActive = 7 };

// With the standard handler a window disposes of itself on a window-close event. Its class is part
// of its description; every window is shown as a movable modal one.
OSStatus CreateNewWindow(std::uint32_t window_class, std::uint32_t attributes, const Rect* content,
                         WindowRef* window);

// Disposes of a window with its controls and handlers, without an event.
void DisposeWindow(WindowRef window);
OSStatus RepositionWindow(WindowRef window, WindowRef parent, std::uint32_t method);
OSStatus SetWindowTitleWithCFString(WindowRef window, CFStringRef title);

// Moves the content's top-left corner to a global point. `front` makes no difference: a window is
// in front when it is shown.
void MoveWindow(WindowRef window, std::int16_t h, std::int16_t v, Boolean front);
OSStatus GetWindowBounds(WindowRef window, std::uint16_t region, Rect* bounds);

// The brush is part of the window's description; displays have one background for all windows.
OSStatus SetThemeWindowBackground(WindowRef window, std::int16_t brush, Boolean redraw);
OSStatus SetWindowDefaultButton(WindowRef window, ControlRef button);
OSStatus SetWindowCancelButton(WindowRef window, ControlRef button);
void ShowWindow(WindowRef window);
void BringToFront(WindowRef window);
void SelectWindow(WindowRef window);

// Moves the focus to the next input control in order of creation, from none to the first, from the
// last to the first. Push buttons and static texts have no part in it.
OSStatus AdvanceKeyboardFocus(WindowRef window);

void InitCursor();

// --- Controls ---

struct ControlID {
  OSType signature;
  std::int32_t id;
};

struct ControlFontStyleRec {
  std::int16_t flags;
  std::int16_t font;
  std::int16_t size;
  std::int16_t style;
  std::int16_t mode;
  std::int16_t just;
  std::uint16_t fore_color[3];
  std::uint16_t back_color[3];
};

enum : std::int16_t { kControlUseThemeFontIDMask = 0x0080 };
enum : std::int16_t { kThemeSmallSystemFont = 1 };
enum : std::uint16_t { kControlSizeNormal = 0, kControlSizeSmall = 1 };
enum : std::int16_t { kControlEntireControl = 0 };
enum : std::int16_t { teFlushLeft = -2 };

inline constexpr OSType kControlSizeTag = FourCharCode("size");                   // 16 bits
inline constexpr OSType kControlPushButtonDefaultTag = FourCharCode("dflt");      // Boolean
inline constexpr OSType kControlEditTextCFStringTag = FourCharCode("cfst");       // CFStringRef
inline constexpr OSType kControlPopupButtonMenuHandleTag = FourCharCode("mhan");  // MenuRef
inline constexpr OSType kControlListBoxListHandleTag = FourCharCode("lhan");      // ListHandle

// `style` may be null. Every control belongs to its window and goes with it.
OSStatus CreateStaticTextControl(WindowRef window, const Rect* bounds, CFStringRef text,
                                 const ControlFontStyleRec* style, ControlRef* control);
OSStatus CreatePushButtonControl(WindowRef window, const Rect* bounds, CFStringRef title,
                                 ControlRef* control);
OSStatus CreateEditUnicodeTextControl(WindowRef window, const Rect* bounds, CFStringRef text,
                                      Boolean is_password, const ControlFontStyleRec* style,
                                      ControlRef* control);

// With `auto_toggle` the control changes its value before its command is issued; a radio button
// that is on stays on.
OSStatus CreateCheckBoxControl(WindowRef window, const Rect* bounds, CFStringRef title,
                               std::int32_t value, Boolean auto_toggle, ControlRef* control);
OSStatus CreateRadioButtonControl(WindowRef window, const Rect* bounds, CFStringRef title,
                                  std::int32_t value, Boolean auto_toggle, ControlRef* control);

// `title` may be null. The control has no menu yet, whatever `menu_id` says, and no room for a
// title. `variable_width` is part of its description; it takes its bounds in any case.
OSStatus CreatePopupButtonControl(WindowRef window, const Rect* bounds, CFStringRef title,
                                  std::int16_t menu_id, Boolean variable_width,
                                  std::int16_t title_width, std::int16_t title_justification,
                                  std::uint8_t title_style, ControlRef* control);

OSStatus SetControlCommandID(ControlRef control, OSType command);
OSStatus SetControlID(ControlRef control, const ControlID* id);

// Set: size, default mark, content of an edit text, menu of a pop-up button. Attaching a menu sets
// the control's minimum to 1 and its maximum to the menu's item count. Get: the content of an edit
// text, a string that the caller releases; the list of a list box.
OSStatus SetControlData(ControlRef control, std::int16_t part, OSType tag, Size size,
                        const void* data);
OSStatus GetControlData(ControlRef control, std::int16_t part, OSType tag, Size size, void* data,
                        Size* actual_size);
OSStatus SetControlFontStyle(ControlRef control, const ControlFontStyleRec* style);

// Minimum <= value <= maximum always holds: a limit that passes the other takes it along, and the
// value follows.
std::int32_t GetControlValue(ControlRef control);
void SetControlValue(ControlRef control, std::int32_t value);
void SetControlMinimum(ControlRef control, std::int32_t minimum);
void SetControlMaximum(ControlRef control, std::int32_t maximum);

OSStatus EnableControl(ControlRef control);
OSStatus DisableControl(ControlRef control);
void HideControl(ControlRef control);

// --- Menus ---

enum : std::uint32_t { kMenuAttrExcludesMarkColumn = 1 };

// As many items as the index of a command tells apart.
enum : std::uint16_t { kMenuItemLimit = 65535 };

// Given back with ReleaseMenu; a control that has it attached keeps it alive, and its id and
// attributes are part of that control's description. Displays show no column for marks in any menu.
OSStatus CreateNewMenu(std::int16_t menu_id, std::uint32_t attributes, MenuRef* menu);

// Returns paramErr, and the menu stays as it is, once it has kMenuItemLimit items. An item has no
// attributes and no command of its own.
OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text, std::uint32_t attributes,
                                        OSType command, std::uint16_t* index);
void ReleaseMenu(MenuRef menu);

// --- Lists ---

enum : std::int16_t { kListDefStandardText = 0 };
enum : std::int8_t { lOnlyOne = -128 };

// A list of one column, whatever `columns` says. `bounds` takes the cells and, at its right, the
// scroll bar; there is no other one. A cell's size is part of its description; displays honour the
// height, and let the cells fill the width.
OSStatus CreateListBoxControl(WindowRef window, const Rect* bounds, Boolean auto_size,
                              std::int16_t rows, std::int16_t columns, Boolean horizontal_scroll,
                              Boolean vertical_scroll, std::int16_t cell_height,
                              std::int16_t cell_width, Boolean has_grow_space,
                              std::int16_t definition, ControlRef* control);
void SetListSelectionFlags(ListHandle list, std::int8_t flags);

// A cell's content is bytes in the system encoding.
OSStatus LSetCell(const void* data, Size size, Cell cell, ListHandle list);

// Copies at most `*size` bytes of the cell, cut between characters, and sets `*size` to their
// number; to 0 if there is no such cell.
void LGetCell(void* data, Size* size, Cell cell, ListHandle list);

// Whether `*cell` is selected; with `next` the first selected cell at or after it is looked for and
// `*cell` becomes it.
Boolean LGetSelect(Boolean next, Cell* cell, ListHandle list);

// The cell of the last click; (-1, -1) before the first.
Cell LLastClick(ListHandle list);

// The port of a list is its window's: from 0 to the window's width.
CGrafPtr GetListPort(ListHandle list);
void GetPortBounds(CGrafPtr port, Rect* bounds);

// The pointer in the current port's coordinates: while a list's command is handled, the point of
// that click. That port is the host's, whose left edge stands 90 pixels right of the screen's.
void GetMouse(Point* point);

// --- Events ---

struct EventTypeSpec {
  OSType event_class;
  std::uint32_t event_kind;
};

struct HICommand {
  std::uint32_t attributes;
  OSType command_id;
  MenuRef menu;              // of a menu choice; otherwise null
  std::uint16_t menu_index;  // of a menu choice, from 1; otherwise 0
};

using EventHandlerProc = OSStatus (*)(EventHandlerCallRef call, EventRef event, void* user_data);
using EventHandlerUPP = EventHandlerProc;
using EventTime = double;  // seconds

inline constexpr OSType kEventClassCommand = FourCharCode("cmds");
inline constexpr OSType kEventClassWindow = FourCharCode("wind");
enum : std::uint32_t { kEventCommandProcess = 1, kEventWindowClose = 72 };
enum : std::uint32_t { kEventAttributeUserEvent = 1 };

inline constexpr OSType kEventParamDirectObject = FourCharCode("----");
inline constexpr OSType typeHICommand = FourCharCode("hcmd");  // HICommand
inline constexpr OSType typeWindowRef = FourCharCode("wind");  // WindowRef

EventHandlerUPP NewEventHandlerUPP(EventHandlerProc handler);
EventTargetRef GetWindowEventTarget(WindowRef window);

// A handler is gone when its window is, or when it is removed.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, std::size_t count,
                             const EventTypeSpec* types, void* user_data,
                             EventHandlerRef* registration);
OSStatus RemoveEventHandler(EventHandlerRef registration);

EventTime GetCurrentEventTime();

// Given back with ReleaseEvent.
OSStatus CreateEvent(CFAllocatorRef allocator, OSType event_class, std::uint32_t event_kind,
                     EventTime time, std::uint32_t attributes, EventRef* event);
OSStatus SetEventParameter(EventRef event, OSType name, OSType type, Size size, const void* data);
OSStatus GetEventParameter(EventRef event, OSType name, OSType type, OSType* actual_type, Size size,
                           Size* actual_size, void* data);

// Sends the event to the target's handlers, the latest first, until one returns anything but
// eventNotHandledErr; if none does, to the standard handler of its window. Returns what the last of
// them returned.
OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target);
void ReleaseEvent(EventRef event);

// --- Modal loop ---

// Shows the window and dispatches what the user does in it until QuitAppModalLoopForWindow is
// called for it; returns noErr then. Returns eventLoopQuitErr if no display can show it, or if no
// further action comes from the display; the window is then still there.
OSStatus RunAppModalLoopForWindow(WindowRef window);
OSStatus QuitAppModalLoopForWindow(WindowRef window);

// --- Alerts ---

enum : std::int16_t { kAlertStopAlert, kAlertNoteAlert, kAlertCautionAlert, kAlertPlainAlert };
enum : std::int16_t { kAlertStdAlertOKButton = 1, kAlertStdAlertCancelButton = 2 };
enum : std::uint16_t { kWindowAlertPositionParentWindow = 0xB00A };
enum : std::uint32_t { kStdCFStringAlertVersionOne = 1 };

extern const CFStringRef kAlertDefaultOKText;

// A null text means no such button. The numbers say which button Return and Escape press; 0 is the
// usual, 1 and 2. `position` is honoured if it is kWindowAlertPositionParentWindow; any other is
// the main screen's. The rest is part of the alert's description and makes no difference.
struct AlertStdCFStringAlertParamRec {
  std::uint32_t version;
  Boolean movable;
  Boolean help_button;
  CFStringRef default_text;
  CFStringRef cancel_text;
  CFStringRef other_text;
  std::int16_t default_button;
  std::int16_t cancel_button;
  std::uint16_t position;
  std::uint32_t flags;
};

OSStatus CreateStandardAlert(std::int16_t type, CFStringRef message, CFStringRef explanation,
                             const AlertStdCFStringAlertParamRec* parameters, DialogRef* alert);

// Shows the alert and disposes of it. `*item` becomes 1 for the default button, 2 for cancel, 3 for
// the other one. Returns eventLoopQuitErr, with 0 in `*item`, if it ended without a button pressed.
OSStatus RunStandardAlert(DialogRef alert, void* event_filter, std::int16_t* item);

}  // extern "C"

#pragma GCC visibility pop
