#include "calculation/lexer.h"

#include <unicode/uchar.h>

#include <algorithm>

#include "calculation/interruption.h"
#include "calculation/syntax.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

constexpr char16_t kParagraph = u'¶';

bool IsAmong(char16_t unit, std::u16string_view units) {
  return units.find(unit) != std::u16string_view::npos;
}

// Every letter of every script counts as one, and what is neither a letter nor a sign of the
// language is left to the name that will not be found.
bool IsNameUnit(char16_t unit) {
  if (unit < 0x80) return u_isalnum(unit) || IsAmong(unit, u"_.~@#%");
  return !IsAmong(unit, u"¶≠≤≥“”„‘’«»×÷−…") && !IsBlankInLine(unit) && unit >= 0xA0 &&
         unit != 0xFFFD;
}

constexpr std::u16string_view kSigns = u"≠≤≥<>=+-*/^&()[];:";
constexpr std::u16string_view kPairs[] = {u"<>≠", u"<=≤", u">=≥"};  // and the sign that is meant

std::string Unexpected(char16_t unit) {
  if (unit == u',') return R"(unexpected ","; expected ";" between arguments)";
  if (IsAmong(unit, u"“”„«»")) return "unexpected typographic quotation mark; expected \"";
  if (IsAmong(unit, u"'‘’")) return "unexpected single quotation mark; expected \"";
  if (unit == u'$') return "expected a variable's name behind \"$\"";
  return "unexpected character; expected a value or an operator";
}

bool IsSymbol(const Token& token, std::u16string_view one, std::u16string_view other) {
  return token.kind == Token::Kind::kSymbol && (token.text == one || token.text == other);
}

// Whether an operand is to follow it.
bool IsOperator(const Token& token) {
  if (token.kind != Token::Kind::kSymbol && token.kind != Token::Kind::kName) return false;
  return IsSameName(token.text, u"not") ||
         std::any_of(kOperators.begin(), kOperators.end(),
                     [&](const Operator& known) { return IsSameName(known.sign, token.text); });
}

}  // namespace

void Lexer::SkipBlanks() {
  for (SkipBlanksInLine(); !AtEnd() && AtLineEnd(); SkipBlanksInLine()) ++position_;
}

void Lexer::SkipBlanksInLine() {
  do {
    while (IsBlankInLine(Peek())) ++position_;
  } while (SkipComment());
}

void Lexer::SkipLine() {
  while (!AtLineEnd()) ++position_;
}

Token Lexer::TakeToken() {
  CheckInterruption();
  const char16_t unit = Peek();
  if (unit == u'"') return TakeText(unit);
  if (unit == u'“' && has_quoted_names_) return TakeText(u'”');
  if (IsDigit(unit) || (unit == u'.' && IsDigit(Peek(1)))) return TakeNumber();
  if (unit == u'$') return TakeVariable();
  if (unit == kParagraph) {
    Token paragraph = TakeSpan(Token::Kind::kText, position_ + 1);
    paragraph.text = u"\r";
    return paragraph;
  }
  if (IsNameUnit(unit)) return TakeSpan(Token::Kind::kName, NameEnd(position_));
  return TakeSymbol();
}

char16_t Lexer::Peek(std::size_t ahead) const {
  return position_ + ahead < text_.size() ? text_[position_ + ahead] : u'\0';
}

bool Lexer::StartsWith(std::u16string_view start) const {
  return text_.substr(position_).starts_with(start);
}

bool Lexer::SkipComment() {
  if (StartsWith(u"//")) {
    SkipLine();
    return true;
  }
  if (!StartsWith(u"/*")) return false;
  const std::size_t end = text_.find(u"*/", position_ + 2);
  if (end == std::u16string_view::npos) {
    throw Unfinished({position_, position_ + 2}, "the comment has no end; expected \"*/\"");
  }
  position_ = end + 2;
  return true;
}

Token Lexer::TakeSpan(Token::Kind kind, std::size_t end) {
  const Span place{position_, end};
  position_ = end;
  return {kind, place, std::u16string(text_.substr(place.begin, end - place.begin))};
}

