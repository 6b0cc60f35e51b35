#pragma once

#include <string>
#include <vector>

#include "calculation/value.h"

namespace calculation {

// The functions that calculations can call besides the language's own.
class ExternalFunctions {
 public:
  struct Signature {
    std::string name;  // UTF-8
    int minimum_arguments;
    int maximum_arguments;
  };

  ExternalFunctions() = default;
  ExternalFunctions(const ExternalFunctions&) = delete;
  ExternalFunctions& operator=(const ExternalFunctions&) = delete;
  virtual ~ExternalFunctions() = default;

  virtual const std::vector<Signature>& signatures() const = 0;

  // Calls the function of `signatures()[index]`. What it throws ends the calculation.
  virtual Value Call(std::size_t index, const std::vector<Value>& arguments) = 0;
};

}  // namespace calculation
