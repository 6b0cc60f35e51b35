#pragma once

namespace desktop {

// Whether the desktop has a session bus, where its settings and its screen readers are.
bool HasSessionBus();

// Where there is none Qt would have one started, which nobody listens to. This keeps it from that.
// Changes the environment: call it while there is one thread and before Qt is started.
void StartNoSessionBus();

}  // namespace desktop
