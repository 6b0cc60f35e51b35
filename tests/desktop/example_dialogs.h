#pragma once

// Dialogs to open, with the controls where the plug-in puts them.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "displays/scripted/answers.h"
#include "platform/carbon/display.h"

namespace desktop_test {

using display::Control;
using display::ControlKind;

constexpr int kLeft = 300;  // of the content on the screen
constexpr int kTop = 200;

inline Rect At(int top, int left, int bottom, int right) {
  return {static_cast<int16_t>(top), static_cast<int16_t>(left), static_cast<int16_t>(bottom),
          static_cast<int16_t>(right)};
}

inline Control MakeControl(ControlKind kind, int id, Rect rect, const std::string& text = "") {
  Control control;
  control.kind = kind;
  control.id = id;
  control.rect = rect;
  control.text = text;
  return control;
}

inline Control Field(int number, ControlKind kind, const std::string& text = "") {
  const int down = 30 * (number - 1);
  const bool toggle = kind == ControlKind::kCheckBox || kind == ControlKind::kRadio;
  const Rect rect =
      toggle ? At(57 + down, 145, 77 + down, 165) : At(60 + down, 150, 75 + down, 410);
  Control field = MakeControl(kind, control_id::Field(number), rect, text);
  field.value = 0;
  return field;
}

inline Control PopupField(int number, std::vector<std::string> items) {
  Control popup = Field(number, ControlKind::kPopup);
  popup.value = 1;
  popup.items = std::move(items);
  return popup;
}

inline Control Button(int number, int top, const std::string& text) {
  constexpr std::array kLefts{323, 218, 113, 8};
  const int left = kLefts[static_cast<std::size_t>(number - 1)];
  Control button = MakeControl(ControlKind::kButton, control_id::Button(number),
                               At(top, left, top + 32, left + 90), text);
  button.is_default = number == 1;
  return button;
}

// A message, two buttons, the cancel control, and the fields; `focus` is the field with the focus.
inline display::Window Dialog(const std::vector<Control>& fields, int focus,
                              const std::string& title = "Dialog") {
  display::Window window{title, At(kTop, kLeft, kTop + 225, kLeft + 425), {}};
  window.controls = {MakeControl(ControlKind::kStatic, 1, At(5, 5, 55, 420), "Message"),
                     Button(1, 188, "OK"), Button(2, 188, "Cancel"),
                     MakeControl(ControlKind::kButton, 999, At(500, 500, 510, 510))};
  window.controls.back().is_cancel = true;
  for (const Control& field : fields) {
    const int number = (field.id - control_id::Field(0)) / 2;
    window.controls.push_back(MakeControl(ControlKind::kStatic, field.id - 1,
                                          At(30 * number + 30, 5, 30 * number + 45, 140),
                                          "Label " + std::to_string(number)));
    window.controls.push_back(field);
    window.controls.back().focused = number == focus;
  }
  return window;
}

constexpr std::size_t kListIndex = 1;

inline display::Window ListDialog(bool multiple) {
  display::Window window{"List", At(kTop, kLeft, kTop + 325, kLeft + 425), {}};
  Control list = MakeControl(ControlKind::kList, 1, At(100, 5, 278, 420));
  list.rows = std::vector<std::string>(30, "Row");
  list.multiple = multiple;
  window.controls = {MakeControl(ControlKind::kStatic, 1, At(5, 5, 90, 420), "Message"), list,
                     Button(1, 290, "OK")};
  return window;
}

// The index of field `number` in a dialog made by Dialog.
constexpr std::size_t FieldIndex(int number) { return static_cast<std::size_t>(3 + 2 * number); }

// An action as it stands in a script of answers.
inline std::string Said(const std::optional<display::Action>& action) {
  return action ? display::FormatAnswer(*action) : "gone";
}

}  // namespace desktop_test
