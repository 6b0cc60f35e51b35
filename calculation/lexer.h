#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calculation/source.h"

namespace calculation {

struct Token {
  enum class Kind {
    kText,      // `text` is what the literal says
    kNumber,    // `text` as it was written
    kName,      // of a function, a Let variable, a word operator or a script step
    kVariable,  // `text` begins with $ or $$
    kSymbol,    // `text` is the operator; ≠ ≤ ≥ stand for <> <= >= too
    kEnd,       // behind the last token
  };

  Kind kind = Kind::kEnd;
  Span place;
  std::u16string text;
};

// Reads tokens one by one. Blanks and comments stand between them.
class Lexer {
 public:
  // Quoted names stand in typographic quotes and are texts; in calculations there are none.
  Lexer(std::u16string_view text, std::size_t position, bool has_quoted_names = false)
      : text_(text), position_(position), has_quoted_names_(has_quoted_names) {}

  std::size_t position() const { return position_; }

  // Passes blanks, line breaks and comments; throws Error for a comment without end.
  void SkipBlanks();

  // The same up to the end of the line. A comment may take it to a later line.
  void SkipBlanksInLine();

  void SkipLine();

  bool AtEnd() const { return position_ == text_.size(); }
  bool AtLineEnd() const { return AtEnd() || IsLineBreak(text_[position_]); }
  bool AtSign(char16_t sign) const { return Peek() == sign; }

  // The token that begins here, which is not the end. Throws Error if none does.
  Token TakeToken();

 private:
  char16_t Peek(std::size_t ahead = 0) const;
  bool StartsWith(std::u16string_view start) const;
  bool SkipComment();
  Token TakeSpan(Token::Kind kind, std::size_t end);
  Token TakeText(char16_t closing);
  Token TakeNumber();
  Token TakeVariable();
  Token TakeBracedVariable(std::size_t brace);
  Token TakeSymbol();
  std::size_t NameEnd(std::size_t position) const;

  std::u16string_view text_;
  std::size_t position_;
  bool has_quoted_names_;
};

// All tokens of a calculation, and kEnd.
std::vector<Token> ReadCalculation(std::u16string_view text);

// The tokens of a script's statement, as far as it has been read.
struct Statement {
  std::vector<Token> tokens = {};
  int open = 0;  // brackets and parentheses

  // False if what follows belongs to it whatever it is: something is open, or the last token is an
  // operator.
  bool IsClosed() const;
};

// Reads a statement on, to the end of the line on which it is closed, or else to the end of the
// text. `position` moves behind what was read, also if Error is thrown, so that after Unfinished
// the reading can go on when there is more text.
void ReadStatement(std::u16string_view text, std::size_t& position, Statement& statement,
                   bool has_quoted_names = false);

// Puts kEnd behind the tokens.
void AppendEnd(std::vector<Token>& tokens);

}  // namespace calculation
