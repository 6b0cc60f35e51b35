#include "displays/terminal/canvas.h"

#define NCURSES_NOMACROS
#include <curses.h>

#include <algorithm>
#include <cstdlib>

namespace terminal {
namespace {

enum Colours : short { kPlainColours = 0, kAccent, kRed, kYellow, kBlue };

attr_t Attributes(Style style) {
  switch (style) {
    case Style::kPlain:
    case Style::kFrame:
      return A_NORMAL;
    case Style::kField:
      return A_UNDERLINE;
    case Style::kFocused:
      return A_REVERSE;
    case Style::kSelected:
      return A_BOLD | A_UNDERLINE;
    case Style::kDisabled:
      return A_DIM;
    case Style::kStrong:
    case Style::kStop:
    case Style::kNote:
    case Style::kCaution:
      return A_BOLD;
  }
  return A_NORMAL;
}

bool has_colours = false;

short ColoursOf(Style style) {
  if (!has_colours) return kPlainColours;
  switch (style) {
    case Style::kFrame:
    case Style::kFocused:
    case Style::kSelected:
      return kAccent;
    case Style::kStop:
      return kRed;
    case Style::kNote:
      return kBlue;
    case Style::kCaution:
      return kYellow;
    default:
      return kPlainColours;
  }
}

cchar_t Cell(const wchar_t* text, Style style, attr_t further = A_NORMAL) {
  cchar_t cell{};
  setcchar(&cell, text, Attributes(style) | further, ColoursOf(style), nullptr);
  return cell;
}

// One of the terminal's signs for lines and arrows in the style.
cchar_t Cell(const cchar_t* sign, Style style) {
  wchar_t text[CCHARW_MAX + 1] = {};
  attr_t attributes = 0;
  short pair = 0;
  getcchar(sign, text, &attributes, &pair, nullptr);
  return Cell(text, style, attributes);
}

}  // namespace

Canvas::Canvas() : shown_{0, 0, getmaxy(stdscr), getmaxx(stdscr)} {}

Canvas Canvas::Part(const Area& area, int scrolled) const {
  Canvas part = *this;
  part.top_ = top_ + area.row - scrolled;
  part.left_ = left_ + area.column;
  const int top = std::max(top_ + area.row, shown_.row);
  const int left = std::max(left_ + area.column, shown_.column);
  const int bottom = std::min(top_ + area.row + area.height, shown_.row + shown_.height);
  const int right = std::min(left_ + area.column + area.width, shown_.column + shown_.width);
  part.shown_ = {top, left, std::max(bottom - top, 0), std::max(right - left, 0)};
  return part;
}

bool Canvas::IsShown(int row, int column, int width) const {
  return shown_.Holds(top_ + row, left_ + column) &&
         shown_.Holds(top_ + row, left_ + column + width - 1);
}

int Canvas::Put(int row, int column, const Line& line, Style style) const {
  for (const Glyph& glyph : line) {
    if (IsShown(row, column, glyph.width)) {
      const cchar_t cell = Cell(glyph.text.c_str(), style);
      mvwadd_wch(stdscr, top_ + row, left_ + column, &cell);
    }
    column += glyph.width;
  }
  return column;
}

void Canvas::Fill(const Area& area, Style style) const {
  const Line blanks(static_cast<std::size_t>(std::max(area.width, 0)), Glyph{L" ", 1, 0, false});
  for (int row = area.row; row < area.row + area.height; ++row) {
    Put(row, area.column, blanks, style);
  }
}

void Canvas::Frame(const Area& area, const Line& title) const {
  const auto put = [this](int row, int column, const cchar_t* line) {
    if (!IsShown(row, column, 1)) return;
    const cchar_t cell = Cell(line, Style::kFrame);
    mvwadd_wch(stdscr, top_ + row, left_ + column, &cell);
  };
  const int bottom = area.row + area.height - 1;
  const int right = area.column + area.width - 1;
  for (int column = area.column + 1; column < right; ++column) {
    put(area.row, column, WACS_HLINE);
    put(bottom, column, WACS_HLINE);
  }
  for (int row = area.row + 1; row < bottom; ++row) {
    put(row, area.column, WACS_VLINE);
    put(row, right, WACS_VLINE);
  }
  put(area.row, area.column, WACS_ULCORNER);
  put(area.row, right, WACS_URCORNER);
  put(bottom, area.column, WACS_LLCORNER);
  put(bottom, right, WACS_LRCORNER);
  if (title.empty()) return;
  const Line shown = Elide(title, area.width - 6);
  const int column = area.column + (area.width - WidthOf(shown)) / 2;
  Put(area.row, column - 1, OneLine(" "), Style::kPlain);
  Put(area.row, Put(area.row, column, shown, Style::kStrong), OneLine(" "), Style::kPlain);
}

void Canvas::Bar(int row, int column) const {
  if (!IsShown(row, column, 1)) return;
  const cchar_t cell = Cell(WACS_VLINE, Style::kFrame);
  mvwadd_wch(stdscr, top_ + row, left_ + column, &cell);
}

void Canvas::Arrow(int row, int column, bool down, Style style) const {
  if (!IsShown(row, column, 1)) return;
  const cchar_t cell = Cell(down ? WACS_DARROW : WACS_UARROW, style);
  mvwadd_wch(stdscr, top_ + row, left_ + column, &cell);
}

void Canvas::SetCursor(int row, int column) const {
  if (IsShown(row, column, 1)) wmove(stdscr, top_ + row, left_ + column);
}

void SetUpColours() {
  const char* none = std::getenv("NO_COLOR");
  if ((none && *none != '\0') || !has_colors()) return;
  has_colours = start_color() == OK;
  use_default_colors();
  const bool many = COLORS >= 256;
  init_pair(kAccent, many ? 32 : COLOR_CYAN, -1);
  init_pair(kRed, many ? 160 : COLOR_RED, -1);
  init_pair(kYellow, many ? 172 : COLOR_YELLOW, -1);
  init_pair(kBlue, many ? 32 : COLOR_BLUE, -1);
}

void BeginDrawing() { werase(stdscr); }

void EndDrawing() { wrefresh(stdscr); }

std::string ScreenText() {
  std::string text;
  for (int row = 0; row < getmaxy(stdscr); ++row) {
    std::string line;
    for (int column = 0; column < getmaxx(stdscr);) {
      cchar_t cell;
      wchar_t signs[CCHARW_MAX + 1] = {};
      attr_t attributes = 0;
      short pair = 0;
      mvwin_wch(stdscr, row, column, &cell);
      getcchar(&cell, signs, &attributes, &pair, nullptr);
      for (const wchar_t* sign = signs; *sign != 0; ++sign) line += ToUtf8(*sign);
      column += std::max(wcwidth(signs[0]), 1);
    }
    text += line.erase(line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

}  // namespace terminal
