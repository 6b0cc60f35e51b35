#pragma once

// The checks. Each is a function of a few lines that throws ContractBroken if the plug-in breaks
// the host's contract.

#include <functional>
#include <string>
#include <vector>

#include "platform/fmwrapper/FMHost.h"
#include "workbench/check/plugin_under_check.h"

namespace workbench::check {

struct Check {
  std::string name;  // short, and the same in every version of this program
  std::function<void(const Bundle& bundle)> body;
};

std::vector<Check> BundleChecks();        // the bundle's files
std::vector<Check> MessageChecks();       // versions, messages and the call block
std::vector<Check> StringChecks();        // the plug-in's strings
std::vector<Check> RegistrationChecks();  // what is registered, and when
std::vector<Check> HostChecks();          // what the plug-in leaves of its host

// What a bundle registers: its functions' names in their order. Throws ContractBroken if it
// registers none.
std::vector<std::string> RegisteredNames(const Bundle& bundle);

// Each function with each kind of parameter.
std::vector<Check> CallChecks(const std::vector<std::string>& names);

// Calls a function with one text, as a calculation does.
fmx::host::Outcome Call(const fmx::host::Function& function, std::u16string text);

}  // namespace workbench::check
