#pragma once

namespace desktop {

// Returns when Qt has found the screen reader, if the desktop says that one is in use: of a dialog
// that opens before, it would say nothing. Gives up in a third of a second.
void AwaitScreenReader();

}  // namespace desktop
