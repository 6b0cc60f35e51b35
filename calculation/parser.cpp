#include "calculation/parser.h"

#include <algorithm>
#include <utility>

#include "calculation/built_ins.h"
#include "calculation/nearest.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

using Kind = Token::Kind;

constexpr std::size_t kLevels = 6;

struct OperatorSign {
  std::u16string_view sign;
  Operator operation;
  std::size_t level;  // 0 binds weakest
};

constexpr OperatorSign kOperators[] = {
    {u"or", Operator::kOr, 0},      {u"xor", Operator::kXor, 0},
    {u"and", Operator::kAnd, 1},    {u"=", Operator::kEqual, 2},
    {u"≠", Operator::kUnequal, 2},  {u"<", Operator::kLess, 2},
    {u">", Operator::kGreater, 2},  {u"≤", Operator::kAtMost, 2},
    {u"≥", Operator::kAtLeast, 2},  {u"&", Operator::kConcatenate, 3},
    {u"+", Operator::kAdd, 4},      {u"-", Operator::kSubtract, 4},
    {u"*", Operator::kMultiply, 5}, {u"/", Operator::kDivide, 5},
};

template <class Form>
NodePtr Make(Span place, Form form) {
  return std::make_unique<const Node>(Node{place, std::move(form)});
}

// A chain without links is its first operand.
NodePtr MakeChain(Chain chain) {
  if (chain.links.empty()) return std::move(chain.first);
  const Span place = chain.first->place;
  return Make(place, std::move(chain));
}

std::string Quoted(std::u16string_view text) { return "\"" + ToUtf8(text) + "\""; }

std::string NameOf(const Token& token) {
  switch (token.kind) {
    case Kind::kEnd:
      return "end";
    case Kind::kText:
      return "text";
    default:
      return Quoted(token.text);
  }
}

// "1 parameter", "2 to 3 parameters", "at least 2 parameters".
std::string Parameters(int minimum, int maximum) {
  if (maximum < 0) return "at least " + std::to_string(minimum) + " parameters";
  const std::string upper = std::to_string(maximum) + (maximum == 1 ? " parameter" : " parameters");
  return minimum == maximum ? upper : std::to_string(minimum) + " to " + upper;
}

// A text, then either search and replacement or any number of lists of the two.
void CheckLists(const Token& name, const std::vector<NodePtr>& arguments) {
  const auto is_list = [](const NodePtr& node) { return std::holds_alternative<List>(node->form); };
  const auto lists =
      static_cast<std::size_t>(std::count_if(arguments.begin(), arguments.end(), is_list));
  const bool has_pairs = lists + 1 == arguments.size() && !is_list(arguments.front());
  if (has_pairs || (lists == 0 && arguments.size() == 3)) return;
  throw Error(name.place, ToUtf8(name.text) +
                              " expects ( text ; search ; replacement ) or ( text ; [ search ; "
                              "replacement ] ; … )");
}

std::string_view WithoutBlanksBehind(std::string_view name) {
  while (name.ends_with(' ')) name.remove_suffix(1);
  return name;
}

}  // namespace

// One level deeper for as long as it lives.
class Parser::Nesting {
 public:
  explicit Nesting(Parser& parser) : parser_(parser) {
    if (parser.nesting_ == kDeepestNesting) {
      throw Error(parser.Peek().place, "the calculation is nested more than " +
                                           std::to_string(kDeepestNesting) + " levels deep");
    }
    ++parser_.nesting_;
  }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;
  ~Nesting() { --parser_.nesting_; }

 private:
  Parser& parser_;
};

Parser::Parser(std::vector<Token> tokens, const ExternalFunctions& externals)
    : tokens_(std::move(tokens)), externals_(externals) {}

NodePtr Parser::ParseWhole() {
  NodePtr whole = ParseExpression();
  ExpectEnd("an operator");
  return whole;
}

NodePtr Parser::ParseExpression() {
  const Nesting nesting(*this);
  return ParseChain(0);
}

bool Parser::AcceptWords(const std::vector<std::u16string_view>& words) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!AtWord(words[i], i)) return false;
  }
  next_ += words.size();
  return true;
}

bool Parser::AtSymbol(std::u16string_view symbol, std::size_t ahead) const {
  return Peek(ahead).kind == Kind::kSymbol && Peek(ahead).text == symbol;
}

bool Parser::AcceptSymbol(std::u16string_view symbol) {
  if (!AtSymbol(symbol)) return false;
  Take();
  return true;
}

void Parser::Expect(std::u16string_view symbol, const std::string& expected) {
  if (!AcceptSymbol(symbol)) FailExpecting(expected);
}

std::u16string Parser::TakeVariable() {
  if (Peek().kind != Kind::kVariable) FailExpecting("a variable, $name or $$name");
  return Lowercase(Take().text);
}

