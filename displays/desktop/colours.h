#pragma once

#include <QPalette>

namespace desktop {

// Whether the desktop asks for dark windows and Qt, which knows only some desktops, has not
// noticed. Call after the application is made.
bool DesktopPrefersDark();

QPalette DarkPalette();

}  // namespace desktop
