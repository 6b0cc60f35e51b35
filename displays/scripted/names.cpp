#include "displays/scripted/names.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "displays/scripted/dialog_name.h"
#include "platform/carbon/control_ids.h"

namespace display {
namespace {

using Kind = Action::Kind;

constexpr std::size_t kMostCandidates = 10;  // that a message lists

// What one kind of thing in a dialog is called, each with its number.
struct Things {
  std::string kind;  // "button"
  std::vector<std::pair<int, std::string>> named = {};

  void Add(int number, const std::optional<std::string>& text) {
    if (text && !text->empty()) named.emplace_back(number, OnOneLine(*text));
  }

  void Add(const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) Add(static_cast<int>(i) + 1, texts[i]);
  }
};

const Control* FindById(const Window& window, int id) {
  const auto found = std::find_if(window.controls.begin(), window.controls.end(),
                                  [id](const Control& control) { return control.id == id; });
  return found == window.controls.end() ? nullptr : &*found;
}

Things Buttons(const Window& window) {
  Things buttons{"button"};
  for (int number = 1; number <= control_id::kMost; ++number) {
    const Control* button = FindById(window, control_id::Button(number));
    if (button && button->visible) buttons.Add(number, button->text);
  }
  return buttons;
}

Things Buttons(const Alert& alert) {
  Things buttons{"button"};
  buttons.Add(1, alert.default_button);
  buttons.Add(2, alert.cancel_button);
  buttons.Add(3, alert.other_button);
  return buttons;
}

Things Fields(const Window& window) {
  Things fields{"field"};
  for (int number = 1; number <= control_id::kMost; ++number) {
    const Control* label = FindById(window, control_id::Label(number));
    if (label) fields.Add(number, label->text);
  }
  return fields;
}

Things Rows(const Window& window) {
  Things rows{"row"};
  for (const Control& control : window.controls) {
    if (control.rows) rows.Add(*control.rows);
  }
  return rows;
}

bool IsRow(Kind kind) {
  return kind == Kind::kRow || kind == Kind::kRowToggle || kind == Kind::kRowExtend;
}

// What an action's number stands for.
Things ThingsOf(Kind kind, const Description& dialog) {
  const auto* window = std::get_if<Window>(&dialog);
  if (kind == Kind::kPress) {
    return window ? Buttons(*window) : Buttons(std::get<Alert>(dialog));
  }
  if (IsRow(kind)) return window ? Rows(*window) : Things{"row"};
  return window ? Fields(*window) : Things{"field"};
}

// What its item stands for, once its number is known.
Things ItemsOf(const Action& action, const Description& dialog) {
  Things items{"item"};
  const auto* window = std::get_if<Window>(&dialog);
  if (!window || !control_id::IsNumber(action.number)) return items;
  const Control* field = FindById(*window, control_id::Field(action.number));
  if (field && field->items) items.Add(*field->items);
  return items;
}

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

// "1 and 3", "1, 2 and 3".
std::string Listed(const std::vector<std::string>& texts) {
  std::string list;
  for (std::size_t i = 0; i < texts.size() && i < kMostCandidates; ++i) {
    if (i > 0) list += i + 1 == texts.size() ? " and " : ", ";
    list += texts[i];
  }
  return list + (texts.size() > kMostCandidates ? " and more" : "");
}

// The number of the one thing that is called `name`.
int NumberOf(const std::string& name, const Things& things) {
  std::vector<std::string> numbers;
  std::vector<std::string> others;
  int number = 0;
  for (const auto& [candidate, text] : things.named) {
    others.push_back(Quoted(text));
    if (text != OnOneLine(name)) continue;
    number = candidate;
    numbers.push_back(std::to_string(candidate));
  }
  if (numbers.size() == 1) return number;
  if (!numbers.empty()) {
    throw NameError(Quoted(name) + " is the name of " + things.kind + "s " + Listed(numbers) +
                    "; its number says which is meant");
  }
  throw NameError("there is no " + things.kind + " " + Quoted(name) +
                  (others.empty() ? ""
                                  : "; there " + std::string(others.size() == 1 ? "is " : "are ") +
                                        Listed(others)));
}

// The name of the thing of this number, if no other has it.
std::optional<std::string> NameOf(int number, const Things& things) {
  const auto is_it = [number](const auto& thing) { return thing.first == number; };
  const auto found = std::find_if(things.named.begin(), things.named.end(), is_it);
  if (found == things.named.end()) return std::nullopt;
  const auto has_name = [&](const auto& thing) { return thing.second == found->second; };
  if (std::count_if(things.named.begin(), things.named.end(), has_name) > 1) return std::nullopt;
  return found->second;
}

}  // namespace

Action ActionOf(const Answer& answer, const Description& dialog) {
  Action action = answer.action;
  if (const auto& name = answer.names.number) {
    action.number = NumberOf(*name, ThingsOf(action.kind, dialog));
  }
  if (const auto& name = answer.names.item) {
    action.item = NumberOf(*name, ItemsOf(action, dialog));
  }
  return action;
}

Names NamesFor(const Action& action, const Description& dialog) {
  Names names;
  names.number = NameOf(action.number, ThingsOf(action.kind, dialog));
  if (action.kind == Kind::kChoose) names.item = NameOf(action.item, ItemsOf(action, dialog));
  return names;
}

}  // namespace display
