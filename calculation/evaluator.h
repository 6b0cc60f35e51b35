#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "calculation/external_functions.h"
#include "calculation/syntax.h"

namespace calculation {

// The $ and $$ variables by name, in small letters. One that was never set is empty.
using Variables = std::unordered_map<std::u16string, Value>;

// Computes one calculation.
class Evaluator {
 public:
  // Both must outlive the evaluator.
  Evaluator(ExternalFunctions& externals, Variables& variables)
      : externals_(externals), variables_(variables) {}

  // Throws Error if the calculation has no result, and what the external functions throw.
  Value Evaluate(const Node& node);

 private:
  static Value Compute(const Literal& literal, Span place);
  Value Compute(const Variable& variable, Span place);
  Value Compute(const Local& local, Span place);
  Value Compute(const Negation& negation, Span place);
  Value Compute(const Chain& chain, Span place);
  Value Compute(const BuiltInCall& call, Span place);
  Value Compute(const ExternalCall& call, Span place);
  static Value Compute(const List& list, Span place);
  Value Compute(const Let& let, Span place);

  void Apply(const Link& link, Value& result);
  Value& Target(const Let::Binding& binding);

  ExternalFunctions& externals_;
  Variables& variables_;
  std::vector<Value> locals_;
};

// What a function of the language was called with. An argument is evaluated when it is asked for,
// each time that it is.
class Arguments {
 public:
  Arguments(Evaluator& evaluator, const std::vector<NodePtr>& nodes)
      : evaluator_(evaluator), nodes_(nodes) {}

  std::size_t size() const { return nodes_.size(); }
  bool Has(std::size_t index) const { return index < nodes_.size(); }

  // REQUIRES: Has(index). Numbers throw NumberError if the argument is none.
  Value Get(std::size_t index) const { return evaluator_.Evaluate(*nodes_[index]); }
  std::u16string Text(std::size_t index) const { return AsText(Get(index)); }
  Decimal Number(std::size_t index) const { return AsNumber(Get(index)); }
  long long Integer(std::size_t index) const { return Number(index).ToInteger(); }
  bool IsTrue(std::size_t index) const { return AsTruth(Get(index)); }

  // The two items of an argument that is a [ a ; b ].
  std::optional<Arguments> Pair(std::size_t index) const;

 private:
  Evaluator& evaluator_;
  const std::vector<NodePtr>& nodes_;
};

}  // namespace calculation
