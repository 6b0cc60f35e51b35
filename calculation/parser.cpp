#include "calculation/parser.h"

#include <algorithm>
#include <utility>

#include "calculation/built_ins.h"
#include "calculation/nearest.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

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

// The styles of texts. The numbers that stand for them do not matter: a style changes no text here.
constexpr std::u16string_view kStyles[] = {u"Plain",           u"Bold",
                                           u"Italic",          u"Underline",
                                           u"Outline",         u"Shadow",
                                           u"Condense",        u"Extend",
                                           u"Strikethrough",   u"SmallCaps",
                                           u"Superscript",     u"Subscript",
                                           u"Uppercase",       u"Lowercase",
                                           u"Titlecase",       u"WordUnderline",
                                           u"DoubleUnderline", u"HighlightYellow",
                                           u"AllStyles"};

void Bind(std::vector<Binding>& bindings, std::size_t slot, NodePtr value) {
  bindings.emplace_back().target = Local{slot};
  bindings.back().value = std::move(value);
}

std::string Quoted(std::u16string_view text) { return "\"" + ToUtf8(text) + "\""; }

std::string NameOf(const Token& token) {
  if (token.kind == Token::Kind::kEnd) return "end";
  return token.kind == Token::Kind::kText ? "text" : Quoted(token.text);
}

// "1 parameter", "2 to 3 parameters", "at least 2 parameters".
std::string Parameters(int minimum, int maximum) {
  const int last = maximum < 0 ? minimum : maximum;
  const std::string count = std::to_string(last) + (last == 1 ? " parameter" : " parameters");
  if (maximum < 0) return "at least " + count;
  return minimum == maximum ? count : std::to_string(minimum) + " to " + count;
}

// A text, then either values or any number of lists of them.
void CheckLists(const Token& name, const BuiltIn& function, const std::vector<NodePtr>& arguments) {
  const auto is_list = [](const NodePtr& node) { return std::holds_alternative<List>(node->form); };
  const auto lists =
      static_cast<std::size_t>(std::count_if(arguments.begin(), arguments.end(), is_list));
  const bool has_lists = lists > 0 && lists + 1 == arguments.size() && !is_list(arguments.front());
  const auto values = static_cast<std::size_t>(ArityOf(function).minimum);
  if (has_lists || (lists == 0 && arguments.size() == values)) return;
  const std::string parameters(function.parameters);
  const std::size_t first = parameters.find(" ; ") + 3;
  throw Error(name.place, ToUtf8(function.name) + " expects ( " + parameters + " ) or ( " +
                              parameters.substr(0, first) + "[ " + parameters.substr(first) +
                              " ] ; … )");
}

std::string_view WithoutBlanksBehind(std::string_view name) {
  while (name.ends_with(' ')) name.remove_suffix(1);
  return name;
}

}  // namespace

Parser::Parser(std::vector<Token> tokens, const ExternalFunctions& externals, int deepest)
    : tokens_(std::move(tokens)), externals_(externals), deepest_(deepest) {}

NodePtr Parser::ParseWhole() {
  NodePtr whole = ParseExpression();
  ExpectEnd("an operator");
  return whole;
}

NodePtr Parser::ParseExpression() {
  Deepen();
  NodePtr expression = ParseChain(Operator::kOr);
  --nesting_;
  return expression;
}

void Parser::Deepen() {
  if (nesting_++ < deepest_) return;
  throw Error(Peek().place,
              "the calculation is nested more than " + std::to_string(deepest_) + " levels deep");
}

bool Parser::AcceptWords(const std::vector<std::u16string_view>& words) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!AtWord(words[i], i)) return false;
  }
  next_ += words.size();
  return true;
}

bool Parser::AtSymbol(std::u16string_view symbol, std::size_t ahead) const {
  return Peek(ahead).kind == Token::Kind::kSymbol && Peek(ahead).text == symbol;
}

