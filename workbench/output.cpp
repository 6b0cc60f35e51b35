#include "workbench/output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>
#include <variant>

#include "calculation/decimal.h"
#include "calculation/interruption.h"
#include "calculation/unicode.h"
#include "workbench/failure.h"
#include "workbench/user_text.h"

namespace workbench {

void Print(std::string_view text) { PrintJson(ForUser(text)); }

void PrintJson(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EINTR) {
      calculation::CheckInterruption();
    } else if (errno == EPIPE) {
      throw Failure(Status::kWrong, "");  // its reader wants no more, and no message either
    } else {
      throw Failure(Status::kWrong,
                    std::string("cannot write to standard output: ") + std::strerror(errno));
    }
  }
}

std::string FormatResult(const calculation::Value& result) {
  std::string line = calculation::ToUtf8(calculation::AsText(result));
  std::replace(line.begin(), line.end(), '\r', '\n');
  return line + "\n";
}

std::string FormatResultAsJson(const calculation::Value& result) {
  std::string text = calculation::ToUtf8(calculation::AsText(result));
  if (!std::holds_alternative<calculation::Decimal>(result)) {
    return ToLine({{"type", "text"}, {"result", text}}) + "\n";
  }
  // Exact, which the library's numbers are not.
  const std::size_t point = text.find('.');  // JSON wants a digit before it
  if (point == 0 || (point == 1 && text[0] == '-')) text.insert(point, "0");
  return R"({"type": "number", "result": )" + text + "}\n";
}

void Warn(const std::string& message) {
  std::fprintf(stderr, "tarvo: %s\n", ForUser(message).c_str());
}

std::string ToLine(const display::Json& json) {
  const std::string lines =
      json.dump(0, ' ', false, display::Json::error_handler_t::replace);  // with ": " and ",\n"
  std::string line;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i] != '\n') line += lines[i];
    if (lines[i] == '\n' && lines[i - 1] == ',') line += ' ';
  }
  return line;
}

}  // namespace workbench
