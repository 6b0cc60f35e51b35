#pragma once

// Descriptions and actions as JSON objects, one shape for everything that reads or writes them.

#include <nlohmann/json.hpp>

#include "platform/carbon/display.h"

namespace display {

// Keys stay in the order in which they are written.
using Json = nlohmann::ordered_json;

Json ToJson(const Control& control);
Json ToJson(const Description& dialog);
Json ToJson(const Action& action);

// The selection of a list travels beside its description.
Json SelectionToJson(const Control& list);
void SelectionFromJson(const Json& selection, Control& list);

// Throw nlohmann::json::exception where a key is missing or of another kind, std::invalid_argument
// where a value is none that is known.
Control ControlFromJson(const Json& json);
Description DescriptionFromJson(const Json& json);
Action ActionFromJson(const Json& json);

}  // namespace display