bool Parser::AcceptSymbol(std::u16string_view symbol) {
  if (!AtSymbol(symbol)) return false;
  Take();
  return true;
}

void Parser::Expect(std::u16string_view symbol, const std::string& expected) {
  if (!AcceptSymbol(symbol)) FailExpecting(expected);
}

Variable Parser::TakeVariable() {
  if (Peek().kind != Token::Kind::kVariable) FailExpecting("a variable, $name or $$name");
  Variable variable{Lowercase(Take().text), nullptr};
  if (AcceptSymbol(u"[")) {
    variable.repetition = ParseExpression();
    Expect(u"]", "an operator or \"]\"");
  }
  return variable;
}

void Parser::ExpectEnd(const std::string& expected) {
  if (Peek().kind != Token::Kind::kEnd) FailExpecting(expected);
}

const Token& Parser::Peek(std::size_t ahead) const {
  return tokens_[std::min(next_ + ahead, tokens_.size() - 1)];
}

bool Parser::AtWord(std::u16string_view word, std::size_t ahead) const {
  return Peek(ahead).kind == Token::Kind::kName && IsSameName(Peek(ahead).text, word);
}

Token Parser::Take() {
  const Token& token = Peek();
  if (token.kind != Token::Kind::kEnd) ++next_;
  return token;
}

void Parser::FailExpecting(const std::string& expected) const {
  const Token& token = Peek();
  throw Error(token.place, "unexpected " + NameOf(token) + "; expected " + expected);
}

const Operator* Parser::AcceptOperator(int level, Span& place) {
  if (Peek().kind != Token::Kind::kSymbol && Peek().kind != Token::Kind::kName) return nullptr;
  for (const Operator& candidate : kOperators) {
    if (candidate.level != level || !IsSameName(Peek().text, candidate.sign)) continue;
    place = Take().place;
    return &candidate;
  }
  return nullptr;
}

NodePtr Parser::ParseChain(int level) {
  if (level == Operator::kPower) return ParseUnary();
  Chain chain{ParseChain(level + 1), {}};
  Span place;
  while (const Operator* const operation = AcceptOperator(level, place)) {
    NodePtr operand = ParseChain(level + 1);
    chain.links.push_back({operation, place, std::move(operand)});
  }
  return MakeChain(std::move(chain));
  // The analyser loses sight of what the chain owns.
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)

NodePtr Parser::ParseUnary() {
  const bool logical = AtWord(u"not");
  if (!logical && !AtSymbol(u"-") && !AtSymbol(u"+")) return ParsePower();
  Deepen();
  const Token sign = Take();
  NodePtr operand = ParseUnary();
  --nesting_;
  if (sign.text == u"+") return operand;
  return Make(sign.place, Negation{logical, std::move(operand)});
}

NodePtr Parser::ParsePower() {
  Chain chain{ParsePrimary(), {}};
  Span place;
  while (const Operator* const power = AcceptOperator(Operator::kPower, place)) {
    const bool has_sign = AtSymbol(u"-") || AtSymbol(u"+");
    chain.links.push_back({power, place, has_sign ? ParseUnary() : ParsePrimary()});
  }
  return MakeChain(std::move(chain));
}

