#pragma once

#include <QAccessible>

namespace desktop {

// Lets `kMake` describe to screen readers the widgets that it knows. Call it as often as there are
// such widgets; it is installed once.
template <QAccessible::InterfaceFactory kMake>
void InstallAccessibleFactory() {
  [[maybe_unused]] static const bool installed = [] {
    QAccessible::installFactory(kMake);
    return true;
  }();
}

}  // namespace desktop
