#pragma once

// A calculation as a tree. Every function is known and every count of arguments is right.

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "calculation/source.h"
#include "calculation/value.h"

namespace calculation {

struct BuiltIn;
struct Node;
using NodePtr = std::unique_ptr<const Node>;

struct Operator {
  enum Level { kOr, kAnd, kComparison, kConcatenation, kSum, kProduct, kPower };

  std::u16string_view sign;
  Level level;                                                // the lowest binds weakest
  Value (*combine)(const Value& first, const Value& second);  // null of or, and and &
};

extern const std::array<Operator, 15> kOperators;

struct Literal {
  Value value;
};

// $name or $$name, in small letters, and which of its repetitions; the first if none is said.
struct Variable {
  std::u16string name;
  NodePtr repetition;
};

// A variable of Let, by its place among those that are in reach.
struct Local {
  std::size_t slot;
};

struct Negation {
  bool logical;  // not, else minus
  NodePtr operand;
};

struct Link {
  const Operator* operation;
  Span place;
  NodePtr operand;
};

// Operators of one precedence, applied from left to right. A long chain is one node, not a deep
// tree.
struct Chain {
  NodePtr first;
  std::vector<Link> links;
};

struct BuiltInCall {
  const BuiltIn* function;
  std::vector<NodePtr> arguments;
};

struct ExternalCall {
  std::size_t index;  // among the external functions
  std::vector<NodePtr> arguments;
};

// [ a ; b ] as an argument.
struct List {
  std::vector<NodePtr> items;
};

// name = value
struct Binding {
  std::variant<Local, Variable> target;
  NodePtr value;
};

// As long as the test holds, the rounds' bindings are made anew; Let has neither.
struct Let {
  std::vector<Binding> bindings;
  NodePtr test = nullptr;
  std::vector<Binding> rounds = {};
  NodePtr result;
};

struct Node {
  Span place;
  std::variant<Literal, Variable, Local, Negation, Chain, BuiltInCall, ExternalCall, List, Let>
      form;
};

}  // namespace calculation
