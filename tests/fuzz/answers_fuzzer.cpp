#include "displays/scripted/answers.h"

#include <cstdint>
#include <stdexcept>
#include <string_view>

// An answers file from any bytes: what is read can be written, and reads as the same again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    for (const auto& answer : display::ParseAnswers({reinterpret_cast<const char*>(data), size})) {
      const std::string line = display::FormatAnswer(answer.action, answer.names);
      const auto again = display::ParseAnswers(line);
      if (again.size() != 1 || display::FormatAnswer(again[0].action, again[0].names) != line) {
        throw std::logic_error("an answer does not read back: " + line);
      }
    }
  } catch (const display::AnswerError&) {
    return 0;  // said what was expected
  }
  return 0;
}
