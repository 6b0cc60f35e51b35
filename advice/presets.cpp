#include "advice/presets.h"

#include <algorithm>
#include <variant>

#include "advice/parameters.h"
#include "platform/carbon/control_ids.h"

namespace advice {
namespace {

using display::ControlKind;

// Each call of these replaces what the one before it set.
constexpr std::string_view kPresetFunctions[] = {
    "TarvoSetCaption",   "TarvoSetCustomControls", "TarvoPopUps",   "TarvoFillListBox",
    "TarvoPreEnterText", "TarvoPosition",          "TarvoSetFocus", "TarvoAllowEscape"};

bool IsRefused(const Call& call) { return call.result == "$$002$$" || call.result == "$$003$$"; }

bool HasPopUp(const Call& call) {
  const auto* window = call.dialog ? std::get_if<display::Window>(&*call.dialog) : nullptr;
  return window &&
         std::any_of(window->controls.begin(), window->controls.end(),
                     [](const auto& control) { return control.kind == ControlKind::kPopup; });
}

// The presets that are no longer in force after a dialog.
std::vector<std::string_view> ClearedBy(const Call& call) {
  if (call.function == "TarvoAlert" || call.function == "TarvoDoListBox") return {};
  std::vector<std::string_view> cleared{"TarvoPreEnterText", "TarvoPosition"};
  if (FieldCount(call, SplitItems(call.function, call.parameter)) > 0) {
    cleared.emplace_back("TarvoSetFocus");
  }
  if (call.function == "TarvoDialog") {
    cleared.emplace_back("TarvoAllowEscape");
    cleared.emplace_back("TarvoSetCustomControls");
  }
  return cleared;
}

void Forget(Presets& presets, std::string_view function) {
  const auto found = presets.set.find(function);
  if (found == presets.set.end()) return;
  if (!found->second.used) presets.lost.emplace_back(*found);
  presets.set.erase(found);
}

void Show(Presets& presets, const Call& call) {
  presets.had_dialog = true;
  presets.lost.clear();
  if (call.result == "$$001$$") return;
  for (const std::string_view function : PresetsUsedBy(call)) {
    const auto found = presets.set.find(function);
    if (found != presets.set.end()) found->second.used = true;
  }
  for (const std::string_view function : ClearedBy(call)) Forget(presets, function);
}

// The highest number of a field that has an input.
int HighestField(const display::Window& window) {
  int highest = 0;
  for (const display::Control& control : window.controls) {
    for (int number = 1; number <= control_id::kMost; ++number) {
      if (control.id == control_id::Field(number)) highest = std::max(highest, number);
    }
  }
  return highest;
}

}  // namespace

std::vector<std::string_view> PresetsUsedBy(const Call& call) {
  if (call.function == "TarvoAlert") return {};
  if (call.function == "TarvoDoListBox") {
    return {"TarvoSetCaption", "TarvoFillListBox", "TarvoAllowEscape"};
  }
  std::vector<std::string_view> used{"TarvoSetCaption", "TarvoPosition", "TarvoAllowEscape",
                                     "TarvoPreEnterText"};
  if (FieldCount(call, SplitItems(call.function, call.parameter)) > 0) {
    used.emplace_back("TarvoSetFocus");
  }
  if (HasPopUp(call)) used.emplace_back("TarvoPopUps");
  if (call.function == "TarvoCustomDialog") used.emplace_back("TarvoSetCustomControls");
  return used;
}

const display::Control* FindControl(const Call& call, int id) {
  const auto* window = call.dialog ? std::get_if<display::Window>(&*call.dialog) : nullptr;
  if (!window) return nullptr;
  const auto found =
      std::find_if(window->controls.begin(), window->controls.end(),
                   [id](const display::Control& control) { return control.id == id; });
  return found == window->controls.end() ? nullptr : &*found;
}

bool ShowsDialog(std::string_view function) {
  return function == "TarvoDialog" || function == "TarvoCustomDialog" ||
         function == "TarvoDoListBox" || function == "TarvoAlert";
}

const Preset* Find(const Presets& presets, std::string_view function) {
  const auto found = presets.set.find(function);
  return found == presets.set.end() ? nullptr : &found->second;
}

Presets After(Presets before, const Call& call) {
  const std::size_t number = before.calls++;
  if (IsRefused(call)) return before;
  if (ShowsDialog(call.function)) Show(before, call);
  const auto* const preset =
      std::find(std::begin(kPresetFunctions), std::end(kPresetFunctions), call.function);
  if (preset == std::end(kPresetFunctions)) return before;
  Forget(before, call.function);
  before.set[call.function] = {number, SplitItems(call.function, call.parameter)};
  return before;
}

std::size_t MenuCount(const std::vector<std::string>& items) {
  std::size_t tally = 0;
  std::size_t empty = 0;
  for (std::size_t i = 0; i < std::min<std::size_t>(items.size(), 4); ++i) {
    if (UnitsOf(items[i]) >= 2) tally += 1 + empty;
    if (items[i].empty()) ++empty;
  }
  return std::min({tally, std::size_t{4}, items.size()});
}

int FieldCount(const Call& call, const std::vector<std::string>& items) {
  const auto* window = call.dialog ? std::get_if<display::Window>(&*call.dialog) : nullptr;
  if (!window || call.function == "TarvoDoListBox") return 0;
  const int count = NumberOf(items.front());
  return count == 5 ? HighestField(*window) : count;
}

}  // namespace advice
