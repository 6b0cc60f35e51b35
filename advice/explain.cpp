#include "advice/explain.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <variant>

#include "advice/parameters.h"
#include "platform/carbon/control_ids.h"

namespace advice {
namespace {

using display::Control;
using display::ControlKind;

std::string Count(std::size_t count, const std::string& thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string StartOf(const Control& input) {
  const std::string text = input.text.value_or("");
  switch (input.kind) {
    case ControlKind::kPassword:
      return "a password field, starts empty";
    case ControlKind::kCheckBox:
      return std::string("a check box, ") + (input.value == 1 ? "on" : "off");
    case ControlKind::kRadio:
      return std::string("a radio button, ") + (input.value == 1 ? "on" : "off");
    case ControlKind::kPopup: {
      const auto shown = static_cast<std::size_t>(input.value.value_or(0));
      return "a pop-up menu of " + Count(input.items->size(), "item") +
             (shown >= 1 && shown <= input.items->size()
                  ? ", shows " + Quoted((*input.items)[shown - 1])
                  : "");
    }
    default:
      return "a text field, starts " + (text.empty() ? "empty" : "with " + Quoted(text));
  }
}

std::string EffectOfLabel(const Call& call, int field, int fields, const std::string& text) {
  if (field > fields) return text.empty() ? "" : "is not shown";
  const Control* input = FindControl(call, control_id::Field(field));
  if (!input) return "stands alone";
  return "field " + std::to_string(field) + " is " + StartOf(*input) +
         (input->focused ? ", has the focus" : "");
}

std::string EffectOfButton(int number, const std::string& text) {
  if (number > 1) return text.empty() ? "no such button" : "";
  return text.empty() ? "says OK; Return presses it" : "Return presses it";
}

std::string EffectOfPasswordField(int number) {
  if (number == 0) return "no password field";
  return "field " + std::to_string(number < 0 ? -number : number) +
         (number < 0 ? " is a text field" : " hides what is typed");
}

std::string EffectOfFields(const Call& call, int item, const std::vector<std::string>& items) {
  const std::string& text = items[static_cast<std::size_t>(item) - 1];
  if (item == 1) {
    if (!call.dialog) return "shows no dialog";
    const auto fields = static_cast<std::size_t>(FieldCount(call, items));
    return "a dialog with " + Count(fields, NumberOf(text) == 5 ? "pop-up menu" : "field");
  }
  if (item >= 3 && item <= 6) return EffectOfButton(item - 2, text);
  if (item >= 7 && item <= 10) {
    return call.dialog ? EffectOfLabel(call, item - 6, FieldCount(call, items), text) : "";
  }
  if (item != 11) return text.empty() ? "no message" : "";
  return EffectOfPasswordField(NumberOf(text));
}

std::string EffectOfListBox(int item, const std::string& text) {
  if (item == 1) return text.empty() ? "no message" : "";
  if (item <= 5) return EffectOfButton(item - 1, text);
  if (item == 6 || item == 9) return "";
  return NumberOf(text) >= 1 ? "on" : "off";
}

std::string EffectOfAlert(int item, const std::string& text) {
  constexpr const char* kKinds[] = {"a stop", "a note", "a caution"};
  if (item == 1) {
    return text == "0" || text == "1" || text == "2"
               ? kKinds[static_cast<std::size_t>(text.front() - '0')]
               : "plain";
  }
  if (item < 4 || !text.empty()) {
    return item == 4 ? "Return presses it" : item == 5 ? "Escape presses it" : "";
  }
  return item == 4 ? "" : "no such button";
}

std::string EffectOfKind(int kind) {
  constexpr const char* kKinds[] = {"a text field", "a password field", "a pop-up menu",
                                    "a check box", "a radio button"};
  return kind >= 0 && kind <= 4 ? kKinds[static_cast<std::size_t>(kind)]
                                : "no field, only the label";
}

std::string EffectOf(const Call& call, int item, const std::vector<std::string>& items) {
  const std::string& text = items[static_cast<std::size_t>(item) - 1];
  if (call.function == "TarvoDialog" || call.function == "TarvoCustomDialog") {
    return EffectOfFields(call, item, items);
  }
  if (call.function == "TarvoDoListBox") return EffectOfListBox(item, text);
  if (call.function == "TarvoAlert") return EffectOfAlert(item, text);
  if (call.function == "TarvoSetCustomControls") return EffectOfKind(NumberOf(text));
  if (call.function == "TarvoFillListBox") return Count(Split(text, '\r').size(), "line");
  if (call.function == "TarvoPopUps" && !text.empty()) {
    return Count(Split(text, '\r').size(), "item");
  }
  if (call.function == "TarvoAllowEscape") return NumberOf(text) >= 1 ? "on" : "off";
  return "";
}

}  // namespace

std::vector<ExplainedItem> Explain(const Call& call) {
  const Parameter* parameter = FindParameter(call.function);
  if (!parameter) return {};
  std::vector<std::string> items = SplitItems(call.function, call.parameter);
  const std::size_t given = items.size();
  items.resize(std::max(given, parameter->items.size()));
  std::vector<ExplainedItem> explained;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto number = static_cast<int>(i) + 1;
    if (i >= parameter->items.size()) {
      explained.push_back({number, "not read", items[i], "is ignored"});
    } else {
      explained.push_back(
          {number, std::string(parameter->items[i]), items[i], EffectOf(call, number, items)});
    }
  }
  return explained;
}

std::vector<std::string> ExplainPresets(const Call& call, const Presets& before) {
  constexpr std::pair<std::string_view, const char*> kPresets[] = {{"TarvoSetCaption", "caption"},
                                                                   {"TarvoPosition", "position"},
                                                                   {"TarvoAllowEscape", "Escape"},
                                                                   {"TarvoFillListBox", "lines"}};
  std::vector<std::string> lines;
  const std::vector<std::string_view> used = PresetsUsedBy(call);
  for (const auto& [function, what] : kPresets) {
    const Preset* preset = Find(before, function);
    if (!preset || std::find(used.begin(), used.end(), function) == used.end()) continue;
    std::string text;
    for (const std::string& item : preset->items) text += (text.empty() ? "" : "|") + item;
    if (function == "TarvoAllowEscape") text = NumberOf(text) >= 1 ? "cancels" : "does nothing";
    std::replace(text.begin(), text.end(), '\r', ' ');
    lines.push_back(std::string(what) + ": " + text);
  }
  return lines;
}

}  // namespace advice
