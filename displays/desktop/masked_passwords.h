#pragma once

namespace desktop {

// From now on what is typed into a password field and deleted from it goes to screen readers as its
// mask. Qt alone tells the text.
void TellPasswordsMasked();

}  // namespace desktop
