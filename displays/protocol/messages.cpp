#include "displays/protocol/messages.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "displays/protocol/display_json.h"

namespace display::protocol {
namespace {

// The keys that tell messages apart.
constexpr const char* kOpen = "open";
constexpr const char* kChange = "change";
constexpr const char* kClose = "close";
constexpr const char* kReady = "ready";
constexpr const char* kAction = "action";
constexpr const char* kClosed = "closed";

// The keys of what else they hold.
constexpr const char* kDialog = "dialog";
constexpr const char* kControl = "control";
constexpr const char* kSelection = "selection";
constexpr const char* kScreen = "screen";
constexpr const char* kTellsClosed = "tells closed";
constexpr const char* kError = "error";

std::string Line(const Json& message) { return ToText(message) + '\n'; }

// The selection of each list, by its index: it is no part of a description.
Json SelectionsOf(const Description& dialog) {
  Json selections = Json::object();
  if (const auto* window = std::get_if<Window>(&dialog)) {
    for (std::size_t i = 0; i < window->controls.size(); ++i) {
      if (window->controls[i].kind != ControlKind::kList) continue;
      selections[std::to_string(i)] = SelectionToJson(window->controls[i]);
    }
  }
  return selections;
}

Description DescriptionOf(const Json& message) {
  Description description = DescriptionFromJson(message.at(kOpen));
  auto* window = std::get_if<Window>(&description);
  if (!window || !message.contains(kSelection)) return description;
  for (const auto& [index, selection] : message.at(kSelection).items()) {
    SelectionFromJson(selection, window->controls.at(std::stoul(index)));
  }
  return description;
}

Control ChangedControl(const Json& message) {
  Control control = ControlFromJson(message.at(kControl));
  if (message.contains(kSelection) && !message.at(kSelection).is_null()) {
    SelectionFromJson(message.at(kSelection), control);
  }
  return control;
}

}  // namespace

int ReadConnection(std::string_view option, const std::string& argument) {
  const bool is_number = !argument.empty() && argument.size() < 9 &&
                         argument.find_first_not_of("0123456789") == std::string::npos;
  return option == kConnectionOption && is_number ? std::stoi(argument) : -1;
}

std::string OpenLine(int dialog, const Description& description) {
  return Line(
      {{kOpen, ToJson(description)}, {kDialog, dialog}, {kSelection, SelectionsOf(description)}});
}

std::string ChangeLine(int dialog, std::size_t index, const Control& control) {
  const bool is_list = control.kind == ControlKind::kList;
  return Line({{kChange, index},
               {kDialog, dialog},
               {kControl, ToJson(control)},
               {kSelection, is_list ? SelectionToJson(control) : Json(nullptr)}});
}

std::string CloseLine(int dialog) { return Line(Json::object({{kClose, dialog}})); }

HostMessage ReadHostMessage(std::string_view line) {
  const Json message = ParseJson(line);
  if (message.contains(kOpen)) return Open{message.at(kDialog), DescriptionOf(message)};
  if (message.contains(kChange)) {
    return Change{message.at(kDialog), message.at(kChange), ChangedControl(message)};
  }
  if (message.contains(kClose)) return Close{message.at(kClose)};
  throw std::invalid_argument("the host says what is not understood");
}

std::string ReadyLine(const Ready& ready) {
  Json message{{kReady, true}, {kScreen, RectToJson(ready.main_screen)}};
  if (ready.tells_closed) message[kTellsClosed] = true;
  return Line(message);
}

std::string NotReadyLine(const std::string& why) { return Line({{kReady, false}, {kError, why}}); }

std::string ActionLine(int dialog, const Action& action) {
  Json message = ToJson(action);
  message[kDialog] = dialog;
  return Line(message);
}

std::string ClosedLine(int dialog) { return Line(Json::object({{kClosed, dialog}})); }

DisplayMessage ReadDisplayMessage(std::string_view line) {
  const Json message = ParseJson(line);
  if (message.contains(kAction)) return Done{message.at(kDialog), ActionFromJson(message)};
  if (message.contains(kClosed)) return Closed{message.at(kClosed)};
  if (message.at(kReady).get<bool>()) {
    return Ready{RectFromJson(message.at(kScreen)), message.value(kTellsClosed, false)};
  }
  return NotReady{message.at(kError)};
}

}  // namespace display::protocol
