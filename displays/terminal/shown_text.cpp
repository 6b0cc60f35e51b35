#include "displays/terminal/shown_text.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <climits>
#include <cwchar>
#include <cwctype>
#include <utility>

namespace terminal {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kMostMarks = 4;  // that a cell can hold beside its character

// The character that begins at `text[i]`; `i` then is behind it. Whatever comes here is UTF-8: JSON
// holds nothing else.
char32_t Decode(std::string_view text, std::size_t& i) {
  char32_t sign = 0;
  U8_NEXT_UNSAFE(text, i, sign);
  return sign;
}

// Those that would go on to order what stands behind the text.
bool IsDirectional(char32_t sign) {
  return (sign >= 0x202A && sign <= 0x202E) || (sign >= 0x2066 && sign <= 0x2069);
}

bool CanBeWritten(wchar_t sign) {
  char bytes[MB_LEN_MAX];
  std::mbstate_t state{};
  return std::wcrtomb(bytes, sign, &state) != static_cast<std::size_t>(-1);
}

// What stands for a character on the screen.
wchar_t Shown(char32_t sign) {
  if (sign < 0x20) sign += 0x2400;
  if (sign == 0x7F) sign = 0x2421;
  if ((sign >= 0x80 && sign < 0xA0) || sign == 0x2028 || sign == 0x2029) sign = 0x2426;
  if (IsDirectional(sign) || wcwidth(static_cast<wchar_t>(sign)) < 0) sign = kReplacement;
  return CanBeWritten(static_cast<wchar_t>(sign)) ? static_cast<wchar_t>(sign) : L'?';
}

void Append(Line& line, wchar_t shown, std::size_t bytes) {
  const int width = wcwidth(shown);
  if (width > 0) {
    line.push_back({std::wstring(1, shown), width, bytes, shown == L' ' || width == 2});
    return;
  }
  if (line.empty()) line.push_back({L" ", 1, 0, false});  // a mark needs something to combine with
  Glyph& last = line.back();
  last.bytes += bytes;
  if (last.text.size() <= kMostMarks) last.text += shown;
}

Line ToLine(std::string_view utf8, bool blanks_for_layout) {
  Line line;
  for (std::size_t i = 0; i < utf8.size();) {
    const std::size_t start = i;
    const char32_t sign = Decode(utf8, i);
    const bool is_layout = sign == '\r' || sign == '\n' || sign == '\t';
    Append(line, blanks_for_layout && is_layout ? L' ' : Shown(sign), i - start);
  }
  return line;
}

// How many glyphs of `line` from `start` on go into one line of the width; at least one.
std::size_t LineLength(const Line& line, std::size_t start, int width) {
  std::size_t end = start;
  std::size_t last_break = start;
  for (int used = 0; end < line.size(); ++end) {
    used += line[end].width;
    if (used > width && line[end].text != L" ") {
      return std::max<std::size_t>((last_break > start ? last_break : end) - start, 1);
    }
    if (line[end].is_break) last_break = end + 1;
  }
  return end - start;
}

void WrapLine(const Line& line, int width, std::vector<Line>& wrapped) {
  std::size_t start = 0;
  do {
    const std::size_t length = LineLength(line, start, width);
    const auto begin = line.begin() + static_cast<std::ptrdiff_t>(start);
    wrapped.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(length));
    start += length;
  } while (start < line.size());
}

}  // namespace

Line Glyphs(std::string_view utf8) { return ToLine(utf8, false); }

Line OneLine(std::string_view utf8) { return ToLine(utf8, true); }

std::vector<Line> Wrap(std::string_view utf8, int width) {
  std::vector<Line> wrapped;
  while (true) {
    const std::size_t end = std::min(utf8.find_first_of("\r\n"), utf8.size());
    WrapLine(OneLine(utf8.substr(0, end)), width, wrapped);
    if (end == utf8.size()) return wrapped;
    utf8.remove_prefix(end + (utf8.substr(end, 2) == "\r\n" ? 2 : 1));
  }
}

int WidthOf(const Line& line) {
  int width = 0;
  for (const Glyph& glyph : line) width += glyph.width;
  return width;
}

Line Elide(Line line, int width) {
  int room = WidthOf(line);
  if (room <= width) return line;
  const Line ellipsis = Glyphs(CanBeWritten(L'…') ? "…" : ".");
  while (!line.empty() && room > width - 1) {
    room -= line.back().width;
    line.pop_back();
  }
  if (width > 0) line.push_back(ellipsis.front());
  return line;
}

std::string ToUtf8(wchar_t sign) {
  char bytes[U8_MAX_LENGTH];
  std::size_t count = 0;
  U8_APPEND_UNSAFE(bytes, count, static_cast<char32_t>(sign));
  return {bytes, count};
}

bool StartsWith(std::string_view text, const std::wstring& prefix) {
  std::size_t i = 0;
  for (const wchar_t sign : prefix) {
    if (i == text.size()) return false;
    const auto own = static_cast<std::wint_t>(Decode(text, i));
    if (std::towlower(own) != std::towlower(static_cast<std::wint_t>(sign))) return false;
  }
  return true;
}

}  // namespace terminal
