#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "calculation/source.h"
#include "calculation/value.h"

namespace calculation {

// A part of an argument that is joined with &, or all of it.
struct Piece {
  Span place;         // of the expression that it comes from
  bool is_literal;    // that expression is a text or a number as it stands
  std::size_t units;  // that it adds to the argument
};

// A call as it stands in a source.
struct CallPlace {
  Span place;                 // empty if that is not known
  std::vector<Piece> pieces;  // of the first argument, in their order
};

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

  // Is told where the next call stands.
  virtual void Calling(const CallPlace& /*place*/) {}

  // Calls the function of `signatures()[index]`. What it throws ends the calculation.
  virtual Value Call(std::size_t index, const std::vector<Value>& arguments) = 0;

  // What the host knows under this name of Get's, such as ScriptResult; empty if it knows nothing.
  virtual Value Get(std::string_view /*name*/) const { return {}; }

  // Whether there is such a function, or "Get ( NAME )", elsewhere and deliberately not here.
  virtual bool IsLeftOut(std::string_view /*name*/) const { return false; }
};

}  // namespace calculation
