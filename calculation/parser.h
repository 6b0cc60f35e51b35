#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calculation/built_ins.h"
#include "calculation/external_functions.h"
#include "calculation/lexer.h"
#include "calculation/syntax.h"

namespace calculation {

// Reads a calculation, or the calculations of a script's step, from tokens. Every operation throws
// Error if the tokens say something else than what it expects.
//
// From the weakest to the strongest: or xor; and; comparison; &; + -; * /; not and signs; ^.
class Parser {
 public:
  // More levels of parentheses, calls and signs than this are refused, whatever the stack would
  // bear.
  static constexpr int kDeepestNesting = 200;

  // `tokens` ends with kEnd. `externals` must outlive the parser.
  Parser(std::vector<Token> tokens, const ExternalFunctions& externals,
         int deepest = kDeepestNesting);

  // An expression, and nothing behind it.
  NodePtr ParseWhole();

  NodePtr ParseExpression();

  // The parts of script steps. Words are given in small letters.
  bool AcceptWords(const std::vector<std::u16string_view>& words);
  bool AtSymbol(std::u16string_view symbol, std::size_t ahead = 0) const;
  bool AcceptSymbol(std::u16string_view symbol);
  void Expect(std::u16string_view symbol, const std::string& expected);
  Variable TakeVariable();
  void ExpectEnd(const std::string& expected);
  const Token& Peek(std::size_t ahead = 0) const;

 private:
  bool AtWord(std::u16string_view word, std::size_t ahead = 0) const;
  Token Take();
  [[noreturn]] void FailExpecting(const std::string& expected) const;
  const Operator* AcceptOperator(int level, Span& place);

  void Deepen();
  NodePtr ParseChain(int level);
  NodePtr ParseUnary();
  NodePtr ParsePower();
  NodePtr ParsePrimary();
  NodePtr ParseNumber();
  NodePtr ParseName();
  Token TakeGet(Token name);
  NodePtr ParseLet(const Token& name, bool loops);
  void ParseBindings(std::vector<Binding>& bindings, std::vector<std::u16string>& names,
                     std::vector<Binding>* before = nullptr);
  void ParseBinding(std::vector<Binding>& bindings, std::vector<std::u16string>& names,
                    std::vector<Binding>* before);
  void Release(const std::vector<std::u16string>& names);
  NodePtr ParseBuiltIn(const Token& name, const BuiltIn& function);
  NodePtr ParseExternal(const Token& name, std::size_t index);
  std::vector<NodePtr> ParseArguments(const Token& name, const std::string& prototype, Arity arity,
                                      std::size_t list_items = 0);
  NodePtr ParseArgument(std::size_t list_items);

  std::optional<std::size_t> FindExternal(std::u16string_view name) const;
  [[noreturn]] void FailUnknown(const Token& name) const;

  std::vector<Token> tokens_;
  const ExternalFunctions& externals_;
  std::size_t next_ = 0;
  int nesting_ = 0;
  int deepest_;
  bool styles_ = false;                                        // the names of styles are in reach
  std::map<std::u16string, std::vector<std::size_t>> locals_;  // slots by name, the innermost last
  std::size_t slots_ = 0;
};

// Reads a whole calculation.
NodePtr Parse(std::u16string_view text, const ExternalFunctions& externals);

}  // namespace calculation
