#pragma once

// Descriptions and actions as JSON objects, one shape for everything that reads or writes them.

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "platform/carbon/display.h"

namespace display {

// Keys stay in the order in which they are written.
using Json = nlohmann::ordered_json;

Json ToJson(const Control& control);
Json ToJson(const Description& dialog);
Json ToJson(const Action& action);

// [top, left, bottom, right]
Json RectToJson(const Rect& rect);

// The selection of a list travels beside its description.
Json SelectionToJson(const Control& list);
void SelectionFromJson(const Json& selection, Control& list);

// Throw nlohmann::json::exception if a key is missing or its value is of another type,
// std::invalid_argument if the value is not a known one.
Control ControlFromJson(const Json& json);
Description DescriptionFromJson(const Json& json);
Action ActionFromJson(const Json& json);
Rect RectFromJson(const Json& json);

// One line without its end. Bytes that are not UTF-8 become U+FFFD.
std::string ToText(const Json& json);

// Throws nlohmann::json::exception if the text is no JSON.
Json ParseJson(std::string_view text);

// Is discarded (Json::is_discarded) if the text is no JSON.
Json ParseJsonOrDiscard(std::string_view text);

// A description as one line without its end, and the dialog that such a line describes. The latter
// throws as DescriptionFromJson does.
std::string FormatDescription(const Description& dialog);
Description ParseDescription(const std::string& line);

}  // namespace display