NodePtr Parser::ParsePrimary() {
  switch (Peek().kind) {
    case Token::Kind::kText: {
      Token token = Take();
      if (token.text.size() > kLongestText) throw Error(token.place, TooLong());
      return Make(token.place, Literal{Text(std::move(token.text))});
    }
    case Token::Kind::kNumber:
      return ParseNumber();
    case Token::Kind::kVariable: {
      const Span place = Peek().place;
      return Make(place, TakeVariable());
    }
    case Token::Kind::kName:
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
  try {
    return Make(token.place, Literal{Decimal::FromText(ToUtf8(token.text)).value_or(Decimal())});
  } catch (const NumberError& error) {
    throw Error(token.place, error.what());
  }
}

NodePtr Parser::ParseName() {
  Token name = Take();
  if (!AtSymbol(u"(")) {
    const auto local = locals_.find(Lowercase(name.text));
    if (local != locals_.end()) return Make(name.place, Local{local->second.back()});
  }
  if (AtSymbol(u"(") && IsSameName(name.text, u"Get")) {
    name = TakeGet(name);
  } else if (styles_) {
    const auto* const style =
        std::find_if(std::begin(kStyles), std::end(kStyles),
                     [&](const auto& known) { return IsSameName(known, name.text); });
    if (style != std::end(kStyles)) return Make(name.place, Literal{Decimal(style - kStyles)});
  }
  const BuiltIn* const function = FindBuiltIn(name.text);
  if (function && function->evaluate) return ParseBuiltIn(name, *function);
  if (function) return ParseLet(name, IsSameName(name.text, u"While"));
  if (const auto index = FindExternal(name.text)) return ParseExternal(name, *index);
  FailUnknown(name);
}

// What stands in the parentheses of Get is part of the function's name.
Token Parser::TakeGet(Token name) {
  Take();
  if (Peek().kind != Token::Kind::kName) FailExpecting("a name, as in Get ( CurrentDate )");
  name.text = u"Get ( " + Take().text + u" )";
  name.place.end = Peek().place.end;
  Expect(u")", "\")\"");
  return name;
}

NodePtr Parser::ParseLet(const Token& name, bool loops) {
  Let let;
  std::vector<std::u16string> names;
  const auto expect_next = [this] { Expect(u";", "an operator or \";\""); };
  Expect(u"(", "\"(\"");
  ParseBindings(let.bindings, names);
  expect_next();
  if (loops) {
    let.test = ParseExpression();
    expect_next();
    ParseBindings(let.rounds, names, &let.bindings);
    expect_next();
  }
  let.result = ParseExpression();
  Expect(u")", "an operator or \")\"");
  Release(names);
  return Make(name.place, std::move(let));
}

// One binding, or a list of them in brackets. Those of rounds set the names that are there already;
// a name that is new is empty in `before` the rounds.
void Parser::ParseBindings(std::vector<Binding>& bindings, std::vector<std::u16string>& names,
                           std::vector<Binding>* before) {
  if (!AcceptSymbol(u"[")) return ParseBinding(bindings, names, before);
  while (!AcceptSymbol(u"]")) {
    ParseBinding(bindings, names, before);
    if (!AcceptSymbol(u";") && !AtSymbol(u"]")) FailExpecting(R"(an operator, ";" or "]")");
  }
}

// A name is in reach from its own value on, where it still means what it meant before.
void Parser::ParseBinding(std::vector<Binding>& bindings, std::vector<std::u16string>& names,
                          std::vector<Binding>* before) {
  if (Peek().kind == Token::Kind::kVariable) {
    Variable variable = TakeVariable();
    Expect(u"=", "\"=\"");
    bindings.push_back({std::move(variable), ParseExpression()});
    return;
  }
  if (Peek().kind != Token::Kind::kName) FailExpecting("a name");
  std::u16string name = Lowercase(Take().text);
  Expect(u"=", "\"=\"");
  NodePtr value = ParseExpression();
  if (before && std::find(names.begin(), names.end(), name) != names.end()) {
    Bind(bindings, locals_[name].back(), std::move(value));
    return;
  }
  if (before) Bind(*before, slots_, nullptr);
  Bind(bindings, slots_, std::move(value));
  locals_[name].push_back(slots_++);
  names.push_back(std::move(name));
}

void Parser::Release(const std::vector<std::u16string>& names) {
  for (const std::u16string& bound : names) {
    const auto local = locals_.find(bound);
    local->second.pop_back();
    if (local->second.empty()) locals_.erase(local);
  }
  slots_ -= names.size();
}

