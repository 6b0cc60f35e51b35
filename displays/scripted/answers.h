#pragma once

// The user's part as a script: one action a line.
//
//   enter N TEXT    type TEXT    choose N ITEM    click N    row R [X]    row+ R [X]    row- R [X]
//   press K    return    escape    tab    close
//
// In place of N, ITEM, R and K, a name in double quotes may stand, in which \" is a quote and \\ a
// backslash; in place of N and K also one word. It is the text that the user sees: the label of the
// field, the menu's item, the row, the button.
//
// Empty lines and lines that start with # are skipped, but for "# dialog N: NAME", with which a
// recording says which dialog the answers behind it are for. TEXT starts after one blank and runs
// to the end of the line. A line break in it is a CR; if TEXT ends with a CR, the line ends with CR
// LF, since one CR before the LF is part of the line's end.

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/carbon/display.h"

namespace display {

// What stands in place of an action's numbers.
struct Names {
  std::optional<std::string> number;
  std::optional<std::string> item;
};

struct Answer {
  Action action;
  Names names;
  std::string source;  // what messages call its file or text
  int line = 0;        // its number in the file, or among the answers of a text, from 1
  std::string text;    // as it was written

  // The dialog that a recording names for the answer, and the line that does; 0 if none does.
  int dialog_line = 0;
  std::string dialog = {};
};

// A line that is no answer. what() says what was expected.
class AnswerError : public std::runtime_error {
 public:
  AnswerError(int line, const std::string& what) : std::runtime_error(what), line_(line) {}

  int line() const { return line_; }

 private:
  int line_;
};

// The answers in the content of a file: UTF-8, lines ended by LF or CR LF. Throws AnswerError.
std::vector<Answer> ParseAnswers(std::string_view file, const std::string& source = "");

// The same from one text whose answers are separated by ";".
std::vector<Answer> ParseAnswerText(std::string_view text, const std::string& source = "");

// How the answer that begins with this word is written; empty if there is none.
std::string AnswerUsage(std::string_view word);

// The line, without its end, that reads as `action` with these names.
std::string FormatAnswer(const Action& action, const Names& names = {});

// The line that says which dialog the answers behind it are for, by its number and name.
std::string FormatDialogLine(int number, const std::string& name);

}  // namespace display
