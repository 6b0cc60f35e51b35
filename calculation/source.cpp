#include "calculation/source.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "calculation/unicode.h"

namespace calculation {
namespace {

constexpr std::size_t kShownBefore = 60;  // characters of a long line that stand before the place
constexpr std::size_t kShownAfter = 40;   // and from it on
constexpr std::size_t kLookedAt = 4096;   // units from it on, among which those are

// A line as a list of characters; what a terminal would obey becomes a blank.
std::vector<std::u16string> ShownCharacters(std::u16string_view line) {
  std::vector<std::u16string> characters;
  for (const std::u16string_view character : SplitCharacters(line)) {
    const bool is_control = u_iscntrl(static_cast<UChar32>(character.front()));
    characters.emplace_back(is_control ? u" " : character);
  }
  return characters;
}

// The line, or the part of a long one around the place, and the underline.
std::string Show(const std::vector<std::u16string>& line, std::size_t begin, std::size_t end) {
  const std::size_t first = begin > kShownBefore ? begin - kShownBefore : 0;
  const std::size_t last = std::min(line.size(), begin + kShownAfter);
  const auto part = [&line](std::size_t from, std::size_t to) {
    std::u16string text;
    for (std::size_t i = from; i < to; ++i) text += line[i];
    return text;
  };
  const std::string lead = first > 0 ? "  …" : "  ";
  const std::size_t indent = DisplayWidth(part(first, begin)) + (first > 0 ? 3 : 2);
  const std::size_t marked = DisplayWidth(part(begin, std::min(end, last)));
  return lead + ToUtf8(part(first, last)) + (last < line.size() ? "…" : "") + "\n" +
         std::string(indent, ' ') + std::string(std::max<std::size_t>(marked, 1), '^');
}

// Where the line that holds `position` begins.
std::size_t LineStart(std::u16string_view text, std::size_t position) {
  return text.substr(0, position).find_last_of(u"\r\n") + 1;
}

std::size_t LineNumber(std::u16string_view text, std::size_t line_start) {
  std::size_t number = 1;
  for (std::size_t i = 0; i < line_start; ++i) {
    const bool first_of_two = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if (IsLineBreak(text[i]) && !first_of_two) ++number;
  }
  return number;
}

}  // namespace

Source::Source(std::string name, std::string_view utf8, std::size_t first_line)
    : name_(std::move(name)), first_line_(first_line) {
  if (utf8.starts_with("\xEF\xBB\xBF")) utf8.remove_prefix(3);
  Append(utf8);
}

void Source::Append(std::string_view utf8) {
  const std::u16string units = ToUtf16(utf8);
  const std::string back = ToUtf8(units);
  if (back != utf8 && !not_utf8_) {
    const auto wrong = std::mismatch(utf8.begin(), utf8.end(), back.begin(), back.end()).first;
    not_utf8_ = text_.size() + ToUtf16({utf8.begin(), wrong}).size();
  }
  text_ += units;
}

void Source::CheckEncoding() const {
  if (not_utf8_) throw Error({*not_utf8_, *not_utf8_ + 1}, "this is not UTF-8");
}

Source::Position Source::PositionOf(std::size_t unit) const {
  const std::size_t at = std::min(unit, text_.size());
  const std::size_t line_start = LineStart(text_, at);
  const std::u16string_view before = std::u16string_view(text_).substr(line_start, at - line_start);
  return {first_line_ - 1 + LineNumber(text_, line_start), Characters(before).Count() + 1};
}

std::string Source::NamePosition(std::size_t unit) const {
  const Position position = PositionOf(unit);
  return (name_.empty() ? "" : name_ + ", ") + "line " + std::to_string(position.line) +
         ", column " + std::to_string(position.column);
}

std::string Source::Explain(const Error& error) const {
  const std::size_t begin = std::min(error.place().begin, text_.size());
  const std::size_t line_start = LineStart(text_, begin);
  const std::size_t line_end =
      std::min({text_.find_first_of(u"\r\n", begin), text_.size(), begin + kLookedAt});
  const std::size_t end = std::clamp(error.place().end, begin, line_end);
  const std::u16string_view text = text_;
  const std::u16string_view line = text.substr(line_start, line_end - line_start);
  const std::size_t column = Characters(line.substr(0, begin - line_start)).Count();
  const std::size_t length = Characters(text.substr(begin, end - begin)).Count();
  return NamePosition(begin) + ": " + error.what() + "\n" +
         Show(ShownCharacters(line), column, column + length);
}

}  // namespace calculation
