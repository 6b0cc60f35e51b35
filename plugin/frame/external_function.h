#pragma once

// The frame of every external function: its parameter is fetched and tested, its own work runs, and
// a text or a number becomes its result. The error code that FileMaker gets is always 0; what goes
// wrong stands in the result.

#include <cstdint>
#include <type_traits>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"

// The type of the nineteen functions, as FileMaker calls them: a header declares one by its name.
using TarvoFunction = std::remove_pointer_t<fmx::ExternalFunction>;

// Error tokens, each a whole result.
inline constexpr const char* kNoPopUpMenu = "$$001$$";
inline constexpr const char* kBadParameter = "$$002$$";  // empty or too long
inline constexpr const char* kNoMemory = "$$003$$";

// A bounded parameter has at most this many UTF-16 code units.
inline constexpr std::uint32_t kParameterLimit = 1024;

// A function's own work: takes the parameter, which the frame owns, and sets the result.
using FunctionBody = void (*)(CFStringRef parameter, fmx::Text& result);

// Runs `body` on a parameter of 1 to kParameterLimit code units, or on one of any length from 1 on.
// Otherwise the result is kBadParameter, or kNoMemory if memory runs out, and `body` does not run.
fmx::errcode RunBounded(const fmx::DataVect& parameters, fmx::Data& result, FunctionBody body);
fmx::errcode RunUnbounded(const fmx::DataVect& parameters, fmx::Data& result, FunctionBody body);

// Makes a byte string or a number the result, without reading the parameter's text.
fmx::errcode ReturnText(const fmx::DataVect& parameters, fmx::Data& result, const char* bytes);
fmx::errcode ReturnNumber(fmx::Data& result, std::int32_t number);

// Set a function's result to a byte string; to a string object, which passes through the system
// encoding (kNoMemory if memory for that runs out); to a number in decimal.
void SetResult(fmx::Text& result, const char* bytes);
void SetResult(fmx::Text& result, CFStringRef text);
void SetResult(fmx::Text& result, std::int32_t number);
