#include "displays/desktop/render.h"

#include <QApplication>
#include <exception>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

#include "displays/desktop/modal_window.h"
#include "displays/desktop/shown_text.h"
#include "displays/desktop/window_pool.h"
#include "displays/protocol/display_json.h"

namespace desktop {
namespace {

bool Draw(ModalWindow& window, const std::string& file) {
  return window.grab().save(ToQString(file), "PNG");
}

bool WriteCutTextsOf(ModalWindow& window, const std::string& file) {
  display::Json texts = display::Json::array();
  for (const QString& text : window.CutTexts()) texts.push_back(text.toStdString());
  std::ofstream stream(file);
  return static_cast<bool>(stream << display::ToText(texts) << std::flush);
}

// Shows the dialog whose description is on standard input, and has `write` write something of it.
std::string Show(const std::string& file, bool (*write)(ModalWindow&, const std::string&)) {
  std::string line;
  std::getline(std::cin, line);
  try {
    WindowPool windows;
    ModalWindow& window = windows.Fill(display::ParseDescription(line));
    QApplication::setCursorFlashTime(0);  // a text cursor that is seen at every moment
    window.Present([](const display::Action&) {});
    QApplication::processEvents();
    return write(window, file) ? "" : "cannot write " + file;
  } catch (const std::exception& error) {
    return "the description on standard input: " + std::string(error.what());
  }
}

}  // namespace

std::string RenderDialog(const std::string& file) { return Show(file, Draw); }

std::string WriteCutTexts(const std::string& file) { return Show(file, WriteCutTextsOf); }

Picture DrawDialog(const display::Description& dialog) {
  WindowPool windows;
  ModalWindow& window = windows.Fill(dialog);
  window.setAttribute(Qt::WA_DontShowOnScreen);
  return {window.grab(), window.CutTexts()};
}

}  // namespace desktop
