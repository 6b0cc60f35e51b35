#pragma once

#include "displays/terminal/control_view.h"
#include "displays/terminal/menu.h"

namespace terminal {

// A pop-up button: shows one item of its menu and opens the whole menu.
class Popup : public ControlView {
 public:
  Popup(const display::Control& control, Report report);

  void Update(const display::Control& control) override;
  void Draw(const Canvas& canvas, bool focused) override;
  bool TakesFocus() const override { return enabled_; }
  bool Handle(const Key& key) override;
  void Handle(const Click& click) override;
  bool IsOpen() const override { return menu_.has_value(); }
  void DrawMenu(const Canvas& screen, const Area& place) override;

 private:
  void Open();
  void Close(Menu::State state);
  void Choose(int item);

  Report report_;
  int number_;
  bool enabled_ = true;
  std::vector<std::string> items_;
  int item_ = -1;  // the shown one, from 0; -1 if there is none
  std::optional<Menu> menu_;
  TypeAhead type_ahead_;
};

}  // namespace terminal
