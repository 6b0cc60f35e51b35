#pragma once

#include <string>
#include <string_view>

#include "calculation/value.h"
#include "displays/protocol/display_json.h"

namespace workbench {

// Writes to standard output, at once. Throws Failure if it is closed or full. JSON is UTF-8 in
// every locale, a text is in the user's code set.
void Print(std::string_view text);
void PrintJson(std::string_view text);

// A result as one line, its carriage returns as line feeds.
std::string FormatResult(const calculation::Value& result);

// The same as a JSON object: {"type": "text", "result": "…"} or {"type": "number", "result": 220}.
std::string FormatResultAsJson(const calculation::Value& result);

// Tells the user on standard error, behind the program's name.
void Warn(const std::string& message);

// On one line, with a blank behind each comma and colon.
std::string ToLine(const display::Json& json);

}  // namespace workbench
