#include "platform/carbon/describe.h"

#include <cstddef>
#include <optional>
#include <string>

#include "platform/carbon/geometry.h"
#include "platform/carbon/text_conversion.h"
#include "platform/carbon/window_bounds.h"
#include "platform/corefoundation/encoding.h"

namespace carbon {
namespace {

using display::ControlKind;

std::string FourCharacters(OSType code) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(code >> shift & 0xFF);
  return text;
}

std::optional<std::string> TextOf(const Control& control) {
  if (control.kind == ControlKind::kPassword) return "";
  if (!control.text) return std::nullopt;
  return ToUtf8(*control.text);
}

bool HasValue(ControlKind kind) {
  return kind == ControlKind::kPopup || kind == ControlKind::kCheckBox ||
         kind == ControlKind::kRadio;
}

void DescribeMenu(const Control& control, display::Control& description) {
  description.items.emplace();
  description.menu = display::Menu{.variable_width = control.variable_width};
  if (!control.menu) return;
  description.menu->id = control.menu->id;
  description.menu->attributes = static_cast<int>(control.menu->attributes);
  for (const std::u16string& item : control.menu->items) {
    description.items->push_back(ToUtf8(item));
  }
}

void DescribeList(const List& list, display::Control& description) {
  description.rows.emplace();
  for (const std::string& cell : list.cells) {
    description.rows->push_back(ToUtf8(ToUtf16(cell, encoding::SystemEncoding())));
  }
  description.cell = display::CellSize{list.cell_height, list.cell_width};
  description.multiple = !list.only_one;
  for (std::size_t row = 0; row < list.selected.size(); ++row) {
    if (list.selected[row]) description.selected.push_back(static_cast<int>(row) + 1);
  }
}

}  // namespace

display::Control Describe(const Window& window, ControlRef reference, const Control& control) {
  display::Control description;
  description.kind = control.kind;
  description.command = FourCharacters(control.command);
  description.id = control.id;
  description.rect = control.bounds;
  description.text = TextOf(control);
  if (HasValue(control.kind)) {
    description.value = control.value;
    description.min = control.minimum;
    description.max = control.maximum;
  }
  if (control.kind == ControlKind::kPopup) DescribeMenu(control, description);
  if (const auto list = Find(control.list)) DescribeList(*list, description);
  description.visible = control.visible;
  description.enabled = control.enabled;
  description.is_default = reference == window.default_button;
  description.is_cancel = reference == window.cancel_button;
  description.focused = reference == window.focus;
  description.size = control.size;
  description.font = control.font;
  return description;
}

display::Window Describe(Window& window) {
  display::Window description{ToUtf8(window.title), ContentBounds(window), {}};
  description.window_class = static_cast<int>(window.window_class);
  description.background = window.background;
  description.controls.reserve(window.controls.size());
  for (const ControlRef reference : window.controls) {
    description.controls.push_back(Describe(window, reference, *Find(reference)));
  }
  return description;
}

}  // namespace carbon
