#pragma once

// The process's allocator, of which one allocation, or all from one on, can be made to fail while
// the plug-in and its layers run.

namespace failing_allocator {

// Allocation `at`, counted from 1 from this call on, fails; with `for_good` all later ones too. 0:
// none fails, but all are counted.
void Arm(int at, bool for_good);

// Back to normal. Returns how many allocations there were while armed.
int Disarm();

// Blocks that are allocated now.
long LiveBlocks();

// While one of these lives nothing fails and nothing is counted: for what is not the plug-in's.
class Pause {
 public:
  Pause();
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;
  ~Pause();
};

}  // namespace failing_allocator
