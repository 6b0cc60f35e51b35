// Whole dialogs, but for the screen.

#include <benchmark/benchmark.h>

#include <cstdlib>

#include "bench/in_process.h"
#include "bench/loaded_plugin.h"

namespace bench {
namespace {

constexpr int kPairs = 1000;  // 20 µs if a pair takes 20 ns

void PairsOfMallocAndFree() {
  for (int i = 0; i < kPairs; ++i) {
    void* block = std::malloc(64);
    benchmark::DoNotOptimize(block);
    std::free(block);
  }
}

}  // namespace

void CompareDialogs() {
  const auto call = std::make_shared<Call>(
      u"TarvoDialog", u"4|Enter the address|OK|Cancel|||First|Last|Street|Town|");
  const auto dialog = [call] {
    const QuickUser user(4, "Ann");
    (*call)();
  };
  Compare("Scripted dialog of four fields", kMicroseconds, {dialog},
          "1000 pairs of malloc and free", {PairsOfMallocAndFree}, 1);
}

}  // namespace bench
