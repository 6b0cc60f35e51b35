#pragma once

#include "displays/desktop/modal_window.h"

namespace desktop {

// The window for a description, not yet shown.
WindowPointer MakeWindow(const display::Description& description, ModalWindow::Report report);

}  // namespace desktop
