// Makes one table of the rows on standard input: Markdown, or JSON with --json.

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using Json = nlohmann::ordered_json;

std::string Digits(double value) {
  char text[32];
  std::snprintf(text, sizeof text, value < 100 ? "%.3g" : "%.0f", value);
  return text;
}

bool IsMet(const Json& row) { return row.at("ratio") <= row.at("bar"); }

std::string Bar(const Json& row) {
  if (row.at("bar") == 0) return "";
  return Digits(row.at("bar")) + (IsMet(row) ? "" : " **missed**");
}

void PrintMarkdown(const Json& rows) {
  std::puts("| What | Figure | Reference | Its figure | Ratio | At most |");
  std::puts("|---|---:|---|---:|---:|---:|");
  for (const Json& row : rows) {
    const std::string unit = " " + row.at("unit").get<std::string>();
    std::printf("| %s | %s | %s | %s | %.2f | %s |\n", row.at("name").get<std::string>().c_str(),
                (Digits(row.at("figure")) + unit).c_str(),
                row.at("reference").get<std::string>().c_str(),
                (Digits(row.at("reference_figure")) + unit).c_str(), row.at("ratio").get<double>(),
                Bar(row).c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  Json rows = Json::array();
  for (std::string line; std::getline(std::cin, line);) rows.push_back(Json::parse(line));
  if (argc > 1 && std::string(argv[1]) == "--json") {
    std::printf("%s\n", rows.dump(2).c_str());
  } else {
    PrintMarkdown(rows);
  }
}
