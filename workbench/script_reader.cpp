#include <algorithm>
#include <span>
#include <utility>

#include "calculation/lexer.h"
#include "calculation/unicode.h"
#include "workbench/filemaker_names.h"
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
    "expected a calculation, Set Variable, If, Else If, Else, End If, Loop, Exit Loop If, End "
    "Loop, Perform Script, Exit Script, Halt Script or Show Custom Dialog";

// Steps that are part of many scripts and change nothing here.
constexpr const char* kIdleSteps[] = {"Allow User Abort", "Set Error Capture"};

// Begins a script that others perform.
constexpr const char* kScript = "Script";

constexpr const char* kOwnSteps[] = {"Set Variable", "If",          "Else If",
                                     "Else",         "End If",      "Loop",
                                     "Exit Loop If", "End Loop",    "Perform Script",
                                     "Exit Script",  "Halt Script", "Show Custom Dialog"};

bool IsAmong(std::span<const char* const> names, std::string_view name) {
  return std::any_of(names.begin(), names.end(), [name](const char* known) {
    return calculation::IsSameName(calculation::ToUtf16(known), calculation::ToUtf16(name));
  });
}

// From the first token to the last.
Span PlaceOf(const std::vector<Token>& tokens) {
  return {tokens.front().place.begin, tokens.back().place.end};
}

// What stands in a line before its bracket.
std::string StepNameAt(const std::u16string& text, std::size_t position) {
  const std::size_t end = std::min(text.find_first_of(u"[\r\n", position), text.size());
  std::string name = calculation::ToUtf8(text.substr(position, end - position));
  name.erase(name.find_last_not_of(" \t") + 1);
  return name;
}

// Names and then a bracket, but no step that is known.
void RefuseUnknownStep(const Parser& parser) {
  std::size_t words = 0;
  while (parser.Peek(words).kind == Token::Kind::kName) ++words;
  if (words == 0 || !parser.AtSymbol(u"[", words)) return;
  throw Error({parser.Peek().place.begin, parser.Peek(words - 1).place.end},
              std::string("unknown script step; ") + kSteps);
}

// A label of what follows it, as in Value: 1.
bool AcceptLabel(Parser& parser, const std::vector<std::u16string_view>& words) {
  return parser.AtSymbol(u":", words.size()) && parser.AcceptWords(words) &&
         parser.AcceptSymbol(u":");
}

