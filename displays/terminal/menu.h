#pragma once

#include <optional>
#include <string>
#include <vector>

#include "displays/terminal/canvas.h"
#include "displays/terminal/event.h"
#include "displays/terminal/rows.h"

namespace terminal {

// The open menu of a pop-up, over everything else. It scrolls if it has more items than the
// screen has rows.
class Menu {
 public:
  // With item `item` (from 0) as the current one. `items` must outlive the menu.
  Menu(const std::vector<std::string>& items, int item);

  // Draws the menu at the control that stands at `place` on the screen.
  void Draw(const Canvas& screen, const Area& place);

  enum class State { kOpen, kChosen, kDropped };
  State Handle(const Key& key);
  State Handle(const Click& click);

  int Item() const { return item_; }

 private:
  int Count() const { return static_cast<int>(items_.size()); }
  Area FrameAt(const Canvas& screen, const Area& place) const;

  const std::vector<std::string>& items_;
  int item_;
  int top_ = 0;
  Area inside_;  // of the frame, as it was drawn last
  TypeAhead type_ahead_;
};

}  // namespace terminal
