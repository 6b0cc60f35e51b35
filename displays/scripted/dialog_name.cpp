#include "displays/scripted/dialog_name.h"

#include <algorithm>
#include <variant>

namespace display {
namespace {

std::string NameOf(const Window& window) {
  if (!window.title.empty()) return window.title;
  const auto message =
      std::find_if(window.controls.begin(), window.controls.end(), [](const Control& control) {
        return control.kind == ControlKind::kStatic && control.text && !control.text->empty();
      });
  return message == window.controls.end() ? "" : *message->text;
}

std::string NameOf(const Alert& alert) { return alert.message; }

}  // namespace

std::string NameOf(const Description& dialog) {
  std::string name = std::visit([](const auto& shown) { return NameOf(shown); }, dialog);
  std::replace_if(
      name.begin(), name.end(), [](char sign) { return sign == '\r' || sign == '\n'; }, ' ');
  return name;
}

}  // namespace display