NodePtr Parser::ParseBuiltIn(const Token& name, const BuiltIn& function) {
  const bool outer_styles = std::exchange(styles_, function.takes_styles);
  const std::size_t list_items = function.list_items;
  std::vector<NodePtr> arguments = ParseArguments(
      name, Prototype(function), list_items > 0 ? Arity{0, -1} : ArityOf(function), list_items);
  styles_ = outer_styles;
  if (list_items > 0) CheckLists(name, function, arguments);
  return Make(name.place, BuiltInCall{&function, std::move(arguments)});
}

NodePtr Parser::ParseExternal(const Token& name, std::size_t index) {
  const ExternalFunctions::Signature& known = externals_.signatures()[index];
  const Arity arity{known.minimum_arguments, known.maximum_arguments};
  return Make(name.place, ExternalCall{index, ParseArguments(name, known.prototype, arity)});
}

// A function that needs no argument may stand without parentheses.
std::vector<NodePtr> Parser::ParseArguments(const Token& name, const std::string& prototype,
                                            Arity arity, std::size_t list_items) {
  std::vector<NodePtr> arguments;
  if (!AtSymbol(u"(") && arity.minimum == 0 && list_items == 0) return arguments;
  Expect(u"(", "\"(\" behind the function " + Quoted(name.text));
  if (!AtSymbol(u")")) {
    do {
      arguments.push_back(ParseArgument(list_items));
    } while (AcceptSymbol(u";"));
  }
  Expect(u")", "an operator, \";\" or \")\"");
  const auto count = static_cast<long>(arguments.size());
  if (count < arity.minimum || (arity.maximum >= 0 && count > arity.maximum)) {
    throw Error(name.place,
                ToUtf8(name.text) + " expects " + Parameters(arity.minimum, arity.maximum) +
                    ", not " + std::to_string(count) + (prototype.empty() ? "" : ": " + prototype));
  }
  return arguments;
}

// A value, or a list of values.
NodePtr Parser::ParseArgument(std::size_t list_items) {
  if (list_items == 0 || !AtSymbol(u"[")) return ParseExpression();
  const Span place = Take().place;
  List list;
  do {
    list.items.push_back(ParseExpression());
  } while (AcceptSymbol(u";"));
  Expect(u"]", R"(an operator, ";" or "]")");
  if (list.items.size() == list_items) return Make(place, std::move(list));
  throw Error(place, list_items == 2 ? "expected two texts, [ search ; replacement ]"
                                     : "expected three values, [ path ; value ; type ]");
}

std::optional<std::size_t> Parser::FindExternal(std::u16string_view name) const {
  const auto& signatures = externals_.signatures();
  for (std::size_t i = 0; i < signatures.size(); ++i) {
    const std::u16string known = ToUtf16(WithoutBlanksBehind(signatures[i].name));
    if (IsSameName(known, name)) return i;
  }
  return std::nullopt;
}

void Parser::FailUnknown(const Token& name) const {
  const std::string written = ToUtf8(name.text);
  if (externals_.IsLeftOut(written)) {
    throw Error(name.place, written + ": FileMaker has this, the workbench does not");
  }
  if (AtSymbol(u":") && AtSymbol(u":", 1)) {
    throw Error(name.place, "a field: FileMaker has this, the workbench does not");
  }
  std::vector<std::string> names = BuiltInNames();
  for (const auto& signature : externals_.signatures()) {
    names.emplace_back(WithoutBlanksBehind(signature.name));
  }
  const bool is_function = AtSymbol(u"(") || written.ends_with(')');
  for (const auto& local : locals_) {
    if (!is_function) names.push_back(ToUtf8(local.first));
  }
  const std::string suggestion = Suggestion(written, names);
  if (is_function)
    throw Error(name.place, "there is no function " + Quoted(name.text) + suggestion);
  throw Error(name.place,
              "unknown name " + Quoted(name.text) +
                  (suggestion.empty() ? "; a text stands in double quotes" : suggestion));
}

NodePtr Parse(std::u16string_view text, const ExternalFunctions& externals) {
  return Parser(ReadCalculation(text), externals).ParseWhole();
}

}  // namespace calculation
