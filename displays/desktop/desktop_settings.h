#pragma once

#include <QColor>
#include <QStringList>
#include <functional>

namespace desktop {

// What the user has set for all windows of the desktop, as far as Qt, which knows only some
// desktops, does not look itself.
struct DesktopSettings {
  bool dark = false;
  bool high_contrast = false;
  QColor accent;         // invalid if none is set
  QStringList families;  // of the font, the first that there is; empty if none is set
};

// Asks the desktop. Call after the application is made.
DesktopSettings ReadDesktopSettings();

// From now on `changed` is called from Qt's event loop whenever the desktop tells that settings
// have changed.
void WatchDesktopSettings(const std::function<void()>& changed);

}  // namespace desktop
