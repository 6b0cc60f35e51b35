#include "displays/desktop/make_window.h"

#include <utility>

#include "displays/desktop/alert_window.h"
#include "displays/desktop/dialog_window.h"

namespace desktop {

WindowPointer MakeWindow(const display::Description& description, ModalWindow::Report report) {
  if (const auto* window = std::get_if<display::Window>(&description)) {
    return WindowPointer(new DialogWindow(*window, std::move(report)));
  }
  return WindowPointer(new AlertWindow(std::get<display::Alert>(description), std::move(report)));
}

}  // namespace desktop
