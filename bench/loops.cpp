// A million rounds that join texts, next to a database's: bench_loops TARVO [ROUNDS]

#include <cstdlib>

#include "bench/child.h"
#include "bench/row.h"

namespace {

double TimeOf(const bench::Command& command) {
  const double start = bench::Milliseconds();
  if (bench::Child(command).Wait() != 0) std::exit(1);
  return bench::Milliseconds() - start;
}

void Measure(const std::string& name, const bench::Command& ours, const bench::Command& database,
             int rounds) {
  std::vector<double> figures;
  std::vector<double> references;
  for (int round = 0; round < rounds; ++round) {
    figures.push_back(TimeOf(ours));
    references.push_back(TimeOf(database));
  }
  bench::Print({name, bench::Median(figures), "ms", "sqlite3, a recursive query with ||",
                bench::Median(references), 2});
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  const std::string sqlite = bench::FindProgram("sqlite3");
  if (sqlite.empty()) {
    std::fprintf(stderr, "sqlite3 is not installed: the loops are skipped\n");
    return 0;
  }
  const bench::Command query{
      sqlite, ":memory:",
      "with recursive loop(i, t) as (select 0, '' union all select i + 1, 'item ' || i from loop "
      "where i < 1000000) select max(t) from loop"};
  Measure("A million rounds that make a text",
          {argv[1], "eval",
           "While ( [ i = 0 ; t = \"\" ] ; i < 1000000 ; [ i = i + 1 ; t = \"item \" & i ] ; t )"},
          query, rounds);
  // The database would copy what is there in every round.
  Measure("A million rounds that add to one text",
          {argv[1], "eval",
           "While ( [ i = 0 ; t = \"\" ] ; i < 1000000 ; [ i = i + 1 ; t = t & \"x\" ] ; "
           "Length ( t ) )"},
          query, rounds);
}
