#pragma once

#include "displays/terminal/control_view.h"

namespace terminal {

// A check box or a radio button. A click is reported and changes nothing by itself: the host
// toggles, and knows which radio buttons form a group.
class Toggle : public ControlView {
 public:
  Toggle(const display::Control& control, Report report);

  void Update(const display::Control& control) override;
  void Draw(const Canvas& canvas, bool focused) override;
  bool TakesFocus() const override { return enabled_; }
  bool Handle(const Key& key) override;
  void Handle(const Click& click) override;

 private:
  void Toggled() const;

  Report report_;
  int number_;
  bool is_radio_;
  bool is_on_ = false;
  bool enabled_ = true;
};

}  // namespace terminal
