// A whole process that shows no dialog: bench_start_up TARVO BARE_PROGRAM LIBRARY [ROUNDS]

#include <cstdlib>

#include "bench/child.h"
#include "bench/row.h"

namespace {

double TimeOf(const bench::Command& command) {
  const double start = bench::Milliseconds();
  if (bench::Child(command).Wait() != 0) std::exit(1);
  return bench::Milliseconds() - start;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return 2;
  const int rounds = argc > 4 ? std::atoi(argv[4]) : 201;
  const bench::Command tarvo{argv[1], "eval", R"(TarvoDialogVersion(""))"};
  const bench::Command bare{argv[2], argv[3]};
  TimeOf(tarvo);
  TimeOf(bare);
  std::vector<double> ours;
  std::vector<double> reference;
  for (int round = 0; round < rounds; ++round) {
    ours.push_back(TimeOf(tarvo));
    reference.push_back(TimeOf(bare));
  }
  bench::Print({"Start-up without a dialog", bench::Median(ours), "ms",
                "bare program that loads one library", bench::Median(reference), 3});
}
