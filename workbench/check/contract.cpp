#include "workbench/check/contract.h"

#include <algorithm>

namespace workbench::check {
namespace {

constexpr std::string_view kLoad = "load";
constexpr std::string_view kStart = "initialisation";

constexpr Clause kClauses[] = {
    {"info-plist", "",
     "A bundle holds Contents/Info.plist, by which the system tells it from a folder."},
    {"strings-table", "",
     "A bundle holds a table LANGUAGE.lproj/NAME.strings, from which the plug-in takes its name "
     "and its prototypes in the user's language."},
    {"exports", "",
     "A module exports FMExternCallProc and gFMX_ExternCallPtr alone: any other name may clash "
     "with one of the host or of another plug-in, and is then called in its place."},
    {"load", "",
     "The module is whole, for this machine, and can be loaded with its libraries; it has the "
     "entry point FMExternCallProc. FileMaker leaves out a plug-in that cannot be loaded without a "
     "word."},
    {"initialisation", kLoad,
     "The plug-in answers the initialisation with 51 when it is offered version 200. FileMaker "
     "sends no further message to one that does not."},
    {"version-49", kLoad,
     "Versions below 50 are refused with -1, and nothing is registered: their call block is "
     "another one."},
    {"version-50", kStart, "Version 50 is accepted, the first that the interface has."},
    {"version-255", kStart, "Version 255 is accepted, the last that the interface has."},
    {"version-256", kLoad,
     "Versions above 255 are refused with -1, and nothing is registered: what they mean is not "
     "known yet."},
    {"version-minus-1", kLoad, "A negative version is refused: the field is a signed number."},
    {"version-minus-32768", kLoad,
     "The smallest version is refused: the field is a signed number of 16 bits."},
    {"unknown-messages", kStart,
     "Messages that the plug-in does not know leave the call block as it is, before the "
     "initialisation and after it: later hosts send new ones."},
    {"known-messages", kStart,
     "An initialisation writes the result field alone; a request for a string and a shutdown write "
     "nothing into the call block, which is the host's."},
    {"latest-call", kStart,
     "gFMX_ExternCallPtr is null at first and then the call block of the latest message, whatever "
     "the message: the interface's own functions read it."},
    {"string-128", kStart,
     "String 128, the plug-in's name, is written only if one unit stays free behind its end, never "
     "past the buffer, and never without one: FileMaker offers small buffers on its stack."},
    {"string-129", kStart, "The same of string 129, the description that the preferences show."},
    {"string-131", kStart, "The same of string 131, the options."},
    {"string-absent", kStart,
     "For a string that the plug-in does not have nothing is written: the host reads what is in "
     "the buffer."},
    {"options", kStart,
     "The options string is the plug-in's ID, 1, Y with a Configure button or n, n, Y to be told "
     "of initialisation and shutdown, Y for idle time or n, and n. FileMaker reads each by its "
     "place."},
    {"functions", kStart,
     "The plug-in registers functions while it is initialised: without any it does nothing."},
    {"function-ids", kStart,
     "Every function has an ID of its own: FileMaker drops a second one with the same."},
    {"function-plugin-id", kStart,
     "All functions are registered under one plug-in ID, which stored calculations refer to."},
    {"function-names", kStart,
     "Every function has a name of its own, without regard to case, as calculations find it."},
    {"function-prototypes", kStart,
     "A prototype begins with the function's name and a parenthesis: it is what users pick from "
     "the list and edit."},
    {"function-arguments", kStart,
     "The counts of arguments are not negative, and the largest is not below the smallest: no "
     "calculation could call such a function."},
    {"function-flags", kStart,
     "The flags let some calculation dialog offer the function: otherwise nobody can choose it."},
    {"shutdown", kStart,
     "After the shutdown no function is registered and no value of the interface is left: "
     "FileMaker unloads the module, and would call into nothing."},
    {"second-life", kStart,
     "After a shutdown the plug-in can be initialised again, with the same functions: users switch "
     "plug-ins off and on."},
    {"host-state", kStart,
     "The plug-in leaves the host's locale, signals and working folder as they are, whatever is "
     "called: the host's own code relies on them."},
};

#define OF_A_FUNCTION                                                                             \
  "The function returns without an error or an exception, with a text in its parameter's locale " \
  "or a number, ends its dialogs with button 1, and leaves no value, string or dialog behind: a " \
  "calculation may pass anything. Here it is passed "

constexpr Clause kFunctionClauses[] = {
    {"empty", kStart, OF_A_FUNCTION "an empty text."},
    {"1-unit", kStart, OF_A_FUNCTION "a text of one unit."},
    {"1024-units", kStart, OF_A_FUNCTION "a text of 1024 units, which just fills usual buffers."},
    {"1025-units", kStart, OF_A_FUNCTION "a text of 1025 units, one more than usual buffers hold."},
    {"100000-units", kStart, OF_A_FUNCTION "a text of 100000 units."},
    {"zero-characters", kStart, OF_A_FUNCTION "a text with characters 0 in it."},
    {"lone-surrogates", kStart, OF_A_FUNCTION "a text with halves of surrogate pairs."},
    {"bars", kStart, OF_A_FUNCTION "twenty separators."},
    {"returns", kStart, OF_A_FUNCTION "forty line breaks."},
    {"items", kStart, OF_A_FUNCTION "a text with items on several lines."},
    {"numbers", kStart, OF_A_FUNCTION "a text with numbers out of every range."},
    {"number", kStart, OF_A_FUNCTION "a number in place of a text."},
};

#undef OF_A_FUNCTION

}  // namespace

std::span<const Clause> Clauses() { return kClauses; }

std::span<const Clause> FunctionClauses() { return kFunctionClauses; }

const Clause* FindClause(std::string_view check) {
  const std::size_t slash = check.find('/');
  const bool is_functions = slash != std::string_view::npos && slash > 0;
  const std::span<const Clause> clauses = is_functions ? FunctionClauses() : Clauses();
  const std::string_view name = is_functions ? check.substr(slash + 1) : check;
  const auto clause = std::find_if(clauses.begin(), clauses.end(),
                                   [name](const Clause& each) { return each.check == name; });
  return clause == clauses.end() ? nullptr : &*clause;
}

}  // namespace workbench::check
