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
using calculation::Statement;
using calculation::Token;
using calculation::Unfinished;

namespace {

constexpr std::size_t kDeepestBlock = 100;

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

// The steps that can continue or end a block.
std::string ExpectedIn(const Step& block) {
  if (block.kind == Step::Kind::kLoop) return "End Loop";
  return block.branches.back().test ? "Else If, Else or End If" : "End If";
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
  if (!ready_.empty()) {
    Step step = std::move(ready_.front());
    ready_.pop_front();
    return step;
  }
  if (error_) throw Error(*error_);
  more_may_follow_ = false;
  needs_more_ = false;
  return ReadNext();
}

bool ScriptReader::ReadAhead() {
  if (error_) return true;
  more_may_follow_ = true;
  needs_more_ = false;
  try {
    while (std::optional<Step> step = ReadNext()) ready_.push_back(std::move(*step));
  } catch (const Unfinished&) {
    return false;
  } catch (const Error& error) {  // nothing more can mend it
    error_ = error;
  }
  return !needs_more_;
}

std::optional<Step> ScriptReader::ReadNext() {
  while (std::optional<Line> line = NextLine()) {
    std::optional<Step> step = line->word == Word::kNone ? Begin(*line) : Continue(*line);
    if (!step) continue;
    if (open_.empty()) return step;
    open_.back().step.branches.back().steps.push_back(std::move(*step));
  }
  if (open_.empty() || needs_more_) return std::nullopt;
  if (more_may_follow_) return needs_more_ = true, std::nullopt;
  const Step& block = open_.back().step;
  throw Unfinished(block.place, "this block has no end; expected " + ExpectedIn(block));
}

// The step that begins in the line, unless it is a block.
std::optional<Step> ScriptReader::Begin(Line& line) {
  Step step = ReadStep(line);
  if (step.branches.empty()) return step;
  if (open_.size() == kDeepestBlock) {
    throw Error(step.place,
                "blocks are nested more than " + std::to_string(kDeepestBlock) + " levels deep");
  }
  open_.push_back({std::move(step)});
  return std::nullopt;
}

// The block that ends with the line, unless it goes on.
std::optional<Step> ScriptReader::Continue(Line& line) {
  const bool is_loops = line.word == Word::kEndLoop;
  if (open_.empty()) {
    throw Error(line.place,
                std::string("there is no ") + (is_loops ? "Loop" : "If") + " that this belongs to");
  }
  Step& block = open_.back().step;
  const bool goes_on = line.word == Word::kElse || line.word == Word::kElseIf;
  if (is_loops != (block.kind == Step::Kind::kLoop) || (goes_on && !block.branches.back().test)) {
    throw Error(line.place, "unexpected step; expected " + ExpectedIn(block));
  }
  if (goes_on) {
    block.branches.push_back({line.word == Word::kElseIf ? ReadTest(line) : nullptr, {}});
    return std::nullopt;
  }
  if (is_loops && !open_.back().has_exit) {
    throw Error(block.place, "this loop never ends; expected Exit Loop If [ … ] in it");
  }
  Step ended = std::move(block);
  open_.pop_back();
  return ended;
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
  Statement name;
  calculation::ReadStatement(text_, position_, name, true);
}

bool ScriptReader::GoToScript(std::u16string_view name) {
  for (position_ = text_.find(u"Script"); position_ < text_.size();
       position_ = text_.find(u"Script", position_ + 1)) {
    const bool begins_line = position_ == 0 || calculation::IsLineBreak(text_[position_ - 1]);
    if (!begins_line || StepNameAt(text_, position_) != kScript) continue;
    std::size_t end = position_;
    Statement header;
    calculation::ReadStatement(text_, end, header, true);
    const std::vector<Token>& tokens = header.tokens;
    if (tokens.size() < 3 || !calculation::IsSameName(tokens[2].text, name)) continue;
    position_ = end;
    return true;
  }
  return false;
}

// Whether the text, comment or name in which the statement ended still has no end. Only what has
// come since then is looked at.
bool ScriptReader::IsStillOpen() {
  if (!unclosed_) return false;
  const char16_t opening = text_[unclosed_->place().begin];
  const char16_t closing = opening == u'“' ? u'”' : opening == u'$' ? u'}' : opening;
  std::size_t at = std::exchange(looked_at_, text_.size());
  for (; (at = text_.find(closing, at)) < text_.size(); ++at) {
    std::size_t escapes = 0;
    while (text_[at - escapes - 1] == u'\\') ++escapes;
    if (closing == u'"' ? escapes % 2 == 0 : closing != u'/' || text_[at - 1] == u'*') break;
  }
  if (at < text_.size()) unclosed_.reset();
  return unclosed_.has_value();
}

// Reads the statement to its end.
void ScriptReader::ReadOn() {
  if (IsStillOpen()) throw Unfinished(*unclosed_);
  const std::u16string_view text = text_;
  try {
    if (position_ == 0) SkipName();
    if (statement_.tokens.empty() && !SkipToStep()) return;
    const std::size_t begin =
        statement_.tokens.empty() ? position_ : statement_.tokens.front().place.begin;
    const bool names_script = StepNameAt(text_, begin) == "Perform Script";
    calculation::ReadStatement(text, position_, statement_, names_script);
  } catch (const Unfinished& unclosed) {
    unclosed_ = unclosed;
    looked_at_ = text.size();
    throw;
  }
}

std::optional<ScriptReader::Line> ScriptReader::NextLine() {
  ReadOn();
  if (statement_.tokens.empty()) return std::nullopt;
  needs_more_ = more_may_follow_ && !statement_.IsClosed();
  if (needs_more_) return std::nullopt;
  std::vector<Token> tokens = std::move(std::exchange(statement_, {}).tokens);
  const Span place = PlaceOf(tokens);
  calculation::AppendEnd(tokens);
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
  return step;
}

Step ScriptReader::ReadLoop(Line& line) {
  Step step{Step::Kind::kLoop, line.place};
  if (line.parser.AcceptSymbol(u"[")) {  // how it saves records
    AcceptLabel(line.parser, {u"flush"});
    for (const auto* when : {u"always", u"minimum", u"defer"}) line.parser.AcceptWords({when});
    EndStep(line.parser);
  }
  step.branches.emplace_back();
  return step;
}

// The innermost loop is the one that it leaves.
Step ScriptReader::ReadExitLoopIf(Line& line) {
  const auto loop = std::find_if(open_.rbegin(), open_.rend(), [](const OpenBlock& block) {
    return block.step.kind == Step::Kind::kLoop;
  });
  if (loop == open_.rend()) throw Error(line.place, "there is no Loop that this belongs to");
  loop->has_exit = true;
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

}  // namespace workbench
