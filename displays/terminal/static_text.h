#pragma once

#include "displays/terminal/control_view.h"

namespace terminal {

// The message, which scrolls if it is longer than its place, or the label of a field.
class StaticText : public ControlView {
 public:
  explicit StaticText(const display::Control& control);

  void Update(const display::Control& control) override;
  void Draw(const Canvas& canvas, bool focused) override;
  bool TakesFocus() const override { return scrolls_; }
  bool Handle(const Key& key) override;
  bool Scroll(int rows) override;

 private:
  void DrawLabel(const Canvas& canvas) const;
  void DrawMessage(const Canvas& canvas, bool focused);
  Style TextStyle() const;

  bool is_message_;
  bool is_strong_;
  bool enabled_ = true;
  std::string text_;
  int top_ = 0;     // the first line that is shown
  int height_ = 0;  // as it was drawn last
  int lines_ = 0;   // the same
  bool scrolls_ = false;
};

}  // namespace terminal
