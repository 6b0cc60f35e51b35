#include "displays/terminal/edit_text.h"

#include <algorithm>

namespace terminal {

using display::Action;

namespace {

constexpr int kEdge = 1;  // the bracket on either side

bool IsTail(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

}  // namespace

EditText::EditText(const display::Control& control)
    : number_(control_id::FieldNumber(control.id)),
      is_password_(control.kind == display::ControlKind::kPassword) {}

// A password is never told, so the host's empty text is no reason to empty the field.
void EditText::Update(const display::Control& control) {
  enabled_ = control.enabled;
  const std::string content = control.text.value_or("");
  if (is_password_ || edited_ || content == text_) return;
  text_ = content;
  cursor_ = text_.size();
}

std::optional<Action> EditText::TakeEdit() {
  if (!edited_) return std::nullopt;
  edited_ = false;
  return Action{.kind = Action::Kind::kEnter, .number = number_, .text = text_};
}

// A password is as many stars.
Line EditText::Shown() const {
  Line line = Glyphs(text_);
  if (!is_password_) return line;
  for (Glyph& glyph : line) glyph = {L"*", 1, glyph.bytes, false};
  return line;
}

int EditText::ColumnOf(std::size_t position) const {
  int column = 0;
  std::size_t bytes = 0;
  for (const Glyph& glyph : Shown()) {
    if (bytes >= position) break;
    bytes += glyph.bytes;
    column += glyph.width;
  }
  return column;
}

void EditText::Draw(const Canvas& canvas, bool focused) {
  const int room = std::max(canvas.Width() - 2 * kEdge, 1);
  const int cursor = ColumnOf(cursor_);
  scrolled_ = std::clamp(scrolled_, cursor - room + 1, cursor);
  const Style own = enabled_ ? Style::kField : Style::kDisabled;
  const Style edge = focused ? Style::kFocused : Style::kPlain;
  canvas.Put(0, 0, OneLine("["), edge);
  canvas.Put(0, canvas.Width() - 1, OneLine("]"), edge);
  const Canvas inside = canvas.Part({0, kEdge, 1, room});
  inside.Fill({0, 0, 1, room}, own);
  inside.Put(0, -scrolled_, Shown(), focused && all_selected_ ? Style::kFocused : own);
  if (focused) inside.SetCursor(0, cursor - scrolled_);
}

bool EditText::Handle(const Key& key) {
  using Kind = Key::Kind;
  switch (key.kind) {
    case Kind::kLeft:
      return MoveTo(key.control ? WordBefore() : Before(cursor_)), true;
    case Kind::kRight:
      return MoveTo(key.control ? WordBehind() : Behind(cursor_)), true;
    case Kind::kHome:
      return MoveTo(0), true;
    case Kind::kEnd:
      return MoveTo(text_.size()), true;
    case Kind::kBackspace:
      return EraseBefore(), true;
    case Kind::kDelete:
      return EraseBehind(), true;
    case Kind::kSign:
      return HandleSign(key);
    default:
      return false;
  }
}

bool EditText::HandleSign(const Key& key) {
  if (!key.control) return Insert(ToUtf8(key.sign)), true;
  switch (key.sign) {
    case L'A':
      return SelectAll(), true;
    case L'E':
      return MoveTo(text_.size()), true;
    case L'K':
      return Erase(cursor_, text_.size()), true;
    case L'U':
      return Erase(0, text_.size()), true;
    case L'W':
      return Erase(WordBefore(), cursor_), true;
    default:
      return false;
  }
}

void EditText::Handle(const Click& click) {
  std::size_t position = 0;
  int column = kEdge - scrolled_;
  for (const Glyph& glyph : Shown()) {
    column += glyph.width;
    if (column > click.column) break;
    position += glyph.bytes;
  }
  MoveTo(position);
}

void EditText::Insert(const std::string& text) {
  if (!enabled_ || text.empty()) return;
  if (all_selected_) Erase(0, text_.size());
  text_.insert(cursor_, text);
  MoveTo(cursor_ + text.size());
  edited_ = true;
}

void EditText::Erase(std::size_t begin, std::size_t end) {
  if (begin < end) edited_ = true;
  text_.erase(begin, end - begin);
  MoveTo(begin);
}

// One character before the cursor goes, be it a mark alone.
void EditText::EraseBefore() {
  if (all_selected_) return Erase(0, text_.size());
  std::size_t begin = cursor_;
  while (begin > 0 && IsTail(text_[--begin])) {
  }
  Erase(begin, cursor_);
}

void EditText::EraseBehind() {
  if (all_selected_) return Erase(0, text_.size());
  Erase(cursor_, Behind(cursor_));
}

void EditText::MoveTo(std::size_t position) {
  cursor_ = position;
  all_selected_ = false;
}

void EditText::SelectAll() {
  cursor_ = text_.size();
  all_selected_ = !text_.empty();
}

std::size_t EditText::Before(std::size_t position) const {
  std::size_t before = 0;
  std::size_t bytes = 0;
  for (const Glyph& glyph : Glyphs(text_)) {
    if (bytes >= position) break;
    before = bytes;
    bytes += glyph.bytes;
  }
  return before;
}

std::size_t EditText::Behind(std::size_t position) const {
  std::size_t bytes = 0;
  for (const Glyph& glyph : Glyphs(text_)) {
    bytes += glyph.bytes;
    if (bytes > position) return bytes;
  }
  return text_.size();
}

std::size_t EditText::WordBefore() const {
  if (is_password_) return 0;
  const std::size_t last = text_.find_last_not_of(' ', cursor_ == 0 ? 0 : cursor_ - 1);
  if (last == std::string::npos || cursor_ == 0) return 0;
  const std::size_t blank = text_.rfind(' ', last);
  return blank == std::string::npos ? 0 : blank + 1;
}

std::size_t EditText::WordBehind() const {
  if (is_password_) return text_.size();
  const std::size_t blank = std::min(text_.find(' ', cursor_), text_.size());
  return std::min(text_.find_first_not_of(' ', blank), text_.size());
}

}  // namespace terminal
