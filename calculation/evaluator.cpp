#include "calculation/evaluator.h"

#include <utility>

#include "calculation/built_ins.h"

namespace calculation {
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
  if (!std::holds_alternative<std::u16string>(result)) result = AsText(result);
  auto& text = std::get<std::u16string>(result);
  if (const auto* more = std::get_if<std::u16string>(&operand)) {
    text += *more;
  } else {
    text += AsText(operand);
  }
}

void CheckLength(const Value& value, Span place) {
  const auto* text = std::get_if<std::u16string>(&value);
  if (!text || text->size() <= kLongestText) return;
  throw Error(place, "the text is longer than " + std::to_string(kLongestText) + " characters");
}

Value Combine(Operator operation, const Value& first, const Value& second) {
  switch (operation) {
    case Operator::kXor:
      return Truth(AsTruth(first) != AsTruth(second));
    case Operator::kEqual:
      return Truth(Compare(first, second) == 0);
    case Operator::kUnequal:
      return Truth(Compare(first, second) != 0);
    case Operator::kLess:
      return Truth(Compare(first, second) < 0);
    case Operator::kGreater:
      return Truth(Compare(first, second) > 0);
    case Operator::kAtMost:
      return Truth(Compare(first, second) <= 0);
    case Operator::kAtLeast:
      return Truth(Compare(first, second) >= 0);
    case Operator::kAdd:
      return AsNumber(first) + AsNumber(second);
    case Operator::kSubtract:
      return AsNumber(first) - AsNumber(second);
    case Operator::kMultiply:
      return AsNumber(first) * AsNumber(second);
    case Operator::kDivide:
      return AsNumber(first) / AsNumber(second);
    case Operator::kPower:
      return Power(AsNumber(first), AsNumber(second));
    default:
      return first;
  }
}

}  // namespace

Value Evaluator::Evaluate(const Node& node) {
  return std::visit([&](const auto& form) { return this->Compute(form, node.place); }, node.form);
}

Value Evaluator::Compute(const Literal& literal, Span) { return literal.value; }

Value Evaluator::Compute(const Variable& variable, Span) {
  const auto found = variables_.find(variable.name);
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

// The second operand of `and` and `or` is evaluated only where it matters.
void Evaluator::Apply(const Link& link, Value& result) {
  const bool is_or = link.operation == Operator::kOr;
  if (is_or || link.operation == Operator::kAnd) {
    const bool first = At(link.place, [&] { return AsTruth(result); });
    result = Truth(first);
    if (first == is_or) return;
    const Value second = Evaluate(*link.operand);
    result = At(link.place, [&] { return Truth(AsTruth(second)); });
    return;
  }
  const Value operand = Evaluate(*link.operand);
  if (link.operation == Operator::kConcatenate) {
    Append(result, operand);
    CheckLength(result, link.place);
  } else {
    result = At(link.place, [&] { return Combine(link.operation, result, operand); });
  }
}

Value Evaluator::Compute(const BuiltInCall& call, Span place) {
  Value result =
      At(place, [&] { return call.function->evaluate(Arguments(*this, call.arguments)); });
  CheckLength(result, place);
  return result;
}

Value Evaluator::Compute(const ExternalCall& call, Span) {
  std::vector<Value> arguments;
  for (const NodePtr& argument : call.arguments) arguments.push_back(Evaluate(*argument));
  return externals_.Call(call.index, arguments);
}

// Stands only where Arguments::Pair takes it apart.
Value Evaluator::Compute(const List&, Span place) {
  throw Error(place, "unexpected list; expected a value");
}

Value Evaluator::Compute(const Let& let, Span) {
  for (const Let::Binding& binding : let.bindings) {
    Value value = Evaluate(*binding.value);
    Target(binding) = std::move(value);
  }
  return Evaluate(*let.result);
}

Value& Evaluator::Target(const Let::Binding& binding) {
  if (!binding.variable.empty()) return variables_[binding.variable];
  if (locals_.size() <= binding.slot) locals_.resize(binding.slot + 1);
  return locals_[binding.slot];
}

std::optional<Arguments> Arguments::Pair(std::size_t index) const {
  const auto* list = std::get_if<List>(&nodes_[index]->form);
  if (!list) return std::nullopt;
  return Arguments(evaluator_, list->items);
}

}  // namespace calculation
