#include "workbench/repl/piped_lines.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "calculation/interruption.h"
#include "workbench/failure.h"
#include "workbench/user_text.h"

namespace workbench {

// CR, LF and CR LF end lines. A CR ends one at once, without waiting for the LF that may follow.
Lines::Line PipedLines::Next(bool /*continues*/) {
  std::string text;
  for (int sign; (sign = std::getc(stdin)) != EOF;) {
    const bool is_second_half = sign == '\n' && after_cr_;
    after_cr_ = sign == '\r';
    if (is_second_half) continue;
    if (sign == '\n' || sign == '\r') return {Line::Kind::kText, FromUser(text).value_or(text)};
    text += static_cast<char>(sign);
  }
  if (std::ferror(stdin)) {
    calculation::CheckInterruption();
    throw Failure(Status::kUsage,
                  std::string("cannot read standard input: ") + std::strerror(errno));
  }
  if (text.empty()) return {};
  return {Line::Kind::kText, FromUser(text).value_or(text)};
}

}  // namespace workbench
