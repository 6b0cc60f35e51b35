#include "plugin/windows/list_click.h"

#include <cstdint>

#include "platform/carbon/Carbon.h"
#include "plugin/state/dialog_state.h"
#include "plugin/windows/close_window.h"
#include "plugin/windows/controls.h"
#include "plugin/windows/record.h"

namespace {

constexpr std::int16_t kNoRow = -1;

// The pointer is told in the coordinates of the host's port, whose left edge stands this many
// pixels right of the screen's.
constexpr int kHostPortLeft = 90;

// The list lies 5 pixels from the left and the right edge of the window's content. The scroll bar
// at its right end takes x 403 to 419, the cells x 5 to 402.
constexpr int kMargin = 5;
constexpr int kScrollBarWidth = 17;

// Whether the click was on the cells, not on the scroll bar.
bool IsOnCells(ListHandle list) {
  Point pointer;
  GetMouse(&pointer);
  Rect port;
  GetPortBounds(GetListPort(list), &port);
  Rect content;
  GetWindowBounds(gWindowRef, kWindowContentRgn, &content);
  const auto first = static_cast<std::int16_t>(content.left + port.left + kMargin - kHostPortLeft);
  const int cells_right = port.right - kMargin - kScrollBarWidth;
  const auto last = static_cast<std::int16_t>(content.left + cells_right - 1 - kHostPortLeft);
  return first <= pointer.h && pointer.h <= last;
}

void EnableWaitingButton() {
  if (!gdisabling) return;
  EnableControl(kDialogButton1);
  gdisabling = 0;
}

// The second click in succession on a row chooses it, however much later it comes.
void WatchForDoubleClick(ListHandle list) {
  selectedCell = LLastClick(list);
  if (lastCell.v != selectedCell.v) {
    lastCell = selectedCell;
    return;
  }
  RecordRow(list, selectedCell);
  lastCell.v = kNoRow;
  selectedCell.v = 0;
  SendWindowCloseEvent(gWindowRef);
}

}  // namespace

void ClickList() {
  const ListHandle list = RunningList();
  if (!IsOnCells(list)) return;
  EnableWaitingButton();
  if (dblclick) WatchForDoubleClick(list);
}
