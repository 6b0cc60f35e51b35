#pragma once

// Stops a calculation from outside, as when its user presses Control-C.

#include <atomic>
#include <exception>

namespace calculation {

// Thrown out of whatever is being computed.
class Interrupted : public std::exception {
 public:
  const char* what() const noexcept override { return "interrupted"; }
};

// While this is true, everything that computes ends with Interrupted within a few milliseconds. A
// signal handler may set it.
inline std::atomic<bool> interruption = false;
static_assert(std::atomic<bool>::is_always_lock_free);

// Cheap enough for every round of a loop. Throws Interrupted.
inline void CheckInterruption() {
  if (interruption.load(std::memory_order_relaxed)) throw Interrupted();
}

}  // namespace calculation
