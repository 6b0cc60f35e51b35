#include "displays/scripted/answers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

namespace display {
namespace {

using Kind = Action::Kind;

// What follows an action's word.
enum class Shape { kNothing, kText, kNumber, kNumberAndText, kNumberAndItem, kNumberAndX };

bool HasNumber(Shape shape) { return shape != Shape::kNothing && shape != Shape::kText; }

bool HasText(Shape shape) { return shape == Shape::kText || shape == Shape::kNumberAndText; }

struct Form {
  std::string_view word;
  Kind kind;
  Shape shape;
  std::string_view usage;
  std::string_view meaning;
};

constexpr std::array kForms{
    Form{"enter", Kind::kEnter, Shape::kNumberAndText, "enter N TEXT",
         "the content of field N becomes TEXT, which runs to the end of the line"},
    Form{"type", Kind::kType, Shape::kText, "type TEXT",
         "TEXT is appended in the field that has the focus"},
    Form{"choose", Kind::kChoose, Shape::kNumberAndItem, "choose N ITEM",
         "chooses an item, by its number, of the pop-up menu of field N"},
    Form{"click", Kind::kClick, Shape::kNumber, "click N",
         "clicks the check box or radio button of field N"},
    Form{"row", Kind::kRow, Shape::kNumberAndX, "row R [X]",
         "clicks row R of the list, at X in the window"},
    Form{"row+", Kind::kRowToggle, Shape::kNumberAndX, "row+ R [X]",
         "clicks row R with Control: adds it to the selection or takes it away"},
    Form{"row-", Kind::kRowExtend, Shape::kNumberAndX, "row- R [X]",
         "clicks row R with Shift: selects from the last clicked row to it"},
    Form{"press", Kind::kPress, Shape::kNumber, "press K",
         "presses button K; on an alert 1 is the default button, 2 cancel and 3 other"},
    Form{"return", Kind::kReturn, Shape::kNothing, "return",
         "presses the Return key, and so the default button if it is enabled"},
    Form{"escape", Kind::kEscape, Shape::kNothing, "escape",
         "presses the Escape key, which cancels where it may"},
    Form{"tab", Kind::kTab, Shape::kNothing, "tab",
         "moves the focus to the next field, list or button"},
    Form{"close", Kind::kClose, Shape::kNothing, "close", "closes the window, as Escape does"},
};

void SkipBlanks(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
}

std::string_view TakeWord(std::string_view& rest) {
  const std::string_view word = rest.substr(0, rest.find_first_of(" \t"));
  rest.remove_prefix(word.size());
  return word;
}

// A whole number, clamped to 32 bits; nothing if the next word is none.
std::optional<int> TakeNumber(std::string_view& rest) {
  std::string_view word = TakeWord(rest);
  if (word.starts_with('+')) word.remove_prefix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (end != word.data() + word.size() || error == std::errc::invalid_argument) return std::nullopt;
  using Limits = std::numeric_limits<int>;
  if (error == std::errc::result_out_of_range) {
    return word.starts_with('-') ? Limits::min() : Limits::max();
  }
  return number;
}

// The text after one blank, to the end of the line.
std::string TakeText(std::string_view& rest) {
  if (!rest.empty()) rest.remove_prefix(1);
  return std::string(std::exchange(rest, {}));
}

// The content of the text in double quotes that comes next; nothing if none does, or if it has no
// end.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
  if (!rest.starts_with('"')) return std::nullopt;
  std::string text;
  for (std::size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == '"') {
      rest.remove_prefix(i + 1);
      return text;
    }
    if (rest[i] == '\\' && ++i == rest.size()) break;
    text += rest[i];
  }
  return std::nullopt;
}

bool IsLetter(char sign) {
  return (sign >= 'A' && sign <= 'Z') || (sign >= 'a' && sign <= 'z') || sign == '_' ||
         static_cast<unsigned char>(sign) >= 0x80;
}

// Whether the name reads as itself without quotes.
bool IsPlainWord(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), IsLetter);
}

bool TakeInto(int& target, std::string_view& rest) {
  const std::optional<int> number = TakeNumber(rest);
  if (number) target = *number;
  return number.has_value();
}

enum class Quotes { kNeeded, kMayBeLeftOut };

// A number, or a name in its place.
bool TakeInto(int& target, std::optional<std::string>& name, Quotes quotes,
              std::string_view& rest) {
  SkipBlanks(rest);
  if (rest.starts_with('"')) {
    name = TakeQuoted(rest);
    return name && (rest.empty() || rest.front() == ' ' || rest.front() == '\t');
  }
  if (quotes == Quotes::kNeeded || rest.empty() || !IsLetter(rest.front())) {
    return TakeInto(target, rest);
  }
  name = std::string(TakeWord(rest));
  return true;
}

// The x of a row may be left out.
bool TakeX(int& x, std::string_view& rest) {
  SkipBlanks(rest);
  x = kRowMiddle;
  return rest.empty() || TakeInto(x, rest);
}

Quotes QuotesOf(Shape shape) {
  return shape == Shape::kNumberAndX ? Quotes::kNeeded : Quotes::kMayBeLeftOut;
}

