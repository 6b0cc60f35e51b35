#pragma once

// What terminals of the user's type can be told beyond drawing, from the terminal library's
// description of the type.

#include <string>

namespace terminal {

enum class Capability {
  kMouseOff,
  kPasteOn,  // pasted text comes between marks
  kPasteOff,
  kPlainText,
  kKeypadOff,
  kCursorNormal,
  kOtherScreenOff,
};

// Reads the description of the type that TERM names, for the terminal `fd`. Returns an empty text,
// or why no dialog can be shown there as one clause.
std::string ReadTerminalType(int fd);

// Frees the description, which nothing needs any more.
void ForgetTerminalType();

// Tells the terminal; nothing if its type does not have this.
void Send(Capability capability, int fd);

// The sequence of a key that has a name in newer types only; empty if there is none.
std::string ExtendedKey(const char* name);

// What the terminal sends before and behind pasted text; empty if it sends nothing.
std::string PasteStart();
std::string PasteEnd();

}  // namespace terminal
