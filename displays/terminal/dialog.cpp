#include "displays/terminal/dialog.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "displays/terminal/alert.h"

namespace terminal {

using display::Action;
using display::Control;
using display::ControlKind;

namespace {

bool IsInput(const Control& control) {
  return control.kind != ControlKind::kStatic && control.kind != ControlKind::kButton;
}

// Arrow keys that have nothing else to do go on to what is beside, as Tab does.
bool ArrowsMoveFocus(const Control& control) {
  return control.kind == ControlKind::kCheckBox || control.kind == ControlKind::kRadio;
}

int StepOf(const Key& key) {
  if (key.kind == Key::Kind::kUp || key.kind == Key::Kind::kLeft) return -1;
  return key.kind == Key::Kind::kDown || key.kind == Key::Kind::kRight ? 1 : 0;
}

display::Window ToWindow(const display::Description& description) {
  if (const auto* window = std::get_if<display::Window>(&description)) return *window;
  return WindowOf(std::get<display::Alert>(description));
}

}  // namespace

Dialog::Dialog(const display::Description& description, Report report)
    : window_(ToWindow(description)), report_(std::move(report)) {
  if (const auto* alert = std::get_if<display::Alert>(&description)) alert_type_ = alert->type;
  for (std::size_t i = 0; i < window_.controls.size(); ++i) {
    const Control& control = window_.controls[i];
    views_.push_back(MakeControlView(control, [this](const Action& action) { Send(action); }));
    views_.back()->Update(control);
    if (control.focused) focus_ = i;
  }
}

void Dialog::Change(std::size_t index, const Control& control) {
  Control& known = window_.controls.at(index);
  if (control.focused && !known.focused) focus_ = index;
  known = control;
  views_[index]->Update(control);
}

void Dialog::Send(const Action& action) {
  for (const auto& view : views_) {
    if (const auto edit = view->TakeEdit()) report_(*edit);
  }
  report_(action);
}

void Dialog::Handle(const Event& event) {
  if (const auto* key = std::get_if<Key>(&event)) HandleKey(*key);
  if (const auto* paste = std::get_if<Paste>(&event)) HandlePaste(*paste);
  if (const auto* click = std::get_if<Click>(&event)) HandleClick(*click);
}

void Dialog::HandleKey(const Key& key) {
  ControlView* view = focus_ ? views_[*focus_].get() : nullptr;
  if (view && view->IsOpen()) {
    view->Handle(key);
    return;
  }
  follow_ = key.kind != Key::Kind::kPageUp && key.kind != Key::Kind::kPageDown;
  switch (key.kind) {
    case Key::Kind::kReturn:
      return Send({.kind = Action::Kind::kReturn, .text = {}});
    case Key::Kind::kEscape:
      return Send({.kind = Action::Kind::kEscape, .text = {}});
    case Key::Kind::kTab:
      return MoveFocus(1);
    case Key::Kind::kBackTab:
      return MoveFocus(-1);
    default:
      break;
  }
  if (view && view->Handle(key)) return;
  if (view && ArrowsMoveFocus(window_.controls[*focus_]) && StepOf(key) != 0)
    MoveFocus(StepOf(key));
  if (view && window_.controls[*focus_].kind == ControlKind::kButton) MoveToButtonBeside(key);
  if (!follow_) ScrollBy((key.kind == Key::Kind::kPageUp ? -1 : 1) * (layout_.frame.height - 3));
}

void Dialog::HandlePaste(const Paste& paste) {
  if (focus_ && !views_[*focus_]->IsOpen()) views_[*focus_]->Handle(paste);
}

void Dialog::HandleClick(const Click& click) {
  if (focus_ && views_[*focus_]->IsOpen()) {
    views_[*focus_]->Handle(click);
    return;
  }
  const std::optional<std::size_t> hit = ControlAt(click.row, click.column);
  if (click.wheel != 0) {
    follow_ = false;
    if (!hit || !views_[*hit]->Scroll(click.wheel)) ScrollBy(click.wheel);
  } else if (hit && views_[*hit]->TakesFocus()) {
    focus_ = *hit;
    const Area place = OnScreen(layout_.areas[*hit]);
    Click own = click;
    own.row -= place.row;
    own.column -= place.column;
    views_[*hit]->Handle(own);
  }
}

// Fields or the list first, then the buttons, and a message that scrolls at last.
std::vector<std::size_t> Dialog::TabOrder() const {
  std::vector<std::size_t> inputs;
  std::vector<std::size_t> buttons;
  std::vector<std::size_t> messages;
  for (std::size_t i = 0; i < views_.size(); ++i) {
    const Control& control = window_.controls[i];
    if (!IsSeen(control) || !views_[i]->TakesFocus()) continue;
    if (IsInput(control)) {
      inputs.push_back(i);
    } else {
      (control.kind == ControlKind::kButton ? buttons : messages).push_back(i);
    }
  }
  inputs.insert(inputs.end(), buttons.begin(), buttons.end());
  inputs.insert(inputs.end(), messages.begin(), messages.end());
  return inputs;
}

void Dialog::MoveFocus(int step) {
  std::vector<std::size_t> order = TabOrder();
  if (order.empty()) return;
  if (step < 0) std::reverse(order.begin(), order.end());
  const auto current = focus_ ? std::find(order.begin(), order.end(), *focus_) : order.end();
  const bool wraps = current == order.end() || current + 1 == order.end();
  focus_ = wraps ? order.front() : *(current + 1);
  views_[*focus_]->Enter();
}

// An arrow goes to the nearest button on its side.
void Dialog::MoveToButtonBeside(const Key& key) {
  if (key.kind != Key::Kind::kLeft && key.kind != Key::Kind::kRight) return;
  const int side = StepOf(key);
  const int own = window_.controls[*focus_].rect.left;
  int least = std::numeric_limits<int>::max();
  for (const std::size_t other : TabOrder()) {
    const Control& control = window_.controls[other];
    const int distance = (control.rect.left - own) * side;
    if (control.kind != ControlKind::kButton || distance <= 0 || distance >= least) continue;
    focus_ = other;
    least = distance;
  }
}

// A message that is longer than its place scrolls first, then the whole content.
void Dialog::ScrollBy(int rows) {
  for (std::size_t i = 0; i < views_.size(); ++i) {
    if (IsMessage(window_.controls[i]) && views_[i]->Scroll(rows)) return;
  }
  scrolled_ += rows;  // drawing keeps it within the content
}

void Dialog::ScrollToFocus(int room) {
  if (follow_ && focus_) {
    const Area& area = layout_.areas[*focus_];
    const int last = std::max(area.row + std::min(area.height, room) - room, 0);
    scrolled_ = std::clamp(scrolled_, last, std::max(area.row, last));
  }
  scrolled_ = std::clamp(scrolled_, 0, std::max(layout_.height - room, 0));
}

Area Dialog::OnScreen(const Area& area) const {
  return {layout_.frame.row + 1 + area.row - scrolled_, layout_.frame.column + 1 + area.column,
          area.height, area.width};
}

std::optional<std::size_t> Dialog::ControlAt(int row, int column) const {
  const Area inside{layout_.frame.row + 1, layout_.frame.column + 1, layout_.frame.height - 2,
                    layout_.frame.width - 2};
  if (!inside.Holds(row, column)) return std::nullopt;
  for (std::size_t i = 0; i < views_.size(); ++i) {
    if (OnScreen(layout_.areas[i]).Holds(row, column)) return i;
  }
  return std::nullopt;
}

void Dialog::Draw() {
  BeginDrawing();
  const Canvas screen;
  layout_ = LayOut(window_, screen.Height(), screen.Width());
  const int room = std::max(layout_.frame.height - 2, 1);
  ScrollToFocus(room);
  DrawFrame(screen);
  const Area inside{layout_.frame.row + 1, layout_.frame.column + 1, room, layout_.frame.width - 2};
  const Canvas content = screen.Part(inside, scrolled_);
  content.SetCursor(scrolled_, 0);  // stays here if nothing has the focus
  DrawIcon(content);
  // What has the focus comes last: it places the cursor.
  const auto draw = [&](std::size_t i, bool focused) {
    if (IsSeen(window_.controls[i])) views_[i]->Draw(content.Part(layout_.areas[i]), focused);
  };
  for (std::size_t i = 0; i < views_.size(); ++i) {
    if (i != focus_) draw(i, false);
  }
  if (focus_) draw(*focus_, true);
  if (focus_ && views_[*focus_]->IsOpen()) {
    views_[*focus_]->DrawMenu(screen, OnScreen(layout_.areas[*focus_]));
  }
  EndDrawing();
}

void Dialog::DrawFrame(const Canvas& screen) const {
  const Area& frame = layout_.frame;
  screen.Frame(frame, OneLine(window_.title));
  const int right = frame.column + frame.width - 1;
  if (scrolled_ > 0) screen.Arrow(frame.row + 1, right, false, Style::kStrong);
  if (scrolled_ + frame.height - 2 < layout_.height) {
    screen.Arrow(frame.row + frame.height - 2, right, true, Style::kStrong);
  }
}

// The sign of the alert's kind, beside its first text.
void Dialog::DrawIcon(const Canvas& content) const {
  struct Icon {
    const char* sign;
    Style style;
  };
  constexpr Icon kIcons[] = {
      {"(X)", Style::kStop}, {"(i)", Style::kNote}, {"/!\\", Style::kCaution}};
  if (!alert_type_ || *alert_type_ < 0 || *alert_type_ >= 3 || layout_.areas.empty()) return;
  const Icon& icon = kIcons[*alert_type_];
  const int row = layout_.areas.front().row;
  const int column =
      kAlertIconLeft * (layout_.frame.width - 2) / (window_.content.right - window_.content.left);
  content.Put(row, column, OneLine(icon.sign), icon.style);
}

}  // namespace terminal
