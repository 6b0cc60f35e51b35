#include "workbench/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "calculation/nearest.h"
#include "workbench/failure.h"

namespace workbench {
namespace {

constexpr int kAnyNumber = -1;

struct Command {
  const char* name;
  const char* operands;
  int minimum_operands;
  int maximum_operands;
  const char* summary;
  const char* details;
};

constexpr Command kCommands[] = {
    {"eval", "CALCULATION...", 1, kAnyNumber, "evaluate calculations and print their results",
     R"(Evaluates each calculation and prints its result, one a line. They share one life of the
plug-in, one list of answers and their $variables. - is a calculation on standard input.

--button-status makes the exit status 11 to 14 if the last result begins with button 1 to 4, and 10
if it says E, for Escape.

Examples:
  tarvo eval 'TarvoDialogVersion ( "" )'
  tarvo eval 'TarvoDialog ( "0|Ready?|Yes|No" )'
  tarvo eval --answer 'enter 1 Ann; press 1' 'TarvoDialog ( "1|Your name|OK||||Name" )'
  tarvo eval --arg who "$USER" 'TarvoDialog ( "0|Hello, " & $who )'
  tarvo --json eval 'If ( TarvoLC ( "" ) = "E" ; "cancelled" ; TarvoV1 ( "" ) )'
)"},
    {"run", "FILE", 1, 1, "run a script of calculations; - is standard input",
     R"(Runs a script, one step a line, or several lines while brackets or quotes are open or an
operator is the last of a line:
  CALCULATION    its result is printed
  Set Variable [ $NAME ; CALCULATION ]
  If [ TEST ]    Else If [ TEST ]    Else    End If
  Loop    Exit Loop If [ TEST ]    End Loop
Lines that begin with # or // are comments.

Examples:
  tarvo run form.tarvo
  tarvo run form.tarvo --answers form.answers --describe dialogs.json
  echo 'TarvoDialog ( "0|Hello" )' | tarvo run -
)"},
    {"repl", "", 0, 0, "try calculations one by one, with history and completion",
     R"(Evaluates what is entered as soon as it is whole: calculations, and the steps of scripts (see
"tarvo help run"). All of it shares one life of the plug-in and its $variables. Tab completes
names, "help" and "help FUNCTION" explain, Control-C gives up what was entered so far, and
Control-D leaves. Errors do not end the session. What was entered is kept for the next one in
$XDG_STATE_HOME/tarvo/history (~/.local/state/tarvo/history).

If standard input is no terminal, results alone are printed, each as soon as its
calculation has been read, and the first error ends the session as it ends a script.

Examples:
  tarvo repl
  tarvo repl --answers form.answers
  echo 'help Substitute' | tarvo repl
)"},
    {"explain", "CALCULATION", 1, 1, "say what each item of a dialog function's text means",
     R"(Evaluates a calculation, or runs the script in a file, and says of each dialog function that is
called what each item of its text means and does, with what presets add, and then what looks
wrong. Nothing is shown and nobody answers, unless answers are given.

Examples:
  tarvo explain 'TarvoDialog ( "2|Enter the name|OK|Cancel|||First|Last" )'
  tarvo explain form.tarvo --answers form.answers
  tarvo --json explain form.tarvo --strict
)"},
    {"preview", "FILE", 1, 1, "show a script's dialogs in a window while you write it",
     R"(Shows the dialogs of a script in a window, each with what looks wrong beside it, and draws them anew
whenever the file is saved. An error in the script stands there in their place. Nothing is answered,
unless answers are given: a dialog that nobody answers leaves the result of the one before. Close the
window or press Control-C to end it. Without a screen --screenshot draws the dialogs into a folder,
once, and standard error says the advice.

Examples:
  tarvo preview form.tarvo
  tarvo preview form.tarvo --answers form.answers
  tarvo preview form.tarvo --screenshot pictures
)"},
    {"test", "[PATH...]", 0, kAnyNumber, "run scripts as tests of their dialogs",
     R"(A test is a script NAME.tarvo with its results in NAME.expected beside it, its answers in
NAME.answers, and, if they are there, the descriptions of its dialogs in NAME.dialogs (--describe)
and their pictures in the folder NAME.pictures (--screenshot). Runs those in a folder (this one if
none is named), each in a process of its own, and prints which passed. A test fails on another
result, an answer that is missing, left over or was recorded for another dialog, another
description and another look, whose difference is drawn in NAME.pictures.new. --record plays a
script to you and keeps what happened as a test; --update keeps what is different.

Examples:
  tarvo test
  tarvo test examples/list.tarvo --junit results.xml
  tarvo test --only '*order*' --jobs 4
  tarvo test --record form.tarvo
)"},
    {"functions", "", 0, 0, "list the functions that the plug-in registers",
     R"(Prints the ID, the name and the prototype of every function, in order of registration.

Examples:
  tarvo functions
  tarvo --json --language de functions
)"},
    {"info", "", 0, 0, "show what the plug-in says of itself",
     R"(Prints the plug-in's name, its description, its options and its answer to being initialised.

Examples:
  tarvo info
  tarvo --plugin Other.fmplugin info
)"},
    {"check", "[BUNDLE...]", 0, kAnyNumber,
     "check bundles against FileMaker's contract with plug-ins",
     R"(Loads a bundle as FileMaker does, in a process of its own for each check, and says of each
whether it passed, failed, crashed, timed out or was skipped, with what was written to standard
error. The last line counts those that passed, and those that failed, crashed or timed out; the
exit status is 1 if there are any of the latter.

Examples:
  tarvo check
  tarvo check Other.fmplugin
  tarvo check --only 'function*' --json
  tarvo check --failed --junit results.xml One.fmplugin Two.fmplugin
  tarvo check --explain string-128
)"},
    {"help", "[NAME]", 0, kAnyNumber, "explain a command, a function, an answer or a check",
     R"(Examples:
  tarvo help
  tarvo help eval
  tarvo help TarvoDialog
  tarvo help enter
  tarvo help string-128
)"},
};

constexpr const char* kExamples =
    R"(Examples:
  tarvo eval 'TarvoDialog ( "0|Hello" )'
  tarvo eval --answer 'press 2' 'TarvoDialog ( "0|Ready?|Yes|No" )'
  tarvo run form.tarvo --answers form.answers --screenshot pictures
  tarvo functions
)";

