#include "displays/terminal/popup.h"

#include <algorithm>
#include <utility>

namespace terminal {

using display::Action;

Popup::Popup(const display::Control& control, Report report)
    : report_(std::move(report)),
      number_(control_id::FieldNumber(control.id)),
      items_(control.items.value_or(std::vector<std::string>())) {}

void Popup::Update(const display::Control& control) {
  item_ = std::min(control.value.value_or(0), static_cast<int>(items_.size())) - 1;
  enabled_ = control.enabled;
}

void Popup::Draw(const Canvas& canvas, bool focused) {
  const Style own = enabled_ ? Style::kPlain : Style::kDisabled;
  const Style style = focused ? Style::kFocused : own;
  const int width = canvas.Width();
  canvas.Fill({0, 0, 1, width}, style);
  canvas.Put(0, 0, OneLine("["), style);
  if (item_ >= 0) {
    canvas.Put(0, 1, Elide(OneLine(items_[static_cast<std::size_t>(item_)]), width - 4), style);
  }
  canvas.Arrow(0, width - 2, true, style);
  canvas.Put(0, width - 1, OneLine("]"), style);
  if (focused) canvas.SetCursor(0, 1);
}

void Popup::DrawMenu(const Canvas& screen, const Area& place) { menu_->Draw(screen, place); }

bool Popup::Handle(const Key& key) {
  if (menu_) {
    Close(menu_->Handle(key));
    return true;
  }
  if (key.IsSign(L' ')) {
    Open();
    return true;
  }
  constexpr int kOneByOne = 1;  // a closed menu shows no pages
  const int count = static_cast<int>(items_.size());
  const int moved = RowAfterKey(key, item_, count, kOneByOne);
  const int found = moved >= 0 ? moved : type_ahead_.Find(key, items_, item_);
  if (found >= 0 && found != item_) Choose(found);
  return moved >= 0 || found >= 0;
}

void Popup::Handle(const Click& click) {
  if (menu_) {
    Close(menu_->Handle(click));
  } else if (enabled_) {
    Open();
  }
}

void Popup::Open() {
  if (!items_.empty()) menu_.emplace(items_, item_);
}

void Popup::Close(Menu::State state) {
  if (state == Menu::State::kOpen) return;
  const int item = menu_->Item();
  menu_.reset();
  if (state == Menu::State::kChosen) Choose(item);
}

void Popup::Choose(int item) {
  item_ = item;
  report_({.kind = Action::Kind::kChoose, .number = number_, .item = item + 1, .text = {}});
}

}  // namespace terminal
