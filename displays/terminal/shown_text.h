#pragma once

// Texts as cells of a terminal. Nothing that a terminal would obey is ever part of one: control
// characters are shown as pictures.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace terminal {

// What stands in a cell, or in two if it is wide: a character with the marks that combine with
// it.
struct Glyph {
  std::wstring text;
  int width = 1;
  std::size_t bytes = 0;  // how much of the UTF-8 text it stands for
  bool is_break = false;  // a line may end here: a blank, or a character of a script without them
};

using Line = std::vector<Glyph>;

// The text glyph by glyph, for editing: line ends and tabs are pictures, too.
Line Glyphs(std::string_view utf8);

// The text as one line: line ends and tabs become blanks.
Line OneLine(std::string_view utf8);

// The text broken at CR, LF and CR LF and wrapped to the width; at least one line.
std::vector<Line> Wrap(std::string_view utf8, int width);

int WidthOf(const Line& line);

// The line, with an ellipsis for its end if it is wider than `width`.
Line Elide(Line line, int width);

// One character as UTF-8.
std::string ToUtf8(wchar_t sign);

// The beginning of `text` is `prefix`, whatever the case.
bool StartsWith(std::string_view text, const std::wstring& prefix);

}  // namespace terminal
