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
#include "workbench/user_text.h"

namespace workbench {
namespace {

constexpr const char* kHelp =
    R"(Enter a calculation to see its result, or a step of a script:
  Set Variable [ $NAME ; CALCULATION ]
  If [ TEST ]    Else If [ TEST ]    Else    End If
  Loop    Exit Loop If [ TEST ]    End Loop
  Exit Script [ RESULT ]    Show Custom Dialog [ TITLE ; MESSAGE ]
It takes several lines while brackets, quotes or blocks are open or an operator ends a line.

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
  void Reporting(const std::function<void()>& work);
  void PrintHelp(const std::string& line) const;

  // The lines that belong together, so far.
  struct Entry {
    Entry(const std::string& name, std::size_t first_line, const Session& session)
        : source(name, "", first_line), reader(source.text(), session.functions()) {}

    std::string lines;
    calculation::Source source;
    ScriptReader reader;
  };

  bool at_terminal_;
  Session session_;
  std::unique_ptr<Lines> lines_;
  std::unique_ptr<Entry> entry_;
  std::size_t next_line_ = 1;  // its number, counted from the session's start
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
    const Lines::Line line = lines_->Next(entry_ != nullptr);
    if (line.kind == Lines::Line::Kind::kEnd) break;
    if (line.kind == Lines::Line::Kind::kText) {
      Reporting([&] { Take(line.text); });
    } else {
      entry_.reset();
    }
  }
  // Reports a block or bracket that was left open.
  if (!at_terminal_ && entry_) session_.Run(entry_->source, entry_->reader);
  session_.End();
}

// A line that is a whole entry, or the next part of one.
void Repl::Take(const std::string& line) {
  if (!entry_ && IsHelp(line)) {
    ++next_line_;
    lines_->Remember(line);
    return PrintHelp(line);
  }
  if (!entry_) {
    entry_ = std::make_unique<Entry>(at_terminal_ ? "" : "standard input",
                                     at_terminal_ ? 1 : next_line_, session_);
  }
  ++next_line_;
  entry_->lines += line + "\n";
  entry_->source.Append(line + "\n");
  if (!entry_->reader.ReadAhead()) return;
  const std::unique_ptr<Entry> entry = std::move(entry_);
  entry->lines.pop_back();
  if (!entry->lines.empty()) lines_->Remember(entry->lines);
  session_.Run(entry->source, entry->reader);
}

// Does `work`. At a terminal, errors are reported and the session goes on.
void Repl::Reporting(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& error) {
    if (!at_terminal_) throw;
    entry_.reset();
    std::fprintf(stderr, "%s\n", ForUser(error.what()).c_str());
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
