// Dialogs on a scripted display, calls that show nothing, large lists and results. Google Benchmark
// runs figure and reference in random order, repetition by repetition, and the median counts.

#include "bench/in_process.h"

#include <benchmark/benchmark.h>

#include <map>

#include "bench/row.h"

namespace bench {
namespace {

struct Comparison {
  std::string name;
  Unit unit;
  std::string reference;
  double bar;
};

std::vector<Comparison>& Comparisons() {
  static std::vector<Comparison> comparisons;
  return comparisons;
}

std::string ReferenceOf(const std::string& name) { return name + " (reference)"; }

void Register(const std::string& name, const Measured& measured) {
  benchmark::RegisterBenchmark(name.c_str(), [measured](benchmark::State& state) {
    measured.prepare();
    for (auto _ : state) measured.work();
  });
}

// Keeps the processor time of every repetition: what else runs on the machine is not in it.
class Collector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration) {
        times_[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
      }
    }
  }
  bool Has(const Comparison& comparison) const {  // a filter may have left it out
    return times_.count(comparison.name) != 0 && times_.count(ReferenceOf(comparison.name)) != 0;
  }
  double Nanoseconds(const std::string& name) const { return Median(times_.at(name)); }

 private:
  std::map<std::string, std::vector<double>> times_;
};

void PrintRow(const Collector& collector, const Comparison& comparison) {
  const double figure = collector.Nanoseconds(comparison.name);
  const double reference = collector.Nanoseconds(ReferenceOf(comparison.name));
  Print({comparison.name, figure / comparison.unit.nanoseconds, comparison.unit.name,
         comparison.reference, reference / comparison.unit.nanoseconds, comparison.bar});
}

}  // namespace

void Compare(const std::string& name, const Unit& unit, const Measured& figure,
             const std::string& reference, const Measured& reference_figure, double bar) {
  Register(name, figure);
  Register(ReferenceOf(name), reference_figure);
  Comparisons().push_back({name, unit, reference, bar});
}

}  // namespace bench

int main(int argc, char** argv) {
  std::vector<std::string> arguments{argv[0], "--benchmark_enable_random_interleaving=true",
                                     "--benchmark_repetitions=15", "--benchmark_min_time=0.02"};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  std::vector<char*> words;
  for (std::string& argument : arguments) words.push_back(argument.data());
  int count = static_cast<int>(words.size());
  benchmark::Initialize(&count, words.data());
  bench::CompareDialogs();
  bench::CompareCalls();
  bench::CompareLists();
  bench::CompareResults();
  bench::Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  for (const auto& comparison : bench::Comparisons()) {
    if (collector.Has(comparison)) bench::PrintRow(collector, comparison);
  }
}
