#include "displays/desktop/render.h"

#include <QApplication>
#include <QPixmap>
#include <exception>
#include <iostream>

#include "displays/desktop/modal_window.h"
#include "displays/desktop/shown_text.h"
#include "displays/desktop/window_pool.h"
#include "displays/protocol/display_json.h"
#include "platform/carbon/display.h"

namespace desktop {
namespace {

std::string Draw(const display::Description& description, const std::string& file) {
  WindowPool windows;
  ModalWindow& window = windows.Fill(description);
  QApplication::setCursorFlashTime(0);  // a text cursor that is seen at every moment
  window.Present([](const display::Action&) {});
  QApplication::processEvents();
  if (!window.grab().save(ToQString(file), "PNG")) return "cannot write " + file;
  return "";
}

}  // namespace

std::string RenderDialog(const std::string& file) {
  std::string line;
  std::getline(std::cin, line);
  try {
    return Draw(display::ParseDescription(line), file);
  } catch (const std::exception& error) {
    return "the description on standard input: " + std::string(error.what());
  }
}

}  // namespace desktop
