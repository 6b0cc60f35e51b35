#pragma once

#include <string>

namespace desktop {

// Finds out whether there is a screen before Qt is started, which would abort without one, and
// settles QT_QPA_PLATFORM where only one of X11 and Wayland answers. Returns an empty text where
// there is a screen, otherwise why there is none, as one line for the user.
std::string ProbeScreen();

}  // namespace desktop
