#include "workbench/repl/repl.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <memory>
#include <sstream>

#include "calculation/built_ins.h"
#include "workbench/failure.h"
#include "workbench/files.h"
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
  .read FILE     runs a script
  .timer         tells how long each entry takes, or no longer
  exit, quit     leave, as Control-D does
  Tab            completes the name of a function or a variable
  Up, Control-R  go back to what was entered before
  Control-C      gives up what was entered so far, or stops what runs
  Control-D      leaves

Functions:
)";

// What is said to the session itself: a word, in small letters, and what follows it.
struct Command {
  std::string word;
  std::string operand;
};

Command CommandIn(const std::string& line) {
  std::istringstream words(line);
  Command command;
  words >> command.word >> std::ws;
  std::getline(words, command.operand);
  command.operand.erase(command.operand.find_last_not_of(" \t\r") + 1);
  std::transform(command.word.begin(), command.word.end(), command.word.begin(),
                 [](unsigned char sign) { return static_cast<char>(std::tolower(sign)); });
  return command;
}

// Of one word, but for "Get ( NAME )".
bool IsName(const std::string& text) {
  return text.find_first_of(" \t") == std::string::npos || text.starts_with("Get (");
}

// The user's script that every session at the terminal begins with; empty if there is no place.
std::string InitFile() {
  const char* const config = std::getenv("XDG_CONFIG_HOME");
  if (config && *config == '/') return std::string(config) + "/tarvo/init";
  const char* const home = std::getenv("HOME");
  return home && *home == '/' ? std::string(home) + "/.config/tarvo/init" : "";
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
  bool Obey(const Command& command);
  void ReadScript(const std::string& path);
  void RunEntry();
  void PrintHelp(const std::string& name) const;

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
  bool is_whole_ = false;  // the entry, but more of it may have been pasted
  bool has_timer_ = false;
  bool is_left_ = false;
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
  if (at_terminal_ && access(InitFile().c_str(), R_OK) == 0) {
    Reporting([&] { ReadScript(InitFile()); });
  }
  while (!is_left_) {
    if (at_terminal_) ForgetInterruption();
    const Lines::Line line = lines_->Next(entry_ != nullptr);
    if (line.kind == Lines::Line::Kind::kEnd) break;
    if (line.kind == Lines::Line::Kind::kText) {
      Reporting([&] { Take(line.text); });
    } else {
      entry_.reset();
    }
  }
  // Reports a block or bracket that was left open, but a user who leaves knows of it.
  if (entry_ && (is_whole_ || !at_terminal_)) Reporting([&] { RunEntry(); });
  session_.End();
}

// A line that is a whole entry, or the next part of one. What is pasted is one entry.
void Repl::Take(const std::string& line) {
  const std::size_t number = next_line_++;
  if (!entry_ && Obey(CommandIn(line))) return lines_->Remember(line);
  if (!entry_) {
    entry_ = std::make_unique<Entry>(at_terminal_ ? "" : "standard input",
                                     at_terminal_ ? 1 : number, session_);
  }
  entry_->lines += line + "\n";
  entry_->source.Append(line + "\n");
  is_whole_ = entry_->reader.ReadAhead();
  if (is_whole_ && !lines_->HasMore()) RunEntry();
}

void Repl::RunEntry() {
  const std::unique_ptr<Entry> entry = std::move(entry_);
  entry->lines.pop_back();
  if (!entry->lines.empty()) lines_->Remember(entry->lines);
  const auto start = std::chrono::steady_clock::now();
  session_.Run(entry->source, entry->reader);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  if (has_timer_) std::fprintf(stderr, "%.3f s\n", time.count());
}

// False if it is no command.
bool Repl::Obey(const Command& command) {
  if (command.word == "help" && IsName(command.operand)) {
    PrintHelp(command.operand);
  } else if ((command.word == "exit" || command.word == "quit") && command.operand.empty()) {
    is_left_ = true;
  } else if (command.word == ".read" && !command.operand.empty()) {
    ReadScript(command.operand);
  } else if (command.word == ".timer" && command.operand.empty()) {
    has_timer_ = !has_timer_;
  } else {
    return false;
  }
  return true;
}

void Repl::ReadScript(const std::string& path) {
  const std::string bytes = ReadFile(path);
  session_.Run(calculation::Source(path, FromUser(bytes).value_or(bytes)));
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

// On a function, or on all of them.
void Repl::PrintHelp(const std::string& name) const {
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