// What CLI11 fills in besides Options.
struct Words {
  std::string display = "auto";
  std::vector<std::string> arguments;  // for help alone; TakeOption takes them as they are
  bool version = false;
};

// Each option belongs to one of these groups, whose names say which commands use it.
constexpr const char* kGeneral = "Options";
constexpr const char* kOfLives =
    "Options of eval, run, repl, explain, preview, test, functions and info";
constexpr const char* kOfUsers = "Options of eval, run, repl, test, functions and info";
constexpr const char* kOfCalculations = "Options of eval, run, repl, explain and preview";
constexpr const char* kOfResults = "Options of eval, run and repl";
constexpr const char* kOfChoices = "Options of eval, run, repl, explain, preview, test and check";
constexpr const char* kOfTests = "Options of test";
constexpr const char* kOfTestsAndChecks = "Options of test and check";
constexpr const char* kOfChecks = "Options of check";

bool Uses(const std::string& command, const std::string& group) {
  if (group == kGeneral || command == "help") return true;
  return (group + " ").find(" " + command + (command == "info" || command == "check" ? " " : "")) !=
         std::string::npos;
}

void AddGeneralOptions(CLI::App& app, Options& options, Words& words) {
  app.set_help_flag("-h,--help", "show this help")->group(kGeneral);
  app.option_defaults()->group(kGeneral);
  app.add_flag("--version", words.version, "show the program's version");
  app.add_option("--plugin", options.plugin, "the plug-in bundle to load")->type_name("BUNDLE");
  app.add_option("--language", options.language, "the language of the plug-in's texts")
      ->type_name("LANG");
  app.add_flag("--json", options.json, "print results as JSON");
  app.add_option("--timeout", options.timeout,
                 "close a dialog without an answer; end a test or check (10)")
      ->check(CLI::Range(0.001, 86400.0).description(""))
      ->type_name("SECONDS");
}

