#include "workbench/repl/repl.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <memory>
#include <sstream>

#include "calculation/built_ins.h"
#include "workbench/failure.h"
#include "workbench/function_help.h"
#include "workbench/interruption.h"
#include "workbench/output.h"
#include "workbench/repl/edited_lines.h"
#include "workbench/repl/piped_lines.h"
#include "workbench/session.h"

namespace workbench {
namespace {

constexpr const char* kHelp =
    R"(Enter a calculation to see its result, or a step of a script:
  Set Variable [ $NAME ; CALCULATION ]
  If [ TEST ]    Else If [ TEST ]    Else    End If
  Loop    Exit Loop If [ TEST ]    End Loop
  Exit Script [ RESULT ]    Show Custom Dialog [ TITLE ; MESSAGE ]
It may take several lines while brackets, quotes or blocks are open.

  help FUNCTION  explains a function
  Tab            completes the name of a function or a variable
  Up, Control-R  go back to what was entered before
  Control-C      gives up what was entered so far
  Control-D      leaves

Functions:
)";

bool IsHelp(const std::string& line) {
  std::istringstream words(line);
  std::string help, name, more;
  words >> help >> name >> more;
  return help == "help" && (more.empty() || (name == "Get" && more == "("));
}

std::string SessionHelp(const PluginFunctions& functions) {
  std::string help = kHelp;
  for (const auto& function : functions.signatures()) help += "  " + function.name + "\n";
  for (const std::string& name : calculation::BuiltInNames()) help += "  " + name + "\n";
  return help;
}

class Repl {
 public:
  Repl(const Options& options, bool at_terminal);

  void Run();

 private:
  void Take(const std::string& line);
  void Reporting(const std::function<void()>& work) const;
  void PrintHelp(const std::string& line) const;
  calculation::Source Entry() const;

  bool at_terminal_;
  Session session_;
  std::unique_ptr<Lines> lines_;
  std::string entry_;           // the lines that belong together, so far
  std::size_t first_line_ = 1;  // of the entry, counted from the session's start
};

Repl::Repl(const Options& options, bool at_terminal)
    : at_terminal_(at_terminal), session_(options) {
  if (at_terminal) {
    lines_ = std::make_unique<EditedLines>([this] { return session_.Names(); });
  } else {
    lines_ = std::make_unique<PipedLines>();
  }
}

void Repl::Run() {
  while (true) {
    if (at_terminal_) ForgetInterruption();
    const Lines::Line line = lines_->Next(!entry_.empty());
    if (line.kind == Lines::Line::Kind::kEnd) break;
    if (line.kind == Lines::Line::Kind::kText) {
      Take(line.text);
    } else {
      entry_.clear();
    }
  }
  if (!at_terminal_) session_.Run(Entry());  // reports a block or bracket that was left open
  session_.End();
}

// A line that is a whole entry, or the next part of one.
void Repl::Take(const std::string& line) {
  const bool is_help = entry_.empty() && IsHelp(line);
  entry_ += line + "\n";
  const calculation::Source entry = Entry();
  if (!is_help && !session_.IsWhole(entry)) return;
  first_line_ += static_cast<std::size_t>(std::count(entry_.begin(), entry_.end(), '\n'));
  entry_.pop_back();
  if (!entry_.empty()) lines_->Remember(entry_);
  entry_.clear();
  Reporting([&] { is_help ? PrintHelp(line) : session_.Run(entry); });
}

// Does `work`. At a terminal, errors are reported and the session goes on.
void Repl::Reporting(const std::function<void()>& work) const {
  try {
    work();
  } catch (const std::exception& error) {
    if (!at_terminal_) throw;
    std::fprintf(stderr, "%s\n", error.what());
  }
}

// "help FUNCTION", or "help" alone.
void Repl::PrintHelp(const std::string& line) const {
  std::istringstream words(line);
  std::string help, name;
  words >> help >> std::ws;
  std::getline(words, name);
  name.erase(name.find_last_not_of(" \t\r") + 1);
  const PluginFunctions& functions = session_.functions();
  Print(name.empty() ? SessionHelp(functions) : HelpOnFunction(name, functions.functions()));
}

calculation::Source Repl::Entry() const {
  return {at_terminal_ ? "" : "standard input", entry_, at_terminal_ ? 1 : first_line_};
}

}  // namespace

void RunRepl(const Options& options) {
  const bool at_terminal = isatty(STDIN_FILENO) && isatty(STDERR_FILENO);
  HeedInterruptions();
  Repl repl(options, at_terminal);
  if (at_terminal) {
    std::fputs("A session with the plug-in: \"help\" explains, Control-D leaves.\n", stderr);
  }
  repl.Run();
}

}  // namespace workbench
