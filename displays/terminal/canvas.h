#pragma once

// What a dialog is drawn with: the cells of the screen, in a part of it.

#include "displays/terminal/shown_text.h"

namespace terminal {

struct Area {
  int row = 0;
  int column = 0;
  int height = 0;
  int width = 0;

  bool Holds(int at_row, int at_column) const {
    return at_row >= row && at_row < row + height && at_column >= column &&
           at_column < column + width;
  }
};

enum class Style {
  kPlain,
  kStrong,
  kField,     // what can be typed into
  kFocused,   // what has the focus
  kSelected,  // a row that is selected
  kDisabled,
  kFrame,
  kStop,
  kNote,
  kCaution,
};

class Canvas {
 public:
  // The whole screen.
  Canvas();

  int Height() const { return shown_.height; }
  int Width() const { return shown_.width; }

  // The part of this canvas at `area`, which is `scrolled` rows further down in what is drawn
  // there. What lies outside of the part is not drawn.
  Canvas Part(const Area& area, int scrolled = 0) const;

  // Draws the line from there on; what lies outside is left out. Returns the column behind it.
  int Put(int row, int column, const Line& line, Style style) const;

  // Cells with nothing in them.
  void Fill(const Area& area, Style style) const;

  // A frame around the area, inside of it, with a title that is cut if it is too long.
  void Frame(const Area& area, const Line& title) const;

  // A vertical line of one cell.
  void Bar(int row, int column) const;

  // The sign for more of a menu or a list, pointing down or up.
  void Arrow(int row, int column, bool down, Style style) const;

  // The hardware cursor stands there, which tells a screen reader what has the focus.
  void SetCursor(int row, int column) const;

  // Where a cell of the screen lies here.
  int RowHere(int screen_row) const { return screen_row - top_; }
  int ColumnHere(int screen_column) const { return screen_column - left_; }

 private:
  bool IsShown(int row, int column, int width) const;

  Area shown_;    // on the screen
  int top_ = 0;   // of row 0 on the screen
  int left_ = 0;  // of column 0
};

// Colours as the terminal has them, on its own background; none if NO_COLOR asks for that.
void SetUpColours();

// Empties the screen for a new drawing, and shows what has been drawn.
void BeginDrawing();
void EndDrawing();

// The screen's cells as text, a line each without blanks at its end.
std::string ScreenText();

}  // namespace terminal
