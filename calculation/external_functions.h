#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calculation/value.h"

namespace calculation {

// What surrounds calculations: functions that they can call besides the language's own, and what
// only their host knows.
class ExternalFunctions {
 public:
  struct Signature {
    std::string name;  // UTF-8
    int minimum_arguments;
    int maximum_arguments;
    std::string prototype;  // as messages show it
  };

  ExternalFunctions() = default;
  ExternalFunctions(const ExternalFunctions&) = delete;
  ExternalFunctions& operator=(const ExternalFunctions&) = delete;
  virtual ~ExternalFunctions() = default;

  virtual const std::vector<Signature>& signatures() const = 0;

  // Calls the function of `signatures()[index]`. What it throws ends the calculation.
  virtual Value Call(std::size_t index, const std::vector<Value>& arguments) = 0;

  // What the host knows under this name of Get's, such as ScriptResult; empty if it knows nothing.
  virtual Value Get(std::string_view /*name*/) const { return {}; }

  // Whether there is such a function, or "Get ( NAME )", elsewhere and deliberately not here.
  virtual bool IsLeftOut(std::string_view /*name*/) const { return false; }
};

}  // namespace calculation
