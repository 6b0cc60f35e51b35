#pragma once

#include <cstdint>

#include "platform/carbon/Carbon.h"

// Both dialog windows are run alike. A window is created with its caption, centred on the main
// screen; is given the theme's background and the command handler; is shown; and runs until the
// handler ends it.

// A window whose content is `width` by `height` pixels; null where memory cannot be had.
WindowRef CreateDialogWindow(std::int16_t width, std::int16_t height);

// Gives the window its background and the handler, and shows it.
void ShowDialogWindow(WindowRef window);

// Runs the modal loop. A dialog that ends without an answer is closed; the results stay as they
// were.
OSStatus RunDialogWindow(WindowRef window);
