#include "platform/carbon/dispatch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "platform/carbon/control_ids.h"
#include "platform/carbon/geometry.h"
#include "platform/carbon/objects.h"
#include "platform/carbon/text_conversion.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "platform/corefoundation/encoding.h"

namespace carbon {
namespace {

using display::Action;
using display::ControlKind;

// The current port is the host's; its left edge stands this many pixels right of the screen's.
constexpr int kCurrentPortLeft = 90;

Point pointer{0, 0};

std::int16_t Clamped(std::int64_t number) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

bool IsEdit(ControlKind kind) {
  return kind == ControlKind::kEdit || kind == ControlKind::kPassword;
}

bool IsToggle(ControlKind kind) {
  return kind == ControlKind::kCheckBox || kind == ControlKind::kRadio;
}

// Sends a control's command to its window. A menu choice carries menu and item, any other command
// null and 0.
void IssueCommand(WindowRef window, const Control& control, MenuRef menu = nullptr, int item = 0) {
  const HICommand command{0, control.command, menu, static_cast<std::uint16_t>(item)};
  EventRef event = nullptr;
  if (CreateEvent(kCFAllocatorDefault, kEventClassCommand, kEventCommandProcess,
                  GetCurrentEventTime(), kEventAttributeUserEvent, &event) != noErr) {
    return;
  }
  SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
  SendEventToEventTarget(event, GetWindowEventTarget(window));
  ReleaseEvent(event);
}

std::shared_ptr<Control> FindById(const Window& window, int id) {
  for (const ControlRef reference : window.controls) {
    auto control = Find(reference);
    if (control->id == id) return control;
  }
  return nullptr;
}

// Field `number` if it is of a kind that `accepts` takes, otherwise null.
std::shared_ptr<Control> FindField(const Window& window, int number, bool (*accepts)(ControlKind)) {
  if (!control_id::IsNumber(number)) return nullptr;
  auto control = FindById(window, control_id::Field(number));
  return control && accepts(control->kind) ? control : nullptr;
}

std::string Missing(const char* what, int number) {
  return "there is no " + std::string(what) + " " + std::to_string(number);
}

Refusal Enter(const Window& window, const Action& action) {
  const auto field = FindField(window, action.number, IsEdit);
  if (!field) return Missing("edit or password field", action.number);
  field->text = ToUtf16(action.text);
  field->changed = true;
  return kAccepted;
}

Refusal Type(const Window& window, const Action& action) {
  const auto field = Find(window.focus);
  if (!field || !IsEdit(field->kind)) return "no edit field has the focus";
  *field->text += ToUtf16(action.text);
  field->changed = true;
  return kAccepted;
}

Refusal Choose(WindowRef reference, const Window& window, const Action& action) {
  const auto is_popup = [](ControlKind kind) { return kind == ControlKind::kPopup; };
  const auto field = FindField(window, action.number, is_popup);
  if (!field) return Missing("pop-up menu in field", action.number);
  const auto items = field->menu ? static_cast<int>(field->menu->items.size()) : 0;
  if (action.item < 1 || action.item > items) {
    return Missing("item", action.item) + " in the menu of field " + std::to_string(action.number);
  }
  field->value = std::clamp(action.item, field->minimum, field->maximum);
  field->changed = true;
  IssueCommand(reference, *field, field->menu_ref, action.item);
  return kAccepted;
}

Refusal Click(WindowRef reference, const Window& window, const Action& action) {
  const auto field = FindField(window, action.number, IsToggle);
  if (!field) return Missing("check box or radio button in field", action.number);
  if (field->auto_toggle) {
    field->value = field->kind == ControlKind::kRadio ? 1 : 1 - field->value;
  }
  field->changed = true;
  IssueCommand(reference, *field);
  return kAccepted;
}

void SelectRow(List& list, int row, Action::Kind kind) {
  const auto at = static_cast<std::size_t>(row);
  if (kind == Action::Kind::kRowToggle && !list.only_one) {
    list.selected[at] = !list.selected[at];
    list.anchor = row;
    return;
  }
  const bool extend = kind == Action::Kind::kRowExtend && !list.only_one && list.anchor >= 0;
  if (!extend) list.anchor = row;
  const auto [first, last] = std::minmax(list.anchor, row);
  for (int i = 0; i < static_cast<int>(list.selected.size()); ++i) {
    list.selected[static_cast<std::size_t>(i)] = i >= first && i <= last;
  }
}

Refusal ClickRow(WindowRef reference, const Window& window, const Action& action) {
  for (const ControlRef held : window.controls) {
    const auto control = Find(held);
    const auto list = Find(control->list);
    if (!list) continue;
    if (action.number < 1 || action.number > static_cast<int>(list->cells.size())) break;
    SelectRow(*list, action.number - 1, action.kind);
    list->last_click = {static_cast<std::int16_t>(action.number - 1), 0};
    control->changed = true;
    pointer.h = Clamped(std::int64_t{window.content.left} + action.x - kCurrentPortLeft);
    pointer.v = Clamped(std::int64_t{window.content.top} + control->bounds.top);
    IssueCommand(reference, *control);
    return kAccepted;
  }
  return Missing("list row", action.number);
}

// A disabled or hidden button does nothing, as for a user.
Refusal PressButton(WindowRef reference, const std::shared_ptr<Control>& button) {
  if (button && button->visible && button->enabled) IssueCommand(reference, *button);
  return kAccepted;
}

Refusal Press(WindowRef reference, const Window& window, const Action& action) {
  if (!control_id::IsNumber(action.number)) return Missing("button", action.number);
  const auto button = FindById(window, control_id::Button(action.number));
  if (!button || button->kind != ControlKind::kButton) return Missing("button", action.number);
  return PressButton(reference, button);
}

// Moves the focus: through the fields and the list, then the buttons, each in order of creation;
// never to the cancel control.
Refusal Tab(Window& window) {
  std::vector<ControlRef> stops;
  for (const bool buttons : {false, true}) {
    for (const ControlRef reference : window.controls) {
      const auto control = Find(reference);
      if (control->kind != ControlKind::kStatic && control->visible && control->enabled &&
          (control->kind == ControlKind::kButton) == buttons && reference != window.cancel_button) {
        stops.push_back(reference);
      }
    }
  }
  if (stops.empty()) return kAccepted;
  const auto current = std::find(stops.begin(), stops.end(), window.focus);
  const auto next = current == stops.end() ? stops.begin() : current + 1;
  for (const ControlRef changed : {window.focus, next == stops.end() ? stops.front() : *next}) {
    if (const auto control = Find(changed)) control->changed = true;
    window.focus = changed;
  }
  return kAccepted;
}

}  // namespace

Refusal Dispatch(WindowRef reference, const Action& action) {
  const auto window = Find(reference);
  switch (action.kind) {
    case Action::Kind::kEnter:
      return Enter(*window, action);
    case Action::Kind::kType:
      return Type(*window, action);
    case Action::Kind::kChoose:
      return Choose(reference, *window, action);
    case Action::Kind::kClick:
      return Click(reference, *window, action);
    case Action::Kind::kRow:
    case Action::Kind::kRowToggle:
    case Action::Kind::kRowExtend:
      return ClickRow(reference, *window, action);
    case Action::Kind::kPress:
      return Press(reference, *window, action);
    case Action::Kind::kReturn:
      return PressButton(reference, Find(window->default_button));
    case Action::Kind::kEscape:
    case Action::Kind::kClose:
      return PressButton(reference, Find(window->cancel_button));
    case Action::Kind::kTab:
      break;
  }
  return Tab(*window);
}

}  // namespace carbon

void GetMouse(Point* point) { *point = carbon::pointer; }