void EndStep(Parser& parser) {
  parser.Expect(u"]", "an operator or \"]\"");
  parser.ExpectEnd("the end of the line");
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

// Passes what is no step. False at the end of the script.
bool ScriptReader::SkipToStep() {
  while (true) {
    Lexer lexer(text_, position_);
    for (lexer.SkipBlanks(); lexer.AtSign(u'#'); lexer.SkipBlanks()) lexer.SkipLine();
    position_ = lexer.position();
    if (lexer.AtEnd()) return false;
    const std::string name = StepNameAt(text_, position_);
    if (IsAmong(kOwnSteps, name) || !IsFileMakerStep(name)) return name != kScript;
    if (!IsAmong(kIdleSteps, name)) {
      throw Error({position_, position_ + calculation::ToUtf16(name).size()},
                  name + ": FileMaker has this, the workbench does not");
    }
    lexer.SkipLine();
    position_ = lexer.position();
  }
}

void ScriptReader::SkipName() {
  if (SkipToStep() || position_ == text_.size()) return;
  calculation::ReadStatement(text_, position_, true);
}

bool ScriptReader::GoToScript(std::u16string_view name) {
  for (position_ = text_.find(u"Script"); position_ < text_.size();
       position_ = text_.find(u"Script", position_ + 1)) {
    const bool begins_line = position_ == 0 || calculation::IsLineBreak(text_[position_ - 1]);
    if (!begins_line || StepNameAt(text_, position_) != kScript) continue;
    std::size_t end = position_;
    const std::vector<Token> tokens = calculation::ReadStatement(text_, end, true);
    if (tokens.size() < 4 || !calculation::IsSameName(tokens[2].text, name)) continue;
    position_ = end;
    return true;
  }
  return false;
}

std::optional<ScriptReader::Line> ScriptReader::NextLine() {
  if (!SkipToStep()) return std::nullopt;
  const bool names_script = StepNameAt(text_, position_) == "Perform Script";
  std::vector<Token> tokens = calculation::ReadStatement(text_, position_, names_script);
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
  const bool is_loop = parser.Peek(1).kind == Token::Kind::kEnd || parser.AtSymbol(u"[", 1);
  if (is_loop && parser.AcceptWords({u"loop"})) return ReadLoop(line);
  if (parser.AcceptWords({u"exit", u"script"})) return ReadExitScript(line);
  if (parser.AcceptWords({u"halt", u"script"})) return {Step::Kind::kHaltScript, line.place};
  if (parser.AcceptWords({u"perform", u"script"})) return ReadPerformScript(line);
  if (parser.AcceptWords({u"show", u"custom", u"dialog"})) return ReadShowCustomDialog(line);
  RefuseUnknownStep(parser);
  return ReadCalculation(line);
}

Step ScriptReader::ReadSetVariable(Line& line) {
  Parser& parser = line.parser;
  Step step{Step::Kind::kSetVariable, line.place};
  parser.Expect(u"[", "\"[\"");
  step.variable = parser.TakeVariable();
  parser.Expect(u";", "\";\" and the value");
  AcceptLabel(parser, {u"value"});
  step.calculations.push_back(parser.ParseExpression());
  EndStep(parser);
  return step;
}

Step ScriptReader::ReadExitScript(Line& line) {
  Parser& parser = line.parser;
  Step step{Step::Kind::kExitScript, line.place};
  if (!parser.AcceptSymbol(u"[")) return step;
  if (!AcceptLabel(parser, {u"text", u"result"})) AcceptLabel(parser, {u"result"});
  if (!parser.AtSymbol(u"]")) step.calculations.push_back(parser.ParseExpression());
  EndStep(parser);
  return step;
}

Step ScriptReader::ReadPerformScript(Line& line) {
  Parser& parser = line.parser;
  Step step{Step::Kind::kPerformScript, line.place};
  parser.Expect(u"[", "\"[\"");
  if (AcceptLabel(parser, {u"specified"})) {
    if (!parser.AcceptWords({u"from", u"list"})) parser.AcceptWords({u"by", u"name"});
    parser.Expect(u";", "\";\" and the script's name");
  }
  step.calculations.push_back(parser.ParseExpression());
  if (parser.AcceptSymbol(u";")) {
    AcceptLabel(parser, {u"parameter"});
    if (!parser.AtSymbol(u"]")) step.calculations.push_back(parser.ParseExpression());
  }
  EndStep(parser);
  return step;
}

Step ScriptReader::ReadShowCustomDialog(Line& line) {
  Parser& parser = line.parser;
  Step step{Step::Kind::kShowCustomDialog, line.place};
  parser.Expect(u"[", "\"[\"");
  AcceptLabel(parser, {u"title"});
  step.calculations.push_back(parser.ParseExpression());
  if (parser.AcceptSymbol(u";")) {
    AcceptLabel(parser, {u"message"});
    step.calculations.push_back(parser.ParseExpression());
  }
  if (parser.AtSymbol(u";")) {
    throw Error(parser.Peek().place,
                "more than a title and a message: FileMaker has this, the workbench does not");
  }
  EndStep(parser);
  return step;
}

Step ScriptReader::ReadIf(Line& line) {
  Step step{Step::Kind::kIf, line.place};
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
  Step step{Step::Kind::kLoop, line.place};
  if (line.parser.AcceptSymbol(u"[")) {  // how it saves records
    AcceptLabel(line.parser, {u"flush"});
    for (const auto* when : {u"always", u"minimum", u"defer"}) line.parser.AcceptWords({when});
    EndStep(line.parser);
  }
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
  Step step{Step::Kind::kExitLoopIf, line.place};
  step.calculations.push_back(ReadTest(line));
  return step;
}

Step ScriptReader::ReadCalculation(Line& line) {
  Step step{Step::Kind::kCalculation, line.place};
  step.calculations.push_back(line.parser.ParseWhole());
  return step;
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
