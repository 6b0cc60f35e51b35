#pragma once

// What a host and a display in a process of its own tell each other: the whole protocol. A display
// is any program that keeps it.
//
// The host starts it as `PROGRAM --connection FD`, with FD one end of a stream socket, and each
// side writes one JSON object a line, UTF-8. The display says first that it is ready, or why it
// cannot be and ends; it says again that it is ready whenever the main screen has changed. The host
// opens one dialog at a time, under a number of its own, changes its controls and closes it. What
// the user does is an action, under the dialog's number, so that one which comes late is not taken
// for the next dialog's. A display that shares a terminal with its host says when a closed dialog
// is off the screen, and the host waits for that. The display ends when the socket is closed or its
// host has ended.
//
// The functions that read a line throw std::exception if it is no JSON, lacks a key, or holds an
// unknown value.

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "platform/carbon/display.h"

namespace display::protocol {

// The option with which a display is told its end of the socket.
inline constexpr const char* kConnectionOption = "--connection";

// The descriptor that the option of this name and its argument say, or -1 if they say none.
int ReadConnection(std::string_view option, const std::string& argument);

// The host's part: what it writes, and what the display reads of it. A line ends with its LF.
std::string OpenLine(int dialog, const Description& description);
std::string ChangeLine(int dialog, std::size_t index, const Control& control);
std::string CloseLine(int dialog);

struct Open {
  int dialog;
  Description description;
};

// Control `index`, in order of creation, now is as described.
struct Change {
  int dialog;
  std::size_t index;
  Control control;
};

struct Close {
  int dialog;
};

using HostMessage = std::variant<Open, Change, Close>;
HostMessage ReadHostMessage(std::string_view line);

// The display's part, likewise.
struct Ready {
  Rect main_screen;           // in global coordinates
  bool tells_closed = false;  // the display says when a dialog is off the screen
};

std::string ReadyLine(const Ready& ready);
std::string NotReadyLine(const std::string& why);
std::string ActionLine(int dialog, const Action& action);
std::string ClosedLine(int dialog);

struct NotReady {
  std::string why;  // one clause for the user
};

struct Done {
  int dialog;
  Action action;
};

struct Closed {
  int dialog;
};

using DisplayMessage = std::variant<Ready, NotReady, Done, Closed>;
DisplayMessage ReadDisplayMessage(std::string_view line);

}  // namespace display::protocol