void AddOptionsOfLives(CLI::App& app, Options& options, Words& words) {
  app.option_defaults()->group(kOfLives);
  app.add_option("--interface-version", options.interface_version,
                 "the version that the plug-in is offered (200)")
      ->check(CLI::Range(-32768, 32767).description(""))
      ->type_name("N");
  app.add_option("--answers", options.answers_file, "answer dialogs from a file, one a line")
      ->type_name("FILE");
  app.add_option("--answer", options.answers, "the same from a text, separated by ;")
      ->allow_extra_args(false)
      ->option_text("TEXT");
  app.add_option("--passwords", options.passwords, "passwords for a recording, one a line")
      ->type_name("FILE");
  app.add_flag("--strict", options.strict,
               "fail if answers are left over or for another dialog, or on advice");
  app.add_option("--describe", options.describe, "write every dialog as it opened, as JSON")
      ->type_name("FILE");
  app.add_option("--screenshot", options.screenshot, "draw every dialog as it opened")
      ->type_name("DIR");
  app.add_option("--record", options.record, "write what the user did, as answers")
      ->type_name("FILE");
  app.add_flag("--record-passwords", options.record_passwords, "record passwords as they are");
  app.add_flag("--record-numbers", options.record_numbers, "record numbers in place of names");
  app.option_defaults()->group(kOfUsers);
  app.add_option("--display", words.display, "auto, desktop, terminal or scripted")
      ->check(CLI::IsMember({"auto", "desktop", "terminal", "scripted"}).description(""))
      ->type_name("KIND");
}

void AddOptionsOfCalculations(CLI::App& app, Options& options, Words& words) {
  app.option_defaults()->group(kOfCalculations);
  app.add_option("--arg", words.arguments, "set the variable $NAME to a text")
      ->expected(2)
      ->option_text("NAME VALUE");
  app.add_option("--args-json", options.arguments_file, "set a variable for each key of an object")
      ->type_name("FILE");
  app.add_flag("--advise", options.advise, "say what looks wrong with dialogs");
  app.add_option("--except", options.except,
                 "leave out the advice whose name holds, or matches, this")
      ->allow_extra_args(false)
      ->option_text("PATTERN");
  app.option_defaults()->group(kOfChoices);
  app.add_option("--only", options.only,
                 "the tests, checks or advice whose name holds, or matches, this")
      ->allow_extra_args(false)
      ->option_text("PATTERN");
  app.option_defaults()->group(kOfResults);
  app.add_flag("--fields", options.fields, "print each item of a result on a line of its own");
  app.add_flag("--button-status", options.button_status,
               "exit with 10 and the last result's button");
}

void AddOptionsOfChecks(CLI::App& app, Options& options) {
  app.option_defaults()->group(kOfTests);
  app.add_option("--jobs", options.jobs, "how many tests run at a time")
      ->check(CLI::Range(1, 1000).description(""))
      ->type_name("N");
  app.add_flag("--update", options.update, "keep other results, dialogs and pictures as expected");
  app.add_flag("--tap", options.tap, "print results as Test Anything Protocol");
  app.option_defaults()->group(kOfTestsAndChecks);
  app.add_option("--exclude", options.exclude, "leave out the tests or checks whose name does")
      ->allow_extra_args(false)
      ->option_text("PATTERN");
  app.add_flag("--failed", options.failed_only, "print what failed alone");
  app.add_option("--junit", options.junit, "write the results as JUnit XML too")->type_name("FILE");
  app.option_defaults()->group(kOfChecks);
  app.add_flag("--list", options.list, "print the names of the checks that would run");
  app.add_option("--explain", options.explain, "say what a check holds a plug-in to, and why")
      ->type_name("NAME");
  app.add_flag("--in-process", options.in_process, "run checks in this process, for a debugger");
}

void AddOptions(CLI::App& app, Options& options, Words& words) {
  AddGeneralOptions(app, options, words);
  AddOptionsOfLives(app, options, words);
  AddOptionsOfCalculations(app, options, words);
  AddOptionsOfChecks(app, options);
}

