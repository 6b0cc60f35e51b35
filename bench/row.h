#pragma once

// One row of the table: a figure, what it is held against in the same run, and the bar.

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace bench {

struct Row {
  std::string name;
  double figure;
  std::string unit;
  std::string reference;
  double reference_figure;
  double bar = 0;  // the most that the ratio may be; 0 if the row is for information
};

// As one line of JSON, which table.cpp makes the table of.
inline void Print(const Row& row) {
  const nlohmann::ordered_json line{{"name", row.name},
                                    {"figure", row.figure},
                                    {"unit", row.unit},
                                    {"reference", row.reference},
                                    {"reference_figure", row.reference_figure},
                                    {"ratio", row.figure / row.reference_figure},
                                    {"bar", row.bar}};
  std::printf("%s\n", line.dump().c_str());
  std::fflush(stdout);
}

inline double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace bench
