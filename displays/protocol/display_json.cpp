#include "displays/protocol/display_json.h"

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <variant>
#include <vector>

namespace display {
namespace {

template <class Kind>
struct Name {
  Kind kind;
  std::string_view text;
};

constexpr Name<ControlKind> kControlNames[] = {
    {ControlKind::kStatic, "static"}, {ControlKind::kButton, "button"},
    {ControlKind::kEdit, "edit"},     {ControlKind::kPassword, "password"},
    {ControlKind::kPopup, "popup"},   {ControlKind::kCheckBox, "checkbox"},
    {ControlKind::kRadio, "radio"},   {ControlKind::kList, "list"},
};

constexpr Name<Action::Kind> kActionNames[] = {
    {Action::Kind::kEnter, "enter"},    {Action::Kind::kType, "type"},
    {Action::Kind::kChoose, "choose"},  {Action::Kind::kClick, "click"},
    {Action::Kind::kRow, "row"},        {Action::Kind::kRowToggle, "row+"},
    {Action::Kind::kRowExtend, "row-"}, {Action::Kind::kPress, "press"},
    {Action::Kind::kReturn, "return"},  {Action::Kind::kEscape, "escape"},
    {Action::Kind::kTab, "tab"},        {Action::Kind::kClose, "close"},
};

template <class Kind, std::size_t Count>
std::string_view NameOf(const Name<Kind> (&names)[Count], Kind kind) {
  for (const auto& name : names) {
    if (name.kind == kind) return name.text;
  }
  throw std::invalid_argument("a kind without a name");
}

template <class Kind, std::size_t Count>
Kind KindOf(const Name<Kind> (&names)[Count], std::string_view text) {
  for (const auto& name : names) {
    if (name.text == text) return name.kind;
  }
  throw std::invalid_argument("an unknown kind: " + std::string(text));
}

template <class Value>
Json OrNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

template <class Value>
std::optional<Value> Optional(const Json& json) {
  if (json.is_null()) return std::nullopt;
  return json.get<Value>();
}

Json MenuToJson(const Menu& menu) {
  return {{"id", menu.id}, {"attributes", menu.attributes}, {"variableWidth", menu.variable_width}};
}

Json WindowToJson(const Window& window) {
  Json json;
  json["kind"] = "window";
  json["title"] = window.title;
  json["content"] = RectToJson(window.content);
  json["class"] = window.window_class;
  json["background"] = OrNull(window.background);
  json["controls"] = Json::array();
  for (const Control& control : window.controls) json["controls"].push_back(ToJson(control));
  return json;
}

Window WindowFromJson(const Json& json) {
  Window window{json.at("title"), RectFromJson(json.at("content")), {}};
  window.window_class = json.value("class", window.window_class);
  window.background = Optional<int>(json.value("background", Json()));
  for (const Json& control : json.at("controls")) {
    window.controls.push_back(ControlFromJson(control));
  }
  return window;
}

Json AlertToJson(const Alert& alert) {
  Json json;
  json["kind"] = "alert";
  json["type"] = alert.type;
  json["message"] = alert.message;
  json["explanation"] = alert.explanation;
  json["default"] = OrNull(alert.default_button);
  json["cancel"] = OrNull(alert.cancel_button);
  json["other"] = OrNull(alert.other_button);
  json["returnButton"] = alert.return_button;
  json["escapeButton"] = alert.escape_button;
  json["position"] = alert.position;
  json["movable"] = alert.movable;
  json["helpButton"] = alert.help_button;
  json["flags"] = alert.flags;
  return json;
}

Alert AlertFromJson(const Json& json) {
  Alert alert{json.at("type"),
              json.at("message"),
              json.at("explanation"),
              Optional<std::string>(json.at("default")),
              Optional<std::string>(json.at("cancel")),
              Optional<std::string>(json.at("other"))};
  alert.return_button = json.value("returnButton", alert.return_button);
  alert.escape_button = json.value("escapeButton", alert.escape_button);
  alert.position = json.value("position", alert.position);
  alert.movable = json.value("movable", alert.movable);
  alert.help_button = json.value("helpButton", alert.help_button);
  alert.flags = json.value("flags", alert.flags);
  return alert;
}

}  // namespace

Json RectToJson(const Rect& rect) {
  return Json::array({rect.top, rect.left, rect.bottom, rect.right});
}

Rect RectFromJson(const Json& json) {
  return {json.at(0).get<std::int16_t>(), json.at(1).get<std::int16_t>(),
          json.at(2).get<std::int16_t>(), json.at(3).get<std::int16_t>()};
}

Json ToJson(const Control& control) {
  Json json;
  json["kind"] = NameOf(kControlNames, control.kind);
  json["command"] = control.command;
  json["id"] = control.id;
  json["rect"] = RectToJson(control.rect);
  json["text"] = OrNull(control.text);
  json["value"] = OrNull(control.value);
  json["min"] = OrNull(control.min);
  json["max"] = OrNull(control.max);
  json["items"] = OrNull(control.items);
  json["rows"] = OrNull(control.rows);
  json["visible"] = control.visible;
  json["enabled"] = control.enabled;
  json["default"] = control.is_default;
  json["cancel"] = control.is_cancel;
  json["focused"] = control.focused;
  json["size"] = OrNull(control.size);
  json["font"] = OrNull(control.font);
  json["menu"] = control.menu ? MenuToJson(*control.menu) : Json(nullptr);
  json["cell"] =
      control.cell ? Json::array({control.cell->height, control.cell->width}) : Json(nullptr);
  return json;
}

Control ControlFromJson(const Json& json) {
  Control control;
  control.kind = KindOf(kControlNames, json.at("kind").get<std::string>());
  control.command = json.at("command");
  control.id = json.at("id");
  control.rect = RectFromJson(json.at("rect"));
  control.text = Optional<std::string>(json.at("text"));
  control.value = Optional<int>(json.at("value"));
  control.min = Optional<int>(json.at("min"));
  control.max = Optional<int>(json.at("max"));
  control.items = Optional<std::vector<std::string>>(json.at("items"));
  control.rows = Optional<std::vector<std::string>>(json.at("rows"));
  control.visible = json.at("visible");
  control.enabled = json.at("enabled");
  control.is_default = json.at("default");
  control.is_cancel = json.at("cancel");
  control.focused = json.at("focused");
  control.size = Optional<int>(json.at("size"));
  control.font = Optional<int>(json.at("font"));
  if (const Json menu = json.value("menu", Json()); !menu.is_null()) {
    control.menu = {menu.at("id"), menu.at("attributes"), menu.at("variableWidth")};
  }
  if (const Json cell = json.value("cell", Json()); !cell.is_null()) {
    control.cell = {cell.at(0), cell.at(1)};
  }
  return control;
}

Json SelectionToJson(const Control& list) {
  return {{"multiple", list.multiple}, {"selected", list.selected}};
}

void SelectionFromJson(const Json& selection, Control& list) {
  list.multiple = selection.at("multiple");
  list.selected = selection.at("selected").get<std::vector<int>>();
}

Json ToJson(const Description& dialog) {
  if (const auto* window = std::get_if<Window>(&dialog)) return WindowToJson(*window);
  return AlertToJson(std::get<Alert>(dialog));
}

Description DescriptionFromJson(const Json& json) {
  const std::string kind = json.at("kind");
  if (kind == "window") return WindowFromJson(json);
  if (kind == "alert") return AlertFromJson(json);
  throw std::invalid_argument("an unknown kind of dialog: " + kind);
}

Json ToJson(const Action& action) {
  return {{"action", NameOf(kActionNames, action.kind)},
          {"number", action.number},
          {"item", action.item},
          {"x", action.x},
          {"text", action.text}};
}

Action ActionFromJson(const Json& json) {
  Action action;
  action.kind = KindOf(kActionNames, json.at("action").get<std::string>());
  action.number = json.at("number");
  action.item = json.at("item");
  action.x = json.at("x");
  action.text = json.at("text");
  return action;
}

std::string ToText(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json ParseJson(std::string_view text) { return Json::parse(text); }

Json ParseJsonOrDiscard(std::string_view text) { return Json::parse(text, nullptr, false); }

std::string FormatDescription(const Description& dialog) { return ToText(ToJson(dialog)); }

Description ParseDescription(const std::string& line) {
  return DescriptionFromJson(ParseJson(line));
}

}  // namespace display
