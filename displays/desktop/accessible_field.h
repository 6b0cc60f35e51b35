#pragma once

namespace desktop {

// Describes the edit fields to screen readers. Qt 6.4 does too, but says of each letter's
// attributes that they hold for no letter, upon which Orca leaves out the last one of the text.
void InstallAccessibleFields();

}  // namespace desktop
