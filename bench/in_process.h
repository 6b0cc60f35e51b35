#pragma once

// What runs inside the process, each figure with its reference.

#include <functional>
#include <string>

namespace bench {

using Work = std::function<void()>;

struct Unit {
  std::string name;
  double nanoseconds;
};
inline const Unit kNanoseconds{"ns", 1};
inline const Unit kMicroseconds{"µs", 1e3};
inline const Unit kMilliseconds{"ms", 1e6};

// What is measured, after what has to be there for it, which is not.
struct Measured {
  Work work;
  Work prepare = [] {};
};

// Measures both in the same run, interleaved, and makes a row of them.
void Compare(const std::string& name, const Unit& unit, const Measured& figure,
             const std::string& reference, const Measured& reference_figure, double bar);

// What is measured is registered by these.
void CompareCalls();
void CompareDialogs();
void CompareLists();
void CompareResults();  // with ICU; there is no such row if that is not installed

}  // namespace bench