Token Lexer::TakeText(char16_t closing) {
  Token token{Token::Kind::kText, {position_, position_}, u""};
  ++position_;
  while (!AtEnd() && !AtSign(closing)) {
    char16_t unit = text_[position_++];
    const char16_t next = Peek();
    if (unit == u'\\' && (next == u'"' || next == u'\\' || next == kParagraph)) {
      unit = next;
      ++position_;
    } else if (unit == kParagraph || IsLineBreak(unit)) {
      if (unit == u'\r' && next == u'\n') ++position_;
      unit = u'\r';
    }
    token.text += unit;
  }
  if (AtEnd()) {
    throw Unfinished({token.place.begin, token.place.begin + 1},
                     "the text has no end; expected a closing \"");
  }
  token.place.end = ++position_;
  return token;
}

Token Lexer::TakeNumber() {
  const auto digits_end = [this](std::size_t begin) {
    return std::min(text_.find_first_not_of(u"0123456789", begin), text_.size());
  };
  std::size_t end = digits_end(position_);
  if (end < text_.size() && text_[end] == u'.') end = digits_end(end + 1);
  end += ExponentAt(text_.substr(end)).size();
  if (end < text_.size() && IsNameUnit(text_[end])) {
    throw Error({end, NameEnd(end)}, "unexpected characters in a number; expected an operator");
  }
  return TakeSpan(Token::Kind::kNumber, end);
}

Token Lexer::TakeVariable() {
  const std::size_t name = position_ + (StartsWith(u"$$") ? 2 : 1);
  if (name < text_.size() && text_[name] == u'{') return TakeBracedVariable(name);
  const std::size_t end = NameEnd(name);
  if (end == name) throw Error({position_, name}, Unexpected(u'$'));
  return TakeSpan(Token::Kind::kVariable, end);
}

// ${a name of any characters}
Token Lexer::TakeBracedVariable(std::size_t brace) {
  const std::size_t close = text_.find(u'}', brace);
  if (close == std::u16string_view::npos) {
    throw Unfinished({position_, brace + 1}, "the variable's name has no end; expected \"}\"");
  }
  const std::u16string dollars(text_.substr(position_, brace - position_));
  Token token = TakeSpan(Token::Kind::kVariable, close + 1);
  token.text = dollars + token.text.substr(dollars.size() + 1, close - brace - 1);
  return token;
}

Token Lexer::TakeSymbol() {
  for (const std::u16string_view pair : kPairs) {
    if (!StartsWith(pair.substr(0, 2))) continue;
    Token token = TakeSpan(Token::Kind::kSymbol, position_ + 2);
    token.text = pair.substr(2);
    return token;
  }
  if (!IsAmong(Peek(), kSigns)) throw Error({position_, position_ + 1}, Unexpected(Peek()));
  return TakeSpan(Token::Kind::kSymbol, position_ + 1);
}

std::size_t Lexer::NameEnd(std::size_t position) const {
  while (position < text_.size() && IsNameUnit(text_[position])) ++position;
  return position;
}

std::vector<Token> ReadCalculation(std::u16string_view text) {
  std::vector<Token> tokens;
  Lexer lexer(text, 0);
  for (lexer.SkipBlanks(); !lexer.AtEnd(); lexer.SkipBlanks()) tokens.push_back(lexer.TakeToken());
  AppendEnd(tokens);
  return tokens;
}

bool Statement::IsClosed() const {
  return open == 0 && !tokens.empty() && !IsOperator(tokens.back());
}

void ReadStatement(std::u16string_view text, std::size_t& position, Statement& statement,
                   bool has_quoted_names) {
  Lexer lexer(text, position, has_quoted_names);
  while (true) {
    const bool closed = statement.IsClosed();
    closed ? lexer.SkipBlanksInLine() : lexer.SkipBlanks();
    position = lexer.position();
    if (lexer.AtEnd() || (closed && lexer.AtLineEnd())) return;
    const Token& token = statement.tokens.emplace_back(lexer.TakeToken());
    if (IsSymbol(token, u"(", u"[")) ++statement.open;
    if (IsSymbol(token, u")", u"]")) statement.open = std::max(statement.open - 1, 0);
    position = lexer.position();
  }
}

void AppendEnd(std::vector<Token>& tokens) {
  const std::size_t end = tokens.empty() ? 0 : tokens.back().place.end;
  tokens.push_back({Token::Kind::kEnd, {end, end}, u""});
}

}  // namespace calculation
