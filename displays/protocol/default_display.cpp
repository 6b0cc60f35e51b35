#include "displays/protocol/default_display.h"

#include "displays/protocol/desktop_or_terminal.h"
#include "platform/carbon/CarbonHost.h"
#include "platform/carbon/display.h"

namespace display {
namespace {

DisplayProcess& DesktopProgram() {
  static auto& program = *new DisplayProcess("tarvo-desktop");
  return program;
}

DisplayProcess& TerminalProgram() {
  static auto& program = *new DisplayProcess("tarvo-terminal");
  return program;
}

}  // namespace

Display& Desktop() { return DesktopProgram(); }
Display& Terminal() { return TerminalProgram(); }

}  // namespace display

display::Display& carbon::DefaultDisplay() {
  static auto& display =
      *new display::DesktopOrTerminal(display::DesktopProgram(), display::TerminalProgram());
  return display;
}