// Whether the word is -LETTER or --NAME, alone or before a "=". Any other word that begins with a
// minus sign is a calculation, such as -1 or -$x.
bool LooksLikeOption(const std::string& word) {
  const std::string name = word.substr(0, word.find('='));
  const auto is_letter = [](char sign) {
    return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z');
  };
  if (name.size() == 2) return name[0] == '-' && is_letter(name[1]);
  return name.size() > 2 && name.starts_with("--") && is_letter(name[2]) &&
         std::all_of(name.begin() + 2, name.end(), [&](char sign) {
           return is_letter(sign) || sign == '-' || (sign >= '0' && sign <= '9');
         });
}

std::vector<std::string> OptionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) names.push_back(option->get_name());
  return names;
}

[[noreturn]] void RefuseUsage(const std::string& reason) {
  throw Failure(Status::kUsage, reason + "\nTry \"tarvo help\".");
}

const CLI::Option& FindOption(const CLI::App& app, const std::string& name) {
  const CLI::Option* option = app.get_option_no_throw(name);
  if (option) return *option;
  RefuseUsage("unknown option " + name + calculation::Suggestion(name, OptionNames(app)));
}

const Command& FindCommand(const std::string& name) {
  const auto* command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                     [&](const Command& known) { return name == known.name; });
  if (command != std::end(kCommands)) return *command;
  std::vector<std::string> names;
  for (const Command& known : kCommands) names.emplace_back(known.name);
  RefuseUsage("unknown command " + name + calculation::Suggestion(name, names));
}

// Appends the option at `words[i]`, and its argument if it takes one, to `option_words`; `i` is
// then that of the last word taken.
void TakeOption(const std::vector<std::string>& words, std::size_t& i, const CLI::App& app,
                Options& options, std::vector<std::string>& option_words) {
  const std::string& word = words[i];
  const std::size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  const CLI::Option& option = FindOption(app, name);
  if (option.get_items_expected_min() == 2) {  // whatever they begin with
    if (equals != std::string::npos || i + 2 >= words.size()) {
      RefuseUsage(name + " expects NAME and VALUE");
    }
    options.arguments.emplace_back(words[i + 1], words[i + 2]);
    i += 2;
    return;
  }
  if (option.get_items_expected_min() == 0) {
    option_words.push_back(word);
    return;
  }
  option_words.push_back(name);
  if (equals != std::string::npos) {
    option_words.push_back(word.substr(equals + 1));
  } else if (++i < words.size()) {
    option_words.push_back(words[i]);
  } else {
    RefuseUsage(name + " expects " + option.get_type_name());
  }
}

// Takes the command and its operands into `options`, and returns the options among the words, each
// followed by its argument, whatever that begins with. CLI11 does not see the operands, since it
// would split those that begin with a minus sign or a bracket.
std::vector<std::string> TakeOperands(const std::vector<std::string>& words, const CLI::App& app,
                                      Options& options) {
  std::vector<std::string> option_words;
  bool operands_only = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!operands_only && words[i] == "--") {
      operands_only = true;
    } else if (!operands_only && LooksLikeOption(words[i])) {
      TakeOption(words, i, app, options, option_words);
    } else if (options.command.empty()) {
      options.command = FindCommand(words[i]).name;
    } else {
      options.operands.push_back(words[i]);
    }
  }
  return option_words;
}

void CheckOperands(const Options& options) {
  const Command& command = FindCommand(options.command);
  const auto count = static_cast<int>(options.operands.size());
  if (count < command.minimum_operands) {
    RefuseUsage(options.command + " expects " + command.operands);
  }
  if (command.maximum_operands >= 0 && count > command.maximum_operands) {
    RefuseUsage(options.command + " does not expect " +
                options.operands[static_cast<std::size_t>(command.maximum_operands)]);
  }
}

// A preview in a window runs its script again and again, with nobody who answers and nothing that
// would be left of the runs. One that is drawn into a folder is a run like others.
void CheckOptionsOfWindow(const CLI::App& app) {
  for (const char* name :
       {"--strict", "--describe", "--record", "--record-passwords", "--record-numbers"}) {
    if (app.get_option(name)->count() == 0) continue;
    RefuseUsage("preview does not use " + std::string(name) + " without --screenshot");
  }
  for (const char* name : {"--answers", "--args-json", "--passwords"}) {
    const CLI::Option& option = *app.get_option(name);
    if (option.count() == 0 || option.as<std::string>() != "-") continue;
    RefuseUsage("preview reads " + std::string(name) +
                " again and again, which standard input cannot be");
  }
}

