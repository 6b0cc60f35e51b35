#pragma once

#include <vector>

#include "displays/terminal/control_view.h"
#include "displays/terminal/rows.h"

namespace terminal {

// The list. Clicks and keys are reported; the selection is drawn as the host says.
class ListBox : public ControlView {
 public:
  ListBox(const display::Control& control, Report report);

  void Update(const display::Control& control) override;
  void Draw(const Canvas& canvas, bool focused) override;
  bool TakesFocus() const override { return enabled_; }
  bool Handle(const Key& key) override;
  void Handle(const Click& click) override;
  bool Scroll(int rows) override;

 private:
  void DrawRow(const Canvas& canvas, int row, int line, bool focused) const;
  void Choose(display::Action::Kind kind, int row, int x);
  int Count() const { return static_cast<int>(rows_.size()); }
  int LineCount() const;
  int WindowX(int column) const;

  Report report_;
  Rect rect_;
  bool enabled_ = true;
  std::vector<std::string> rows_;
  std::vector<int> selected_;
  int row_ = -1;  // the current one, from 0
  int top_ = 0;
  int height_ = 1;      // as it was drawn last
  int width_ = 1;       // the same
  bool follow_ = true;  // the current row is to be seen
  TypeAhead type_ahead_;
};

}  // namespace terminal
