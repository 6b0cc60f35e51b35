#include "displays/terminal/toggle.h"

#include <utility>

namespace terminal {

using display::Action;

Toggle::Toggle(const display::Control& control, Report report)
    : report_(std::move(report)),
      number_(control_id::FieldNumber(control.id)),
      is_radio_(control.kind == display::ControlKind::kRadio) {}

void Toggle::Update(const display::Control& control) {
  is_on_ = control.value.value_or(0) != 0;
  enabled_ = control.enabled;
}

void Toggle::Draw(const Canvas& canvas, bool focused) {
  const char* box = is_on_ ? "[x]" : "[ ]";
  const char* dot = is_on_ ? "(*)" : "( )";
  const Style own = enabled_ ? Style::kPlain : Style::kDisabled;
  canvas.Put(0, 0, OneLine(is_radio_ ? dot : box), focused ? Style::kFocused : own);
  if (focused) canvas.SetCursor(0, 1);
}

bool Toggle::Handle(const Key& key) {
  if (!key.IsSign(L' ')) return false;
  Toggled();
  return true;
}

void Toggle::Handle(const Click& /*click*/) { Toggled(); }

void Toggle::Toggled() const {
  if (!enabled_) return;
  report_({.kind = Action::Kind::kClick, .number = number_, .text = {}});
}

}  // namespace terminal
