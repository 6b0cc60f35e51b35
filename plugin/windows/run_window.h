#pragma once

#include <cstdint>

#include "platform/carbon/Carbon.h"

// Both dialog windows are run alike. A window is created with its caption, centred on the main
// screen; it gets the theme's background and the command handler, is shown, and runs until the
// handler ends it.

// A window whose content is `width` by `height` pixels; null if memory runs out.
WindowRef CreateDialogWindow(std::int16_t width, std::int16_t height);

// Gives the window its background and the handler; it is the running dialog from now on.
void PrepareDialogWindow(WindowRef window);

// Shows the window in front of all others.
void ShowDialogWindow(WindowRef window);

// Runs the modal loop and returns its status. If the loop ends before the handler ends the dialog,
// the dialog is closed and the recorded results stay as they were.
OSStatus RunDialogWindow(WindowRef window);
