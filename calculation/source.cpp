#include "calculation/source.h"

#include <algorithm>
#include <utility>

#include "calculation/unicode.h"

namespace calculation {
namespace {

constexpr std::size_t kShownBefore =
    60;  // characters of a long line that are shown before the place
constexpr std::size_t kShownAfter = 40;  // and from it on

// The columns that a terminal gives to a character: two to the wide ones of East Asia and to
// pictures, none to marks that stand on the character before.
std::size_t ColumnsOf(char32_t character) {
  struct Range {
    char32_t first, last;
  };
  static constexpr Range kMarks[] = {{0x300, 0x36F}, {0x200B, 0x200F}, {0xFE00, 0xFE0F}};
  static constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF},   {0xAC00, 0xD7A3},
                                    {0xF900, 0xFAFF}, {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
                                    {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};
  const auto holds = [character](const Range& range) {
    return character >= range.first && character <= range.last;
  };
  if (std::any_of(std::begin(kMarks), std::end(kMarks), holds)) return 0;
  return std::any_of(std::begin(kWide), std::end(kWide), holds) ? 2 : 1;
}

// A line as a list of characters; what a terminal would obey becomes a blank.
std::u32string Characters(std::u16string_view text) {
  std::u32string characters;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t character = CodePointAt(text, i);
    if (character > 0xFFFF) ++i;
    const bool is_control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    characters += is_control ? U' ' : character;
  }
  return characters;
}

std::string ToUtf8(std::u32string_view characters) {
  std::u16string text;
  for (const char32_t character : characters) {
    if (character > 0xFFFF) {
      text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
      text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
      text += static_cast<char16_t>(character);
    }
  }
  return calculation::ToUtf8(text);
}

std::size_t Width(std::u32string_view characters) {
  std::size_t width = 0;
  for (const char32_t character : characters) width += ColumnsOf(character);
  return width;
}

// The line, or the part of a long one around the place, and the underline.
std::string Show(const std::u32string& line, std::size_t begin, std::size_t end) {
  const std::size_t first = begin > kShownBefore ? begin - kShownBefore : 0;
  const std::size_t last = std::min(line.size(), begin + kShownAfter);
  const std::u32string_view shown = std::u32string_view(line).substr(first, last - first);
  const std::u32string_view before = shown.substr(0, begin - first);
  const std::u32string_view marked = shown.substr(begin - first, end - begin);
  const std::string lead = first > 0 ? "  …" : "  ";
  return lead + ToUtf8(shown) + (last < line.size() ? "…" : "") + "\n" +
         std::string(Width(before) + (first > 0 ? 3 : 2), ' ') +
         std::string(std::max<std::size_t>(Width(marked), 1), '^');
}

// Where the line that holds `position` begins.
std::size_t LineStart(std::u16string_view text, std::size_t position) {
  while (position > 0 && !IsLineBreak(text[position - 1])) --position;
  return position;
}

std::size_t LineEnd(std::u16string_view text, std::size_t position) {
  while (position < text.size() && !IsLineBreak(text[position])) ++position;
  return position;
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
  text_ = ToUtf16(utf8);
  const std::string back = calculation::ToUtf8(text_);
  if (back == utf8) return;
  const auto wrong = std::mismatch(utf8.begin(), utf8.end(), back.begin(), back.end()).first;
  not_utf8_ = ToUtf16({utf8.begin(), wrong}).size();
}

void Source::CheckEncoding() const {
  if (not_utf8_) throw Error({*not_utf8_, *not_utf8_ + 1}, "this is not UTF-8");
}

std::string Source::Explain(const Error& error) const {
  const std::size_t begin = std::min(error.place().begin, text_.size());
  const std::size_t line_start = LineStart(text_, begin);
  const std::size_t line_end = LineEnd(text_, begin);
  const std::size_t end = std::clamp(error.place().end, begin, line_end);
  const std::u16string_view text = text_;
  const std::size_t column = Characters(text.substr(line_start, begin - line_start)).size();
  const std::size_t length = Characters(text.substr(begin, end - begin)).size();
  return (name_.empty() ? "" : name_ + ", ") + "line " +
         std::to_string(first_line_ - 1 + LineNumber(text_, line_start)) + ", column " +
         std::to_string(column + 1) + ": " + error.what() + "\n" +
         Show(Characters(text.substr(line_start, line_end - line_start)), column, column + length);
}

bool IsLineBreak(char16_t unit) { return unit == u'\r' || unit == u'\n'; }

}  // namespace calculation
