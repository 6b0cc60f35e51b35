#pragma once

// The user's part as a script: one action a line.
//
//   enter N TEXT    type TEXT    choose N ITEM    click N    row R [X]    row+ R [X]    row- R [X]
//   press K    return    escape    tab    close
//
// Empty lines and lines that start with # are skipped. TEXT starts after one blank and runs to the
// end of the line; a line break in it is a CR, and where it ends with one the line ends with CR LF.

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/carbon/display.h"

namespace display {

struct Answer {
  Action action;
  std::string source;  // what messages call its file or text
  int line = 0;        // in its file, from 1; or its place in a text
  std::string text;    // as it was written
};

// A line that is no answer. what() says what was expected.
class AnswerError : public std::runtime_error {
 public:
  AnswerError(int line, const std::string& what) : std::runtime_error(what), line_(line) {}

  int line() const { return line_; }

 private:
  int line_;
};

// What stands in an answers file: UTF-8, lines ended by LF or CR LF. Throws AnswerError.
std::vector<Answer> ParseAnswers(std::string_view file, const std::string& source = "");

// The same from one text whose answers are separated by ";".
std::vector<Answer> ParseAnswerText(std::string_view text, const std::string& source = "");

// The line that gives `action` again.
std::string FormatAnswer(const Action& action);

}  // namespace display
