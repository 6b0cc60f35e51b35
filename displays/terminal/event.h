#pragma once

// What the user does at the terminal.

#include <string>
#include <variant>

namespace terminal {

struct Key {
  enum class Kind {
    kSign,  // a character, in `sign`
    kReturn,
    kEscape,
    kTab,
    kBackTab,
    kUp,
    kDown,
    kLeft,
    kRight,
    kHome,
    kEnd,
    kPageUp,
    kPageDown,
    kBackspace,
    kDelete,
    kInterrupt,  // Control-C
    kSuspend,    // Control-Z
    kRedraw,     // Control-L
    kOther,
  };

  Kind kind = Kind::kOther;
  wchar_t sign = 0;
  bool shift = false;
  bool control = false;  // with `sign` the letter's capital, as in Control-A

  bool IsSign(wchar_t wanted) const { return kind == Kind::kSign && !control && sign == wanted; }
  bool IsControl(wchar_t letter) const { return kind == Kind::kSign && control && sign == letter; }
};

// What came out of the terminal's clipboard.
struct Paste {
  std::string text;  // UTF-8
};

// A click of the mouse or a turn of its wheel, at a cell of the screen.
struct Click {
  int row = 0;
  int column = 0;
  int wheel = 0;  // -1 up, 1 down, 0 the button
  bool shift = false;
  bool control = false;
};

using Event = std::variant<Key, Paste, Click>;

}  // namespace terminal
