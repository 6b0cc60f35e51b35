#pragma once

// The frame of every external function: its parameter is fetched and tested, its own work runs, and
// a text or a number is handed back. The error code that FileMaker gets is always 0; what goes
// wrong stands in the result.

#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"

// Error tokens, each a whole result.
inline constexpr const char* kNoPopUpMenu = "$$001$$";
inline constexpr const char* kBadParameter = "$$002$$";  // empty or too long
inline constexpr const char* kNoMemory = "$$003$$";

// A bounded parameter has at most this many UTF-16 code units.
inline constexpr std::uint32_t kParameterLimit = 1024;

// A function's own work: takes the parameter, which the frame owns, and sets the answer.
using FunctionBody = void (*)(CFStringRef parameter, fmx::Text& answer);

// Runs `body` on a parameter of 1 to kParameterLimit code units, or of at least 1; any other
// answers kBadParameter, exhausted memory kNoMemory, and `body` does not run.
fmx::errcode RunBounded(const fmx::DataVect& parameters, fmx::Data& result, FunctionBody body);
fmx::errcode RunUnbounded(const fmx::DataVect& parameters, fmx::Data& result, FunctionBody body);

// Hands back a byte string or a number without reading the parameter's text.
fmx::errcode ReturnText(const fmx::DataVect& parameters, fmx::Data& result, const char* bytes);
fmx::errcode ReturnNumber(fmx::Data& result, std::int32_t number);

// Set the answer: a byte string, a string object by way of the system encoding (kNoMemory where
// that cannot be had), a decimal number.
void Answer(fmx::Text& answer, const char* bytes);
void Answer(fmx::Text& answer, CFStringRef text);
void Answer(fmx::Text& answer, std::int32_t number);
