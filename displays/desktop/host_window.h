#pragma once

#include <QRect>
#include <QWindow>
#include <optional>

namespace desktop {

// The window that the host names as its own in WINDOWID, as terminals do; 0 if it names none. Only
// X11 has such numbers.
WId HostWindow();

// Where that window is on the desktop, in Qt's pixels; nothing if there is no such window.
std::optional<QRect> HostWindowRect();

}  // namespace desktop
