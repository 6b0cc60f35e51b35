#pragma once

// Where a dialog's controls stand in cells. Columns and rows follow the rectangles of the
// description; on a screen that is too low the blank rows go first, then the list and the message
// are made lower, and what is still too high scrolls.

#include <vector>

#include "displays/terminal/canvas.h"
#include "platform/carbon/display.h"

namespace terminal {

// The screen that descriptions count in: their positions are taken as proportions of it.
inline constexpr Rect kMainScreen{0, 0, 1080, 1920};

struct Layout {
  Area frame;               // on the screen, with the frame around the content
  std::vector<Area> areas;  // of each control, in the content; empty if it is not shown
  int height = 0;           // of the content, which scrolls if the frame has less room
};

// The layout on a screen of that many cells.
Layout LayOut(const display::Window& window, int rows, int columns);

// The cancel control is Escape and nothing to look at, whether or not Escape is allowed.
bool IsSeen(const display::Control& control);

// A text over several lines: a message, and not the label of a field.
bool IsMessage(const display::Control& control);

}  // namespace terminal
