#pragma once

#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "calculation/external_functions.h"
#include "calculation/syntax.h"

namespace calculation {

// The $ and $$ variables by name, in small letters, with the number of the repetition in brackets
// but for the first. One that was never set is empty.
using Variables = std::unordered_map<std::u16string, Value>;

// Computes one calculation.
class Evaluator {
 public:
  // The loops of a calculation that have gone round this often in all are taken to be endless.
  static constexpr long kMostRounds = 10'000'000;

  // Both must outlive the evaluator.
  Evaluator(ExternalFunctions& externals, Variables& variables, long most_rounds = kMostRounds)
      : externals_(externals), variables_(variables), rounds_left_(most_rounds) {}

  // Throws Error if the calculation has no result, and what the external functions throw.
  Value Evaluate(const Node& node);

  void Set(const Variable& variable, Value value) {
    variables_[KeyOf(variable)] = std::move(value);
  }

  // The result of a calculation in a text, in which no names of Let are in reach. Throws Error.
  Value EvaluateText(std::u16string_view calculation);

  // With a lower limit for loops.
  Value EvaluateWithin(long most_rounds, const Node& node);

  const ExternalFunctions& externals() const { return externals_; }

 private:
  static Value Compute(const Literal& literal, Span place);
  Value Compute(const Variable& variable, Span place);
  Value Compute(const Local& local, Span place);
  Value Compute(const Negation& negation, Span place);
  Value Compute(const Chain& chain, Span place);
  Value Compute(const BuiltInCall& call, Span place);
  Value Compute(const ExternalCall& call, Span place);
  Value EvaluatePieces(const Node& node, std::vector<Piece>& pieces);
  static Value Compute(const List& list, Span place);
  Value Compute(const Let& let, Span place);

  void Apply(const Link& link, Value& result);
  void Bind(const std::vector<Binding>& bindings);
  std::u16string KeyOf(const Variable& variable);
  void CountRound(Span place);

  ExternalFunctions& externals_;
  Variables& variables_;
  std::vector<Value> locals_;
  long rounds_left_;
  int depth_ = 0;  // of calculations in texts
};

// What a function of the language was called with. An argument is evaluated when it is asked for,
// each time that it is.
class Arguments {
 public:
  Arguments(Evaluator& evaluator, std::u16string_view function, std::span<const NodePtr> nodes)
      : evaluator_(evaluator), function_(function), nodes_(nodes) {}

  std::size_t size() const { return nodes_.size(); }
  bool Has(std::size_t index) const { return index < nodes_.size(); }

  // REQUIRES: Has(index). Numbers throw NumberError if the argument is none.
  Value Get(std::size_t index) const { return evaluator_.Evaluate(*nodes_[index]); }
  calculation::Text Text(std::size_t index) const { return AsText(Get(index)); }
  Decimal Number(std::size_t index) const { return AsNumber(Get(index)); }
  long Integer(std::size_t index) const { return Number(index).ToInteger(); }
  bool IsTrue(std::size_t index) const { return AsTruth(Get(index)); }

  // The items of an argument that is a [ a ; b ].
  std::optional<Arguments> Items(std::size_t index) const;

  // The arguments from this one on.
  Arguments From(std::size_t index) const { return {evaluator_, function_, nodes_.subspan(index)}; }

  const Node& node(std::size_t index) const { return *nodes_[index]; }
  Evaluator& evaluator() const { return evaluator_; }
  std::u16string_view function() const { return function_; }  // as the table has it

 private:
  Evaluator& evaluator_;
  std::u16string_view function_;
  std::span<const NodePtr> nodes_;
};

}  // namespace calculation
