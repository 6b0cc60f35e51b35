#include "workbench/function_help.h"

#include <algorithm>

#include "calculation/nearest.h"
#include "calculation/unicode.h"

namespace workbench {
namespace {

using calculation::CompareIgnoringCase;
using calculation::ToUtf16;
using calculation::ToUtf8;

constexpr BuiltInHelp kBuiltIns[] = {
    {"Abs", "number", "the number without its sign"},
    {"Case", "test1 ; result1 ; test2 ; result2 ; ... ; default",
     "the result of the first test that holds; a last result alone is for when none does"},
    {"Char", "code", "the character of a Unicode code point"},
    {"Choose", "number ; result0 ; result1 ; ...", "the result with this number, counted from 0"},
    {"Code", "text", "the Unicode code point of the text's first character"},
    {"Exact", "text1 ; text2", "1 if both texts are the same, upper and lower case too"},
    {"False", "", "0"},
    {"GetAsNumber", "text", "the number that the text's digits make"},
    {"GetAsText", "number", "the number as text"},
    {"GetValue", "list ; number", "one value of a list whose values are separated by ¶"},
    {"If", "test ; result1 ; result2", "result1 if the test holds, else result2"},
    {"Int", "number", "the number without what follows its point"},
    {"IsEmpty", "value", "1 if the value is an empty text"},
    {"Left", "text ; count", "the first characters of a text"},
    {"LeftValues", "list ; count", "the first values of a list, each ended by ¶"},
    {"Length", "text", "how many characters a text has"},
    {"Let", "[ name1 = value1 ; name2 = value2 ; ... ] ; calculation",
     "a calculation in which the names stand for the values; $names are set as variables"},
    {"List", "value1 ; value2 ; ...", "the values that are not empty, separated by ¶"},
    {"Lower", "text", "the text in small letters"},
    {"Max", "number1 ; number2 ; ...", "the greatest of the numbers"},
    {"Middle", "text ; start ; count", "characters of a text from character number start on"},
    {"MiddleValues", "list ; start ; count", "values of a list from value number start on"},
    {"Min", "number1 ; number2 ; ...", "the least of the numbers"},
    {"Mod", "number ; divisor", "what remains of a division, with the divisor's sign"},
    {"PatternCount", "text ; search", "how often a text holds another, in any case"},
    {"Position", "text ; search ; start ; occurrence",
     "where a text holds another, counted from 1, in any case; 0 if it does not"},
    {"Quote", "text", "the text as a literal of a calculation"},
    {"Replace", "text ; start ; count ; replacement",
     "the text with other characters in place of some"},
    {"Right", "text ; count", "the last characters of a text"},
    {"RightValues", "list ; count", "the last values of a list, each ended by ¶"},
    {"Round", "number ; places", "the number rounded to so many places after its point"},
    {"Substitute", "text ; search ; replacement",
     "the text with every occurrence replaced; [ search ; replacement ] pairs do several"},
    {"Trim", "text", "the text without blanks at its ends"},
    {"True", "", "1"},
    {"Upper", "text", "the text in capital letters"},
    {"ValueCount", "list", "how many values a list has"},
};

constexpr PluginFunctionHelp kPluginFunctions[] = {
    {u"TarvoDialog", "a message with up to four buttons and four text, password or pop-up fields"},
    {u"TarvoCustomDialog", "the same, with check boxes and radio buttons as well"},
    {u"TarvoDoListBox", "a list of up to 30 lines to choose one or several from"},
    {u"TarvoAlert", "an alert with an icon and up to three buttons"},
    {u"TarvoSetCaption", "the caption of the window"},
    {u"TarvoSetCustomControls", "the kind of each field of the custom dialog"},
    {u"TarvoPopUps", "the items of the pop-up menus"},
    {u"TarvoFillListBox", "the lines of the list"},
    {u"TarvoPreEnterText", "what the fields start with"},
    {u"TarvoPosition", "where the window stands"},
    {u"TarvoSetFocus", "the field the user types in first"},
    {u"TarvoAllowEscape", "whether the Escape key cancels"},
    {u"TarvoLastValue", "the last dialog's whole result"},
    {u"TarvoLC", "how the last dialog ended"},
    {u"TarvoV1", "the value of the last dialog's first field"},
    {u"TarvoV2", "the value of the last dialog's second field"},
    {u"TarvoV3", "the value of the last dialog's third field"},
    {u"TarvoV4", "the value of the last dialog's fourth field"},
    {u"TarvoDialogVersion", "the plug-in's version"},
};

std::string HelpOn(const fmx::host::Function& function) {
  std::string help = ToUtf8(function.prototype) + "\n";
  for (const auto& [name, description] : kPluginFunctions) {
    if (name == function.name) help += "  " + std::string(description) + "\n";
  }
  return help;
}

std::string HelpOn(const BuiltInHelp& function) {
  const std::string parameters(function.parameters);
  return std::string(function.name) + (parameters.empty() ? "" : " ( " + parameters + " )") +
         "\n  " + std::string(function.description) + "\n";
}

}  // namespace

std::span<const BuiltInHelp> BuiltInFunctions() { return kBuiltIns; }

std::span<const PluginFunctionHelp> DescribedPluginFunctions() { return kPluginFunctions; }

std::string HelpOnFunction(std::string_view name,
                           const std::vector<fmx::host::Function>& registered) {
  const std::u16string wanted = ToUtf16(name);
  std::vector<std::string> names;
  for (const BuiltInHelp& function : kBuiltIns) {
    if (CompareIgnoringCase(ToUtf16(function.name), wanted) == 0) return HelpOn(function);
    names.emplace_back(function.name);
  }
  for (const fmx::host::Function& function : registered) {
    if (CompareIgnoringCase(function.name, wanted) == 0) return HelpOn(function);
    names.push_back(ToUtf8(function.name));
  }
  return "There is no function " + std::string(name) + calculation::Suggestion(name, names) + "\n";
}

}  // namespace workbench
