#include "calculation/evaluator.h"

#include <algorithm>
#include <utility>

#include "calculation/built_ins.h"
#include "calculation/interruption.h"
#include "calculation/parser.h"
#include "calculation/unicode.h"

namespace calculation {

constexpr std::array<Operator, 15> kOperators{{
    {u"or", Operator::kOr, nullptr},
    {u"xor", Operator::kOr, [](auto& a, auto& b) { return Truth(AsTruth(a) != AsTruth(b)); }},
    {u"and", Operator::kAnd, nullptr},
    {u"=", Operator::kComparison, [](auto& a, auto& b) { return Truth(Compare(a, b) == 0); }},
    {u"≠", Operator::kComparison, [](auto& a, auto& b) { return Truth(Compare(a, b) != 0); }},
    {u"<", Operator::kComparison, [](auto& a, auto& b) { return Truth(Compare(a, b) < 0); }},
    {u">", Operator::kComparison, [](auto& a, auto& b) { return Truth(Compare(a, b) > 0); }},
    {u"≤", Operator::kComparison, [](auto& a, auto& b) { return Truth(Compare(a, b) <= 0); }},
    {u"≥", Operator::kComparison, [](auto& a, auto& b) { return Truth(Compare(a, b) >= 0); }},
    {u"&", Operator::kConcatenation, nullptr},
    {u"+", Operator::kSum, Add},
    {u"-", Operator::kSum, Subtract},
    {u"*", Operator::kProduct, [](auto& a, auto& b) -> Value { return AsNumber(a) * AsNumber(b); }},
    {u"/", Operator::kProduct, [](auto& a, auto& b) -> Value { return AsNumber(a) / AsNumber(b); }},
    {u"^", Operator::kPower,
     [](auto& a, auto& b) -> Value { return Power(AsNumber(a), AsNumber(b)); }},
}};

namespace {

// Gives a place to what `compute` finds wrong with a number.
template <class Computation>
auto At(Span place, Computation compute) {
  try {
    return compute();
  } catch (const NumberError& error) {
    throw Error(place, error.what());
  }
}

void Append(Value& result, const Value& operand) {
  if (!std::holds_alternative<Text>(result)) result = AsText(result);
  std::get<Text>(result).Append(AsText(operand));
}

void CheckLength(const Value& value, Span place) {
  const auto* text = std::get_if<Text>(&value);
  if (!text || text->size() <= kLongestText) return;
  throw Error(place, TooLong());
}

// Does its work in the end, whatever the end is.
template <class Work>
struct Finally {
  Work work;
  ~Finally() { work(); }
};
template <class Work>
Finally(Work) -> Finally<Work>;

}  // namespace

Value Evaluator::Evaluate(const Node& node) {
  CheckInterruption();
  return std::visit([&](const auto& form) { return this->Compute(form, node.place); }, node.form);
}

Value Evaluator::Compute(const Literal& literal, Span) { return literal.value; }

Value Evaluator::Compute(const Variable& variable, Span) {
  const auto found = variables_.find(KeyOf(variable));
  return found == variables_.end() ? Value() : found->second;
}

Value Evaluator::Compute(const Local& local, Span) { return locals_[local.slot]; }

Value Evaluator::Compute(const Negation& negation, Span place) {
  const Value operand = Evaluate(*negation.operand);
  return At(place, [&] {
    return negation.logical ? Truth(!AsTruth(operand)) : Value(-AsNumber(operand));
  });
}

Value Evaluator::Compute(const Chain& chain, Span) {
  Value result = Evaluate(*chain.first);
  for (const Link& link : chain.links) Apply(link, result);
  return result;
}

// The second operand of `and` and `or` is evaluated only if it matters.
void Evaluator::Apply(const Link& link, Value& result) {
  const auto level = link.operation->level;
  const auto combine = link.operation->combine;
  const bool is_or = level == Operator::kOr;
  if (!combine && level != Operator::kConcatenation) {
    const bool first = At(link.place, [&] { return AsTruth(result); });
    result = Truth(first);
    if (first == is_or) return;
    const Value second = Evaluate(*link.operand);
    result = At(link.place, [&] { return Truth(AsTruth(second)); });
    return;
  }
  const Value operand = Evaluate(*link.operand);
  if (combine) {
    result = At(link.place, [&] { return combine(result, operand); });
  } else {
    Append(result, operand);
    CheckLength(result, link.place);
  }
}

Value Evaluator::Compute(const BuiltInCall& call, Span place) {
  Value result = At(place, [&] {
    return call.function->evaluate({*this, call.function->name, call.arguments});
  });
  CheckLength(result, place);
  return result;
}

Value Evaluator::Compute(const ExternalCall& call, Span place) {
  std::vector<Value> arguments;
  CallPlace standing{depth_ == 0 ? place : Span{}, {}};
  for (const NodePtr& argument : call.arguments) {
    std::vector<Piece> pieces;
    arguments.push_back(EvaluatePieces(*argument, pieces));
    if (arguments.size() == 1) standing.pieces = std::move(pieces);
  }
  externals_.Calling(standing);
  return At(place, [&] { return externals_.Call(call.index, arguments); });
}

// Evaluates the node and appends the pieces that its value is joined from.
Value Evaluator::EvaluatePieces(const Node& node, std::vector<Piece>& pieces) {
  const auto append = [&pieces](const Node& piece, std::size_t units) {
    pieces.push_back({piece.place, std::holds_alternative<Literal>(piece.form), units});
  };
  const auto* chain = std::get_if<Chain>(&node.form);
  if (!chain || chain->links.front().operation->level != Operator::kConcatenation) {
    Value value = Evaluate(node);
    append(node, AsText(value).size());
    return value;
  }
  Value result = EvaluatePieces(*chain->first, pieces);
  for (const Link& link : chain->links) {
    const std::size_t units = AsText(result).size();
    Apply(link, result);
    append(*link.operand, AsText(result).size() - units);
  }
  return result;
}

// Stands only where Arguments::Items takes it apart.
Value Evaluator::Compute(const List&, Span place) {
  throw Error(place, "unexpected list; expected a value");
}

Value Evaluator::Compute(const Let& let, Span place) {
  Bind(let.bindings);
  const auto holds = [&] {
    const Value test = Evaluate(*let.test);
    return At(let.test->place, [&] { return AsTruth(test); });
  };
  while (let.test && holds()) {
    CountRound(place);
    Bind(let.rounds);
  }
  return Evaluate(*let.result);
}

void Evaluator::Bind(const std::vector<Binding>& bindings) {
  for (const Binding& binding : bindings) {
    Value value = binding.value ? Evaluate(*binding.value) : Value();
    if (const auto* variable = std::get_if<Variable>(&binding.target)) {
      Set(*variable, std::move(value));
      continue;
    }
    const std::size_t slot = std::get<Local>(binding.target).slot;
    if (locals_.size() <= slot) locals_.resize(slot + 1);
    locals_[slot] = std::move(value);
  }
}

std::u16string Evaluator::KeyOf(const Variable& variable) {
  if (!variable.repetition) return variable.name;
  const Value value = Evaluate(*variable.repetition);
  const long repetition =
      At(variable.repetition->place, [&] { return AsNumber(value).ToInteger(); });
  if (repetition < 1) throw Error(variable.repetition->place, "expected a repetition, 1 or more");
  if (repetition == 1) return variable.name;
  return variable.name + u"[" + ToUtf16(std::to_string(repetition)) + u"]";
}

std::optional<Arguments> Arguments::Items(std::size_t index) const {
  const auto* list = std::get_if<List>(&nodes_[index]->form);
  if (!list) return std::nullopt;
  return Arguments(evaluator_, function_, list->items);
}

void Evaluator::CountRound(Span place) {
  if (rounds_left_-- <= 0) throw Error(place, "the loops go round too often");
}

Value Evaluator::EvaluateText(std::u16string_view calculation) {
  CountRound({});
  const int deepest = Parser::kDeepestNesting >> ++depth_;  // so that all together have an end
  std::vector<Value> locals;
  std::swap(locals, locals_);
  const Finally restore{[&] {
    std::swap(locals, locals_);
    --depth_;
  }};
  const NodePtr tree = Parser(ReadCalculation(calculation), externals_, deepest).ParseWhole();
  return Evaluate(*tree);
}

Value Evaluator::EvaluateWithin(long most_rounds, const Node& node) {
  const long withheld = rounds_left_ - std::clamp(most_rounds, 0L, rounds_left_);
  rounds_left_ -= withheld;
  const Finally restore{[&] { rounds_left_ += withheld; }};
  return Evaluate(node);
}

}  // namespace calculation
