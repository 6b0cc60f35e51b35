#include "workbench/output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <variant>

#include "calculation/decimal.h"
#include "calculation/interruption.h"
#include "calculation/unicode.h"
#include "displays/protocol/display_json.h"
#include "workbench/failure.h"

namespace workbench {

void Print(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EINTR) {
      calculation::CheckInterruption();
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
    return R"({"type": "text", "result": )" + JsonText(text) + "}\n";
  }
  const std::size_t point = text.find('.');  // JSON wants a digit before it
  if (point == 0 || (point == 1 && text[0] == '-')) text.insert(point, "0");
  return R"({"type": "number", "result": )" + text + "}\n";
}

void Warn(const std::string& message) { std::fprintf(stderr, "tarvo: %s\n", message.c_str()); }

std::string JsonText(std::string_view text) { return display::TextToJson(text); }

}  // namespace workbench
