#pragma once

// What the calls of a run leave for the dialogs after them.

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/carbon/display.h"

namespace advice {

// A call of one of the plug-in's functions. Texts are UTF-8.
struct Call {
  std::string function;  // as it is registered
  std::string parameter;
  std::string result;
  std::optional<display::Description> dialog = std::nullopt;  // that it showed
  // The bytes of the parameter, from first to before second, that no literal of the calculation
  // holds.
  std::vector<std::pair<std::size_t, std::size_t>> data = {};
  std::vector<std::string> cut = {};  // the dialog's texts that do not fit on the screen
};

struct Preset {
  std::size_t call = 0;  // the number of the call that set it
  std::vector<std::string> items;
  bool used = false;
};

struct Presets {
  std::map<std::string, Preset, std::less<>> set;    // by function
  std::vector<std::pair<std::string, Preset>> lost;  // before a dialog used them
  std::size_t calls = 0;
  bool had_dialog = false;
};

// The control of this id in the dialog that the call showed; null if there is none.
const display::Control* FindControl(const Call& call, int id);

bool ShowsDialog(std::string_view function);

// The preset that this function set last and that is still in force; null if there is none.
const Preset* Find(const Presets& presets, std::string_view function);

// The functions that set what the call's dialog is made with.
std::vector<std::string_view> PresetsUsedBy(const Call& call);

// What is left after a call.
Presets After(Presets before, const Call& call);

// How many menus TarvoPopUps defines with these items.
std::size_t MenuCount(const std::vector<std::string>& items);

// How many fields a dialog has that is shown with these items: pop-ups too.
int FieldCount(const Call& call, const std::vector<std::string>& items);

}  // namespace advice
