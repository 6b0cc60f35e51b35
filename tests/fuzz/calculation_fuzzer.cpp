#include <cstdint>
#include <string>

#include "tests/calculation/fake_functions.h"

constexpr long kMostRounds = 100;  // of loops, whose rounds may be long

// A calculation from any bytes: a result, or an error that its source can explain.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const calculation::Source source("fuzzed", {reinterpret_cast<const char*>(data), size});
  calculation::FakeFunctions functions;
  calculation::Variables variables;
  try {
    const calculation::NodePtr tree = calculation::Parse(source.text(), functions);
    calculation::Evaluator(functions, variables, kMostRounds).Evaluate(*tree);
  } catch (const calculation::Error& error) {
    if (source.Explain(error).empty()) throw std::logic_error("nothing is explained");
  }
  return 0;
}
