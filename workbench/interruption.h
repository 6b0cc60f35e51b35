#pragma once

// Control-C: the first one ends what the program is doing, the second one the program at once.

namespace workbench {

// From now on SIGINT interrupts, unless the program was started with it ignored, as a job in the
// background of a script is.
void HeedInterruptions();

// What interrupts has been dealt with; the next SIGINT is a first one again.
void ForgetInterruption();

// From now on what waits for a user is interrupted after so many seconds; not any more if it is 0.
void LimitWaiting(double seconds);

// Whether that was why. Asks once.
bool TakeTimeout();

// Can be read while an interruption has not been dealt with.
int InterruptionDescriptor();

}  // namespace workbench