bool TakeArguments(Shape shape, std::string_view& rest, Action& action, Names& names) {
  if (HasNumber(shape) && !TakeInto(action.number, names.number, QuotesOf(shape), rest)) {
    return false;
  }
  if (HasText(shape)) action.text = TakeText(rest);
  if (shape == Shape::kNumberAndItem) {
    return TakeInto(action.item, names.item, Quotes::kNeeded, rest);
  }
  return shape != Shape::kNumberAndX || TakeX(action.x, rest);
}

std::string AllUsages() {
  std::string usages;
  for (const Form& form : kForms) {
    usages += (usages.empty() ? "" : ", ") + std::string(form.usage);
  }
  return usages;
}

Answer ParseAnswer(std::string_view text, int line) {
  std::string_view rest = text;
  const std::string_view word = TakeWord(rest);
  const auto form = std::find_if(kForms.begin(), kForms.end(),
                                 [word](const Form& known) { return known.word == word; });
  if (form == kForms.end()) {
    throw AnswerError(line,
                      "\"" + std::string(text) + "\" is no answer; expected one of " + AllUsages());
  }
  Answer answer;
  answer.action.kind = form->kind;
  const bool complete = TakeArguments(form->shape, rest, answer.action, answer.names);
  SkipBlanks(rest);
  if (!complete || !rest.empty()) {
    throw AnswerError(line, "\"" + std::string(text) + "\": expected \"" +
                                std::string(form->usage) +
                                "\" with whole numbers, or names in double quotes");
  }
  answer.text = text;
  answer.line = line;
  return answer;
}

// Calls `take` with each piece between the separators and its number, from 1.
template <class Take>
void ForEachPiece(std::string_view text, char separator, Take take) {
  for (int number = 1;; ++number) {
    const std::size_t end = text.find(separator);
    take(text.substr(0, end), number);
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

constexpr std::string_view kDialogLine = "# dialog ";

// The name in a line that says which dialog the answers behind it are for.
std::optional<std::string> DialogIn(std::string_view line) {
  if (!line.starts_with(kDialogLine)) return std::nullopt;
  line.remove_prefix(kDialogLine.size());
  line.remove_prefix(std::min(line.find_first_not_of("0123456789"), line.size()));
  if (line.empty()) return "";
  if (!line.starts_with(": ")) return std::nullopt;
  return std::string(line.substr(2));
}

std::vector<Answer> ParsePieces(std::string_view text, char separator, const std::string& source) {
  std::vector<Answer> answers;
  int dialog_line = 0;
  std::string dialog;
  ForEachPiece(text, separator, [&](std::string_view piece, int number) {
    if (piece.ends_with('\r')) piece.remove_suffix(1);
    SkipBlanks(piece);
    if (auto name = DialogIn(piece)) {
      dialog_line = number;
      dialog = std::move(*name);
    }
    if (piece.empty() || piece.starts_with('#')) return;
    Answer& answer = answers.emplace_back(ParseAnswer(piece, number));
    answer.source = source;
    answer.dialog_line = dialog_line;
    answer.dialog = dialog;
  });
  return answers;
}

// The name, in quotes unless they can be left out, or else the number.
std::string FormatNumber(int number, const std::optional<std::string>& name, Quotes quotes) {
  if (!name) return std::to_string(number);
  if (quotes == Quotes::kMayBeLeftOut && IsPlainWord(*name)) return *name;
  std::string quoted = "\"";
  for (const char sign : *name) {
    if (sign == '"' || sign == '\\') quoted += '\\';
    quoted += sign;
  }
  return quoted + "\"";
}

}  // namespace

std::vector<Answer> ParseAnswers(std::string_view file, const std::string& source) {
  if (file.starts_with("\xEF\xBB\xBF")) file.remove_prefix(3);
  return ParsePieces(file, '\n', source);
}

std::vector<Answer> ParseAnswerText(std::string_view text, const std::string& source) {
  return ParsePieces(text, ';', source);
}

std::string AnswerUsage(std::string_view word) {
  const auto form = std::find_if(kForms.begin(), kForms.end(),
                                 [word](const Form& known) { return known.word == word; });
  return form == kForms.end() ? "" : std::string(form->usage) + "\n  " + std::string(form->meaning);
}

std::string FormatDialogLine(int number, const std::string& name) {
  return std::string(kDialogLine) + std::to_string(number) + (name.empty() ? "" : ": " + name);
}

std::string FormatAnswer(const Action& action, const Names& names) {
  const auto form = std::find_if(kForms.begin(), kForms.end(), [&action](const Form& known) {
    return known.kind == action.kind;
  });
  std::string line(form->word);
  if (HasNumber(form->shape)) {
    line += " " + FormatNumber(action.number, names.number, QuotesOf(form->shape));
  }
  if (form->shape == Shape::kNumberAndItem) {
    line += " " + FormatNumber(action.item, names.item, Quotes::kNeeded);
  }
  if (form->shape == Shape::kNumberAndX && action.x != kRowMiddle) {
    line += " " + std::to_string(action.x);
  }
  if (HasText(form->shape)) {
    line += " " + action.text;
    std::replace(line.begin(), line.end(), '\n', '\r');
    if (line.ends_with('\r')) line += '\r';  // a reader takes one for a part of the line's end
  }
  return line;
}

}  // namespace display