void Parser::ExpectEnd(const std::string& expected) {
  if (Peek().kind != Kind::kEnd) FailExpecting(expected);
}

const Token& Parser::Peek(std::size_t ahead) const {
  return tokens_[std::min(next_ + ahead, tokens_.size() - 1)];
}

bool Parser::AtWord(std::u16string_view word, std::size_t ahead) const {
  return Peek(ahead).kind == Kind::kName && CompareIgnoringCase(Peek(ahead).text, word) == 0;
}

Token Parser::Take() {
  const Token& token = Peek();
  if (token.kind != Kind::kEnd) ++next_;
  return token;
}

void Parser::FailExpecting(const std::string& expected) const {
  const Token& token = Peek();
  const std::string what = "unexpected " + NameOf(token) + "; expected " + expected;
  if (token.kind == Kind::kEnd && !token.text.empty()) throw Unfinished(token.place, what);
  throw Error(token.place, what);
}

std::optional<Operator> Parser::AcceptOperator(std::size_t level, Span& place) {
  if (Peek().kind != Kind::kSymbol && Peek().kind != Kind::kName) return std::nullopt;
  for (const OperatorSign& candidate : kOperators) {
    if (candidate.level != level || CompareIgnoringCase(Peek().text, candidate.sign) != 0) continue;
    place = Take().place;
    return candidate.operation;
  }
  return std::nullopt;
}

NodePtr Parser::ParseChain(std::size_t level) {
  if (level == kLevels) return ParseUnary();
  Chain chain{ParseChain(level + 1), {}};
  Span place;
  while (const std::optional<Operator> operation = AcceptOperator(level, place)) {
    NodePtr operand = ParseChain(level + 1);
    chain.links.push_back({*operation, place, std::move(operand)});
  }
  return MakeChain(std::move(chain));
  // The analyser loses sight of what the chain owns.
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)

NodePtr Parser::ParseUnary() {
  const bool logical = AtWord(u"not");
  if (!logical && !AtSymbol(u"-") && !AtSymbol(u"+")) return ParsePower();
  const Nesting nesting(*this);
  const Token sign = Take();
  NodePtr operand = ParseUnary();
  if (sign.text == u"+") return operand;
  return Make(sign.place, Negation{logical, std::move(operand)});
}

NodePtr Parser::ParsePower() {
  Chain chain{ParsePrimary(), {}};
  while (AtSymbol(u"^")) {
    const Span place = Take().place;
    const bool has_sign = AtSymbol(u"-") || AtSymbol(u"+");
    chain.links.push_back({Operator::kPower, place, has_sign ? ParseUnary() : ParsePrimary()});
  }
  return MakeChain(std::move(chain));
}

NodePtr Parser::ParsePrimary() {
  switch (Peek().kind) {
    case Kind::kText: {
      Token token = Take();
      return Make(token.place, Literal{std::move(token.text)});
    }
    case Kind::kNumber:
      return ParseNumber();
    case Kind::kVariable: {
      const Token token = Take();
      return Make(token.place, Variable{Lowercase(token.text)});
    }
    case Kind::kName:
      return ParseName();
    default:
      break;
  }
  if (!AcceptSymbol(u"(")) FailExpecting("a value");
  NodePtr inner = ParseExpression();
  Expect(u")", "an operator or \")\"");
  return inner;
}

NodePtr Parser::ParseNumber() {
  const Token token = Take();
  const std::optional<Decimal> number = Decimal::FromText(ToUtf8(token.text));
  if (!number) {
    throw Error(token.place, "the number has too many digits; expected at most " +
                                 std::to_string(Decimal::kMostDigits));
  }
  return Make(token.place, Literal{*number});
}

NodePtr Parser::ParseName() {
  const Token name = Take();
  if (!AtSymbol(u"(")) {
    const auto local = locals_.find(Lowercase(name.text));
    if (local != locals_.end()) return Make(name.place, Local{local->second.back()});
  } else if (CompareIgnoringCase(name.text, u"Let") == 0) {
    return ParseLet(name);
  }
  if (const BuiltIn* function = FindBuiltIn(name.text)) return ParseBuiltIn(name, *function);
  if (const auto index = FindExternal(name.text)) return ParseExternal(name, *index);
  FailUnknown(name);
}

