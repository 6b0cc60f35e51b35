#pragma once

#include <string>
#include <utility>
#include <vector>

#include "calculation/evaluator.h"
#include "calculation/external_functions.h"
#include "calculation/parser.h"
#include "calculation/unicode.h"

namespace calculation {

// Functions that hand back what they were called with, and note that they were called.
class FakeFunctions : public ExternalFunctions {
 public:
  const std::vector<Signature>& signatures() const override { return signatures_; }

  Value Call(std::size_t index, const std::vector<Value>& arguments) override {
    std::string call = signatures_[index].name + "<";
    for (const Value& argument : arguments) call += ToUtf8(AsText(argument)) + ">";
    calls.push_back(call);
    return arguments.empty() ? Value(Text(u"none")) : arguments.front();
  }

  bool IsLeftOut(std::string_view name) const override {
    return name == "Pi" || name == "Get ( FoundCount )";
  }

  std::vector<std::string> calls;

 private:
  std::vector<Signature> signatures_{
      {"Echo", 1, 1, "Echo(value)"}, {"EchoBlank ", 1, 1, ""}, {"EchoAny", 0, 2, ""}};
};

// "text:…" or "number:…", as the calculation's result has it.
inline std::string Result(std::string_view text, ExternalFunctions& functions,
                          Variables& variables) {
  const std::u16string source = ToUtf16(text);
  const NodePtr tree = Parse(source, functions);
  const Value value = Evaluator(functions, variables).Evaluate(*tree);
  constexpr const char* kKinds[] = {"text:", "number:", "moment:"};
  return kKinds[value.index()] + ToUtf8(AsText(value));
}

inline std::string Result(std::string_view text) {
  FakeFunctions functions;
  Variables variables;
  return Result(text, functions, variables);
}

}  // namespace calculation
