#pragma once

#include "platform/carbon/Carbon.h"

// Ends the dialog of `window`: its modal loop returns, and the window is closed and disposed of
// with all that belongs to it.
void SendWindowCloseEvent(WindowRef window);