// An option that is left without effect would not do what its user means.
void CheckOptionsOf(const Options& options, const CLI::App& app) {
  const auto refuse = [&](const std::string& name, const std::string& group) {
    const std::string users = group.substr(group.find(" of ") + 4);
    RefuseUsage(options.command + " does not use " + name + ", an option of " + users);
  };
  if (!options.arguments.empty() && !Uses(options.command, kOfCalculations)) {
    refuse("--arg", kOfCalculations);
  }
  for (const CLI::Option* option : app.get_options()) {
    if (option->count() > 0 && !Uses(options.command, option->get_group())) {
      refuse(option->get_name(), option->get_group());
    }
  }
  if (options.command == "preview" && !options.screenshot) CheckOptionsOfWindow(app);
  if (options.command == "check" && options.plugin && !options.operands.empty()) {
    RefuseUsage("check is given two bundles: --plugin " + *options.plugin + " and " +
                options.operands.front());
  }
}

DisplayChoice ChoiceOf(const std::string& word) {
  if (word == "desktop") return DisplayChoice::kDesktop;
  if (word == "terminal") return DisplayChoice::kTerminal;
  return word == "scripted" ? DisplayChoice::kScripted : DisplayChoice::kAuto;
}

// Of a command, or of all if it is empty.
std::string OptionsHelp(const std::string& command) {
  Options options;
  Words words;
  CLI::App app;
  AddOptions(app, options, words);
  for (CLI::Option* option : app.get_options()) {
    if (!command.empty() && !Uses(command, option->get_group())) option->group("");
  }
  CLI::Formatter formatter;
  formatter.column_width(34);
  return formatter.make_groups(&app, CLI::AppFormatMode::Normal);
}

std::string CommandList() {
  std::string list;
  for (const Command& command : kCommands) {
    std::string line = std::string("  ") + command.name + " " + command.operands;
    line.resize(std::max<std::size_t>(line.size() + 1, 34), ' ');
    list += line + command.summary + "\n";
  }
  return list;
}

}  // namespace

Options ParseCommandLine(const std::vector<std::string>& words) {
  Options options;
  Words filled;
  CLI::App app;
  AddOptions(app, options, filled);
  std::vector<std::string> option_words = TakeOperands(words, app, options);
  try {
    std::reverse(option_words.begin(), option_words.end());
    app.parse(std::move(option_words));
  } catch (const CLI::CallForHelp&) {
    options.operands.assign(options.command.empty() ? 0 : 1, options.command);
    options.command = "help";
    return options;
  } catch (const CLI::ParseError& error) {
    RefuseUsage(error.what());
  }
  options.display = ChoiceOf(filled.display);
  if (filled.version) {
    options.command = "version";
  } else if (words.empty()) {
    options.command = "help";
  } else if (options.command.empty()) {
    RefuseUsage("expected a command");
  } else {
    CheckOperands(options);
    CheckOptionsOf(options, app);
  }
  return options;
}

bool IsCommand(const std::string& name) {
  return std::any_of(std::begin(kCommands), std::end(kCommands),
                     [&](const Command& known) { return name == known.name; });
}

std::string HelpText(const std::string& command_name) {
  if (command_name.empty()) {
    return "Usage: tarvo [options] COMMAND ...\n\n"
           "Tries, previews and tests a FileMaker plug-in's dialogs without FileMaker.\n\n"
           "Commands:\n" +
           CommandList() + OptionsHelp("") + "\n" + kExamples;
  }
  const Command& command = FindCommand(command_name);
  return std::string("Usage: tarvo [options] ") + command.name + " " + command.operands + "\n\n" +
         command.details + OptionsHelp(command_name);
}

std::string VersionText() { return "tarvo " TARVO_VERSION "\n"; }

}  // namespace workbench
