#include "displays/terminal/capabilities.h"

#define NCURSES_NOMACROS
#include <curses.h>
// Behind curses.h, on which it stands.
#include <term.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace terminal {
namespace {

// A capability that terminal types have had names for since they could be extended; empty if this
// one lacks it.
std::string Extended(const char* name) {
  const char* text = tigetstr(name);
  return text && reinterpret_cast<std::intptr_t>(text) != -1 ? text : "";
}

// A type that has a mouse but does not say how it is switched is taken for one like xterm, by the
// terminal library as well.
std::string MouseOff() {
  const std::string mouse = Extended("XM");
  if (!mouse.empty()) return tparm(mouse.c_str(), 0L);
  return key_mouse ? "\033[?1000l" : "";
}

std::string TextOf(Capability capability) {
  const auto standard = [](const char* text) { return std::string(text ? text : ""); };
  switch (capability) {
    case Capability::kMouseOff:
      return MouseOff();
    case Capability::kPasteOn:
      return Extended("BE");
    case Capability::kPasteOff:
      return Extended("BD");
    case Capability::kPlainText:
      return standard(exit_attribute_mode);
    case Capability::kKeypadOff:
      return standard(keypad_local);
    case Capability::kCursorNormal:
      return standard(cursor_normal);
    case Capability::kOtherScreenOff:
      return standard(exit_ca_mode);
  }
  return "";
}

std::string unsent;  // by the function that takes no other place for it

int Collect(int byte) {
  unsent.push_back(static_cast<char>(byte));
  return byte;
}

}  // namespace

std::string ReadTerminalType(int fd) {
  const char* type = std::getenv("TERM");
  if (!type || *type == '\0') return "TERM does not say what kind of terminal there is";
  int error = 0;
  if (setupterm(nullptr, fd, &error) != OK) {
    return "the kind of terminal that TERM names, " + std::string(type) + ", is not known";
  }
  if (!cursor_address) return "a terminal of the kind " + std::string(type) + " cannot show it";
  return "";
}

void ForgetTerminalType() { del_curterm(cur_term); }

void Send(Capability capability, int fd) {
  const std::string text = TextOf(capability);
  unsent.clear();
  tputs(text.c_str(), 1, Collect);                          // leaves the padding out
  if (write(fd, unsent.data(), unsent.size()) < 0) return;  // a terminal that is gone needs nothing
}

std::string ExtendedKey(const char* name) { return Extended(name); }

std::string PasteStart() { return Extended("PS"); }
std::string PasteEnd() { return Extended("PE"); }

}  // namespace terminal
