#include "displays/desktop/control_view.h"

#include <QRect>
#include <utility>

#include "displays/desktop/edit_text.h"
#include "displays/desktop/list_box.h"
#include "displays/desktop/popup.h"
#include "displays/desktop/push_button.h"
#include "displays/desktop/static_text.h"
#include "displays/desktop/toggle.h"

namespace desktop {

ControlView* MakeControlView(const display::Control& control, QWidget* parent,
                             ControlView::Report report) {
  using Kind = display::ControlKind;
  switch (control.kind) {
    case Kind::kStatic:
      return new StaticText(control, parent);
    case Kind::kButton:
      return new PushButton(control, parent, report);
    case Kind::kEdit:
    case Kind::kPassword:
      return new EditText(control, parent);
    case Kind::kPopup:
      return new Popup(control, parent, report);
    case Kind::kCheckBox:
      return new CheckBox(control, parent, report);
    case Kind::kRadio:
      return new RadioButton(control, parent, report);
    case Kind::kList:
      return new ListBox(control, parent, std::move(report));
  }
  return nullptr;
}

QRect RectOf(const display::Control& control) {
  const Rect& rect = control.rect;
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace desktop
