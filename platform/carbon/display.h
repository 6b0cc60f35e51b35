#pragma once

// What shows a dialog and reports what the user does.
//
// Carbon owns every dialog: its values, its selection, which button is the default, what Escape
// does, and when the dialog ends. A display draws what it is told and is asked one question, "what
// did the user do next?". It is pulled, never pushed: the modal loop asks for one action,
// dispatches it after NextAction has returned, tells the display what changed, and asks again. So
// nothing of a display is on the stack while a window is disposed of inside its own command, and no
// exception crosses a toolkit's loop.
//
// Both directions are values. A dialog opens with its description, a change is the description of
// one control as it now is, and what the user did is an action. All texts are UTF-8.
//
// Order of calls, by the modal loop alone, on one thread:
//   Open once; if it returned true: NextAction, then any number of Change or one Reject, again and
//   again; then Close once. One dialog is open at a time. The same display serves the next dialog.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/carbon/control_ids.h"
#include "platform/carbon/geometry.h"

namespace display {

enum class ControlKind { kStatic, kButton, kEdit, kPassword, kPopup, kCheckBox, kRadio, kList };

// What a pop-up's menu was created with. Its button takes its whole rectangle whether or not it may
// be narrower than that.
struct Menu {
  int id = 0;          // 0 while it has no menu
  int attributes = 0;  // 1: no column for marks
  bool variable_width = false;
};

struct CellSize {
  int height = 0;
  int width = 0;
};

// One control as it stands. An empty optional is something that this kind of control does not have.
struct Control {
  ControlKind kind = ControlKind::kStatic;
  std::string command;              // four characters
  int id = 0;                       // numbers buttons and fields, see control_ids.h
  Rect rect;                        // in window content coordinates
  std::optional<std::string> text;  // title or content; of a password field always empty
  std::optional<int> value;         // 0 or 1 of a toggle, the shown item of a pop-up (from 1)
  std::optional<int> min;
  std::optional<int> max;
  std::optional<std::vector<std::string>> items;  // of a pop-up, in menu order
  std::optional<std::vector<std::string>> rows;   // of a list, all of them
  bool visible = true;
  bool enabled = true;
  bool is_default = false;
  bool is_cancel = false;
  bool focused = false;
  std::optional<int> size;       // 0 normal, 1 small
  std::optional<int> font;       // theme font; 1 is the small system font
  std::optional<Menu> menu;      // of a pop-up: what it asks for beside its items
  std::optional<CellSize> cell;  // of a list, in pixels

  // Of a list: whether more than one row may be selected, and the rows (from 1) that are. In JSON
  // the two stand beside the control's description, not in it.
  bool multiple = false;
  std::vector<int> selected;
};

struct Window {
  std::string title;
  Rect content;                   // global coordinates
  std::vector<Control> controls;  // in order of creation
  int window_class = 0;           // 4 is the movable modal one, which is how each is shown
  std::optional<int> background = std::nullopt;  // theme brush; 7 is that of utility windows
};

struct Alert {
  int type = 0;  // 0 stop, 1 note, 2 caution, 3 plain; 4 looks like plain
  std::string message;
  std::string explanation;
  std::optional<std::string> default_button;  // number 1, rightmost
  std::optional<std::string> cancel_button;   // number 2, beside it
  std::optional<std::string> other_button;    // number 3, at the left
  int return_button = 1;                      // the number of the button that Return presses
  int escape_button = 2;                      // likewise
  int position = 0;          // 0xB00A: over the host's window; else the main screen
  bool movable = false;      // what a title bar allows is the desktop's to decide
  bool help_button = false;  // never shown: there is no help
  int flags = 0;             // none has a meaning here
};

using Description = std::variant<Window, Alert>;

struct Action {
  enum class Kind {
    kEnter,      // the content of edit or password field `number` becomes `text`
    kType,       // `text` is appended at the focused field
    kChoose,     // item `item` (from 1) of the pop-up menu of field `number`
    kClick,      // click check box or radio button `number`
    kRow,        // click list row `number` (from 1) at window x `x`
    kRowToggle,  // the same with Control: adds the row or takes it away
    kRowExtend,  // the same with Shift: selects from the last clicked row
    kPress,      // click button `number`; on an alert 1 default, 2 cancel, 3 other
    kReturn,
    kEscape,
    kTab,
    kClose,  // the window manager's close request
  };

  Kind kind = Kind::kReturn;
  int number = 0;
  int item = 0;
  int x = 0;
  std::string text;
};

// The window x of a row that is chosen without a pointer.
constexpr int kRowMiddle = 200;

class Display {
 public:
  Display() = default;
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;
  virtual ~Display() = default;

  // The main screen in global coordinates; windows are centred on it. May be asked before Open,
  // even if nothing can be shown.
  virtual Rect MainScreen() = 0;

  // Shows a dialog. False if nothing can show it; no other call follows then.
  virtual bool Open(const Description& dialog) = 0;

  // Waits for the user's next action. None if no further one will come, as when the display is
  // gone; the dialog then ends without it.
  virtual std::optional<Action> NextAction() = 0;

  // Control `index` (in order of creation) now is as described.
  virtual void Change(std::size_t index, const Control& control) = 0;

  // The last action names what the dialog does not have; `reason` is one clause for the user,
  // without a full stop. Nothing was changed.
  virtual void Reject(const std::string& reason) = 0;

  virtual void Close() = 0;

  // From now on no call waits while the file descriptor `descriptor` can be read: NextAction
  // returns none then, and the display stays as it is. A display that never waits has no use for
  // it.
  virtual void StopWaitingWhenReadable(int /*descriptor*/) {}

  // Why Open returned false or NextAction none the last time, as one clause for the user, without a
  // full stop. Empty if the display has told the user by other means.
  virtual std::string WhyLost() const { return {}; }
};

}  // namespace display
