#pragma once

#include <string>
#include <string_view>

#include "calculation/value.h"

namespace workbench {

// Writes to standard output, at once. Throws Failure if it is closed or full.
void Print(std::string_view text);

// A result as one line, its carriage returns as line feeds.
std::string FormatResult(const calculation::Value& result);

// The same as a JSON object: {"type": "text", "result": "…"} or {"type": "number", "result": 220}.
std::string FormatResultAsJson(const calculation::Value& result);

// Tells the user on standard error, behind the program's name.
void Warn(const std::string& message);

// A text, UTF-8, as JSON writes it.
std::string JsonText(std::string_view text);

}  // namespace workbench
