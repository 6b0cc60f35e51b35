// What filling the list takes of memory, by the operating system's account, and of heap blocks, by
// standing in for the allocator: bench_list_memory

#include <cstdlib>
#include <fstream>

#include "bench/loaded_plugin.h"
#include "bench/row.h"

extern "C" {
void* __libc_malloc(std::size_t size);
}

namespace {

long blocks = 0;

}  // namespace

extern "C" void* malloc(std::size_t size) {
  ++blocks;
  return __libc_malloc(size);
}

namespace {

constexpr std::size_t kLines = 1'000'000;
constexpr std::size_t kLineUnits = 21;  // with the separator
constexpr double kMegabyte = 1024.0 * 1024.0;

// VmHWM, the most that was ever resident, or VmRSS, what is resident now.
double Megabytes(const std::string& entry) {
  std::ifstream file("/proc/self/status");
  for (std::string word; file >> word;) {
    double kilobytes;
    if (word == entry + ":" && file >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

std::u16string Lines(std::size_t count) {
  std::u16string text;
  text.reserve(count * kLineUnits);
  for (std::size_t i = 0; i < count; ++i) text.append(20, u'x').append(1, u'\r');
  text.pop_back();
  return text;
}

long BlocksOfFilling(std::size_t lines) {
  bench::Call fill(u"TarvoFillListBox", Lines(lines));
  const long before = blocks;
  fill();
  return blocks - before;
}

// The text goes into a local text, a work buffer, of which half is written, and a string.
double PrescribedMegabytes() {
  return static_cast<double>(kLines * (3 * kLineUnits * sizeof(char16_t) + 24)) / kMegabyte;
}

void PrintPeak() {
  bench::Call fill(u"TarvoFillListBox", Lines(kLines));
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew
  const double before = Megabytes("VmRSS");
  fill();
  bench::Print({"Peak memory of TarvoFillListBox, 1,000,000 lines", Megabytes("VmHWM") - before,
                "MB", "prescribed buffers and 24 bytes a line", PrescribedMegabytes(), 1.02});
}

}  // namespace

int main() {
  PrintPeak();
  bench::Print({"Heap blocks of TarvoFillListBox, 1,000,000 lines",
                static_cast<double>(BlocksOfFilling(kLines)), "blocks", "with 1,000 lines",
                static_cast<double>(BlocksOfFilling(1000)), 1});
}
