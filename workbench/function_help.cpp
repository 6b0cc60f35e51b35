#include "workbench/function_help.h"

#include "calculation/built_ins.h"
#include "calculation/nearest.h"
#include "calculation/unicode.h"
#include "workbench/filemaker_names.h"

namespace workbench {
namespace {

using calculation::ToUtf16;
using calculation::ToUtf8;

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

std::string HelpOn(const calculation::BuiltIn& function) {
  return calculation::Prototype(function) + "\n  " + std::string(function.description) + "\n";
}

}  // namespace

std::span<const PluginFunctionHelp> DescribedPluginFunctions() { return kPluginFunctions; }

std::optional<std::string> FindHelp(std::string_view name,
                                    const std::vector<fmx::host::Function>& registered) {
  const std::u16string wanted = ToUtf16(name);
  if (const auto* function = calculation::FindBuiltIn(wanted)) return HelpOn(*function);
  if (const auto* function = calculation::FindBuiltIn(u"Get ( " + wanted + u" )")) {
    return HelpOn(*function);
  }
  for (const fmx::host::Function& function : registered) {
    if (calculation::IsSameName(function.name, wanted)) return HelpOn(function);
  }
  if (!IsFileMakerFunction(name)) return std::nullopt;
  return std::string(name) + ": FileMaker has this, the workbench does not\n";
}

std::string HelpOnFunction(std::string_view name,
                           const std::vector<fmx::host::Function>& registered) {
  if (const auto help = FindHelp(name, registered)) return *help;
  std::vector<std::string> names = calculation::BuiltInNames();
  for (const fmx::host::Function& function : registered) names.push_back(ToUtf8(function.name));
  return "There is no function " + std::string(name) + calculation::Suggestion(name, names) + "\n";
}

}  // namespace workbench
