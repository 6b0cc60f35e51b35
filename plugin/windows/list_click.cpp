#include "plugin/windows/list_click.h"

#include <cstdint>

#include "platform/carbon/Carbon.h"
#include "plugin/state/dialog_state.h"
#include "plugin/windows/close_window.h"
#include "plugin/windows/controls.h"
#include "plugin/windows/record.h"

namespace {

constexpr std::int16_t kNoRow = -1;

// Whether the click was on the cells: not on the scroll bar at their right. The pointer comes in
// the coordinates of the host's port, hence the offsets.
bool IsInBand(ListHandle list) {
  Point pointer;
  GetMouse(&pointer);
  Rect port;
  GetPortBounds(GetListPort(list), &port);
  Rect content;
  GetWindowBounds(gWindowRef, kWindowContentRgn, &content);
  const auto first = static_cast<std::int16_t>(content.left + port.left - 85);
  const auto last = static_cast<std::int16_t>(content.left + port.right - 113);
  return first <= pointer.h && pointer.h <= last;
}

void EnableWaitingButton() {
  if (!gdisabling) return;
  EnableControl(kDialogButton1);
  gdisabling = 0;
}

// However long after the first: the second click on a row in succession chooses it.
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
  if (!IsInBand(list)) return;
  EnableWaitingButton();
  if (dblclick) WatchForDoubleClick(list);
}
