#pragma once

namespace desktop {

// Whether the desktop has a session bus, on which its settings and screen readers are found.
bool HasSessionBus();

// Without a session bus, Qt would start one of its own, on which nobody listens. This keeps Qt from
// it by a change of the environment: call it before Qt is started, while there is only one thread.
void KeepQtFromStartingSessionBus();

}  // namespace desktop
