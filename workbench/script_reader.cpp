#include <utility>

#include "calculation/lexer.h"
#include "workbench/script.h"

namespace workbench {

using calculation::Error;
using calculation::Lexer;
using calculation::NodePtr;
using calculation::Parser;
using calculation::Span;
using calculation::Token;

namespace {

constexpr int kDeepestBlock = 100;

constexpr const char* kSteps =
    "expected a calculation, Set Variable, If, Else If, Else, End If, Loop, Exit Loop If or End "
    "Loop";

// From the first token to the last.
Span PlaceOf(const std::vector<Token>& tokens) {
  return {tokens.front().place.begin, tokens.back().place.end};
}

// Names and then a bracket, but no step that is known.
void RefuseUnknownStep(const Parser& parser) {
  std::size_t words = 0;
  while (parser.Peek(words).kind == Token::Kind::kName) ++words;
  if (words == 0 || !parser.AtSymbol(u"[", words)) return;
  throw Error({parser.Peek().place.begin, parser.Peek(words - 1).place.end},
              std::string("unknown script step; ") + kSteps);
}

}  // namespace

struct ScriptReader::Line {
  Span place;
  Parser parser;
  Word word = Word::kNone;  // how it continues or ends a block; the parser is past these words
};

std::optional<Step> ScriptReader::Next() {
  std::optional<Line> line = NextLine();
  if (!line) return std::nullopt;
  return ReadStep(*line);
}

std::optional<ScriptReader::Line> ScriptReader::NextLine() {
  Lexer lexer(text_, position_);
  for (lexer.SkipBlanks(); lexer.AtSign(u'#'); lexer.SkipBlanks()) lexer.SkipLine();
  position_ = lexer.position();
  if (lexer.AtEnd()) return std::nullopt;
  std::vector<Token> tokens = calculation::ReadStatement(text_, position_);
  const Span place = PlaceOf(tokens);
  Line line{place, Parser(std::move(tokens), externals_)};
  if (line.parser.AcceptWords({u"else", u"if"})) {
    line.word = Word::kElseIf;
  } else if (line.parser.AcceptWords({u"else"})) {
    line.word = Word::kElse;
  } else if (line.parser.AcceptWords({u"end", u"if"})) {
    line.word = Word::kEndIf;
  } else if (line.parser.AcceptWords({u"end", u"loop"})) {
    line.word = Word::kEndLoop;
  }
  if (line.word != Word::kNone && line.word != Word::kElseIf) {
    line.parser.ExpectEnd("the end of the line");
  }
  return line;
}

Step ScriptReader::ReadStep(Line& line) {
  switch (line.word) {
    case Word::kElseIf:
    case Word::kElse:
    case Word::kEndIf:
      throw Error(line.place, "there is no If that this belongs to");
    case Word::kEndLoop:
      throw Error(line.place, "there is no Loop that this belongs to");
    case Word::kNone:
      break;
  }
  Parser& parser = line.parser;
  if (parser.AcceptWords({u"set", u"variable"})) return ReadSetVariable(line);
  if (parser.AcceptWords({u"exit", u"loop", u"if"})) return ReadExitLoopIf(line);
  if (parser.AtSymbol(u"[", 1) && parser.AcceptWords({u"if"})) return ReadIf(line);
  if (parser.Peek(1).kind == Token::Kind::kEnd && parser.AcceptWords({u"loop"})) {
    return ReadLoop(line);
  }
  RefuseUnknownStep(parser);
  return ReadCalculation(line);
}

Step ScriptReader::ReadSetVariable(Line& line) {
  Parser& parser = line.parser;
  Step step{Step::Kind::kSetVariable, line.place, nullptr, u"", {}};
  parser.Expect(u"[", "\"[\"");
  step.variable = parser.TakeVariable();
  parser.Expect(u";", "\";\" and the value");
  // FileMaker prints a script's steps like this: Set Variable [ $x ; Value: 1 ].
  if (parser.AtSymbol(u":", 1) && parser.AcceptWords({u"value"})) parser.AcceptSymbol(u":");
  step.calculation = parser.ParseExpression();
  parser.Expect(u"]", "an operator or \"]\"");
  parser.ExpectEnd("the end of the line");
  return step;
}

Step ScriptReader::ReadIf(Line& line) {
  Step step{Step::Kind::kIf, line.place, nullptr, u"", {}};
  step.branches.push_back({ReadTest(line), {}});
  while (true) {
    const bool is_last = step.branches.back().test == nullptr;
    const std::string expected = is_last ? "End If" : "Else If, Else or End If";
    Line end = ReadBlock(line.place, expected, step.branches.back().steps);
    if (end.word == Word::kEndIf) return step;
    if (is_last || end.word == Word::kEndLoop) {
      throw Error(end.place, "unexpected step; expected " + expected);
    }
    step.branches.push_back({end.word == Word::kElseIf ? ReadTest(end) : nullptr, {}});
  }
}

Step ScriptReader::ReadLoop(Line& line) {
  Step step{Step::Kind::kLoop, line.place, nullptr, u"", {}};
  step.branches.emplace_back();
  const bool outer_has_exit = std::exchange(has_exit_, false);
  ++loops_;
  const Line end = ReadBlock(line.place, "End Loop", step.branches.back().steps);
  --loops_;
  if (end.word != Word::kEndLoop) throw Error(end.place, "unexpected step; expected End Loop");
  if (!std::exchange(has_exit_, outer_has_exit)) {
    throw Error(line.place, "this loop never ends; expected Exit Loop If [ … ] in it");
  }
  return step;
}

Step ScriptReader::ReadExitLoopIf(Line& line) {
  if (loops_ == 0) throw Error(line.place, "there is no Loop that this belongs to");
  has_exit_ = true;
  return {Step::Kind::kExitLoopIf, line.place, ReadTest(line), u"", {}};
}

Step ScriptReader::ReadCalculation(Line& line) {
  return {Step::Kind::kCalculation, line.place, line.parser.ParseWhole(), u"", {}};
}

// [ TEST ], to the end of the line.
NodePtr ScriptReader::ReadTest(Line& line) {
  line.parser.Expect(u"[", "\"[\"");
  NodePtr test = line.parser.ParseExpression();
  line.parser.Expect(u"]", "an operator or \"]\"");
  line.parser.ExpectEnd("the end of the line");
  return test;
}

// The steps up to the line that ends the block or its branch, which is returned.
ScriptReader::Line ScriptReader::ReadBlock(Span opening, const std::string& end,
                                           std::vector<Step>& steps) {
  if (++depth_ > kDeepestBlock) {
    throw Error(opening,
                "blocks are nested more than " + std::to_string(kDeepestBlock) + " levels deep");
  }
  while (std::optional<Line> line = NextLine()) {
    if (line->word != Word::kNone) {
      --depth_;
      return std::move(*line);
    }
    steps.push_back(ReadStep(*line));
  }
  throw calculation::Unfinished(opening, "this block has no end; expected " + end);
}

}  // namespace workbench
