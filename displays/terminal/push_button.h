#pragma once

#include "displays/terminal/control_view.h"

namespace terminal {

class PushButton : public ControlView {
 public:
  PushButton(const display::Control& control, Report report);

  void Update(const display::Control& control) override;
  void Draw(const Canvas& canvas, bool focused) override;
  bool TakesFocus() const override { return enabled_; }
  bool Handle(const Key& key) override;
  void Handle(const Click& click) override;

 private:
  void Press() const;

  Report report_;
  int number_;
  std::string text_;
  bool is_default_ = false;
  bool enabled_ = true;
};

}  // namespace terminal
