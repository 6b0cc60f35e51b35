#include "displays/terminal/render.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>

#include "displays/protocol/display_json.h"
#include "displays/terminal/canvas.h"
#include "displays/terminal/dialog.h"
#include "displays/terminal/terminal.h"

namespace terminal {

std::string RenderDialog(const std::string& file) {
  std::string line;
  std::getline(std::cin, line);
  try {
    Dialog dialog(display::ParseDescription(line), [](const display::Action&) {});
    if (!StartUnseenTerminal(24, 80)) return "there is no description of any terminal";
    dialog.Draw();
  } catch (const std::exception& error) {
    return "the description on standard input: " + std::string(error.what());
  }
  std::ofstream text(file);
  text << ScreenText() << std::flush;
  return text ? "" : "cannot write " + file;
}

}  // namespace terminal