NodePtr Parser::ParseLet(const Token& name) {
  Let let;
  std::vector<std::u16string> names;
  Expect(u"(", "\"(\"");
  if (AcceptSymbol(u"[")) {
    while (!AcceptSymbol(u"]")) {
      ParseBinding(let, names);
      if (!AcceptSymbol(u";") && !AtSymbol(u"]")) FailExpecting(R"(an operator, ";" or "]")");
    }
  } else {
    ParseBinding(let, names);
  }
  Expect(u";", "an operator or \";\"");
  let.result = ParseExpression();
  Expect(u")", "an operator or \")\"");
  for (const std::u16string& bound : names) {
    const auto local = locals_.find(bound);
    local->second.pop_back();
    if (local->second.empty()) locals_.erase(local);
  }
  slots_ -= names.size();
  return Make(name.place, std::move(let));
}

// A name is in reach from its own value on, where it still means what it meant before.
void Parser::ParseBinding(Let& let, std::vector<std::u16string>& names) {
  const bool is_variable = Peek().kind == Kind::kVariable;
  if (!is_variable && Peek().kind != Kind::kName) FailExpecting("a name");
  std::u16string name = Lowercase(Take().text);
  Expect(u"=", "\"=\"");
  NodePtr value = ParseExpression();
  if (is_variable) {
    let.bindings.push_back({std::move(name), 0, std::move(value)});
    return;
  }
  let.bindings.push_back({u"", slots_, std::move(value)});
  locals_[name].push_back(slots_++);
  names.push_back(std::move(name));
}

NodePtr Parser::ParseBuiltIn(const Token& name, const BuiltIn& function) {
  std::vector<NodePtr> arguments = ParseArguments(name, function.minimum_arguments,
                                                  function.maximum_arguments, function.takes_lists);
  if (function.takes_lists) CheckLists(name, arguments);
  return Make(name.place, BuiltInCall{&function, std::move(arguments)});
}

NodePtr Parser::ParseExternal(const Token& name, std::size_t index) {
  const ExternalFunctions::Signature& signature = externals_.signatures()[index];
  return Make(name.place, ExternalCall{index, ParseArguments(name, signature.minimum_arguments,
                                                             signature.maximum_arguments, false)});
}

// A function that needs no argument may stand without parentheses.
std::vector<NodePtr> Parser::ParseArguments(const Token& name, int minimum, int maximum,
                                            bool with_lists) {
  std::vector<NodePtr> arguments;
  if (!AtSymbol(u"(") && minimum == 0) return arguments;
  Expect(u"(", "\"(\" behind the function " + Quoted(name.text));
  if (!AtSymbol(u")")) {
    do {
      arguments.push_back(ParseArgument(with_lists));
    } while (AcceptSymbol(u";"));
  }
  Expect(u")", "an operator, \";\" or \")\"");
  const auto count = static_cast<long long>(arguments.size());
  if (count < minimum || (maximum >= 0 && count > maximum)) {
    throw Error(name.place, ToUtf8(name.text) + " expects " + Parameters(minimum, maximum) +
                                ", not " + std::to_string(count));
  }
  return arguments;
}

NodePtr Parser::ParseArgument(bool with_lists) {
  if (!with_lists || !AtSymbol(u"[")) return ParseExpression();
  const Span place = Take().place;
  List list;
  do {
    list.items.push_back(ParseExpression());
  } while (AcceptSymbol(u";"));
  Expect(u"]", R"(an operator, ";" or "]")");
  if (list.items.size() != 2) throw Error(place, "expected two texts, [ search ; replacement ]");
  return Make(place, std::move(list));
}

std::optional<std::size_t> Parser::FindExternal(std::u16string_view name) const {
  const auto& signatures = externals_.signatures();
  for (std::size_t i = 0; i < signatures.size(); ++i) {
    const std::u16string known = ToUtf16(WithoutBlanksBehind(signatures[i].name));
    if (CompareIgnoringCase(known, name) == 0) return i;
  }
  return std::nullopt;
}

std::vector<std::string> Parser::FunctionNames() const {
  std::vector<std::string> names{"Let"};
  for (const BuiltIn& function : BuiltIns()) names.push_back(ToUtf8(function.name));
  for (const auto& signature : externals_.signatures()) {
    names.emplace_back(WithoutBlanksBehind(signature.name));
  }
  return names;
}

void Parser::FailUnknown(const Token& name) const {
  std::vector<std::string> names = FunctionNames();
  if (AtSymbol(u"(")) {
    throw Error(name.place,
                "there is no function " + Quoted(name.text) + Suggestion(ToUtf8(name.text), names));
  }
  for (const auto& local : locals_) names.push_back(ToUtf8(local.first));
  const std::string suggestion = Suggestion(ToUtf8(name.text), names);
  throw Error(name.place,
              "unknown name " + Quoted(name.text) +
                  (suggestion.empty() ? "; a text stands in double quotes" : suggestion));
}

NodePtr Parse(std::u16string_view text, const ExternalFunctions& externals) {
  return Parser(ReadCalculation(text), externals).ParseWhole();
}

}  // namespace calculation
