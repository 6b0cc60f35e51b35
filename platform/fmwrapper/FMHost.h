#pragma once

// FileMaker's side of the interface: what a host and its tests need besides the plug-in's
// operations.

#include <string>
#include <vector>

#include "platform/fmwrapper/FMWrapper.h"

#pragma GCC visibility push(default)

namespace fmx::host {

// A parameter or a result. A number is held as its decimal text, exactly.
struct Value {
  std::int32_t type = kFMX_TextType;
  std::u16string text;
  int locale = 0;  // stands for the text's locale; handed through, never looked at

  bool operator==(const Value&) const = default;
};

// One registered external function.
struct Function {
  std::string plugin_id;
  std::int16_t id = 0;
  std::u16string name;
  std::u16string prototype;
  std::int16_t minimum_arguments = 0;
  std::int16_t maximum_arguments = 0;
  std::uint32_t flags = 0;
  ExternalFunction function = nullptr;
};

// What is registered now, in the order of registration.
const std::vector<Function>& Functions();

struct Outcome {
  errcode error = 0;
  Value result;
};

// Calls a registered function as a calculation does. What the plug-in throws passes through.
Outcome Evaluate(const Function& function, const std::vector<Value>& parameters);

// Values that plug-ins made and have not released.
long LiveValues();

}  // namespace fmx::host

#pragma GCC visibility pop
