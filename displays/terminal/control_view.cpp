#include "displays/terminal/control_view.h"

#include "displays/terminal/edit_text.h"
#include "displays/terminal/list_box.h"
#include "displays/terminal/popup.h"
#include "displays/terminal/push_button.h"
#include "displays/terminal/static_text.h"
#include "displays/terminal/toggle.h"

namespace terminal {

std::unique_ptr<ControlView> MakeControlView(const display::Control& control,
                                             const ControlView::Report& report) {
  using Kind = display::ControlKind;
  switch (control.kind) {
    case Kind::kStatic:
      return std::make_unique<StaticText>(control);
    case Kind::kButton:
      return std::make_unique<PushButton>(control, report);
    case Kind::kEdit:
    case Kind::kPassword:
      return std::make_unique<EditText>(control);
    case Kind::kPopup:
      return std::make_unique<Popup>(control, report);
    case Kind::kCheckBox:
    case Kind::kRadio:
      return std::make_unique<Toggle>(control, report);
    case Kind::kList:
      return std::make_unique<ListBox>(control, report);
  }
  return nullptr;
}

}  // namespace terminal
