#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/corefoundation/encoding.h"
#include "platform/fmwrapper/FMHost.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/check/checks.h"
#include "workbench/check/plugin_under_check.h"
#include "workbench/check/refused_registrations.h"

namespace workbench::check {
namespace {

using fmx::host::Function;
using fmx::host::Functions;

void CheckFunctions(const Bundle& bundle) { RegisteredNames(bundle); }

// Starts the plug-in and expects something of every function that it registers.
void ForEachFunction(const Bundle& bundle, void (*expect)(const Function& function)) {
  Plugin plugin(bundle);
  plugin.Start();
  std::for_each(Functions().begin(), Functions().end(), expect);
}

void CheckIds(const Bundle& bundle) {
  Plugin plugin(bundle);
  plugin.Start();
  for (const std::int16_t id : RefusedRegistrations()) {
    Expect(false, "expected every function ID once, got " + std::to_string(id) + " again");
  }
}

void CheckPluginId(const Bundle& bundle) {
  ForEachFunction(bundle, [](const Function& function) {
    const std::string& first = Functions().front().plugin_id;
    Expect(function.plugin_id == first, "expected one plug-in ID for all functions, got " + first +
                                            " and " + function.plugin_id);
  });
}

// Calculations find a function without regard to case.
std::string Lowercase(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](char sign) {
    return static_cast<char>(sign >= 'A' && sign <= 'Z' ? sign + ('a' - 'A') : sign);
  });
  return name;
}

void CheckNames(const Bundle& bundle) {
  Plugin plugin(bundle);
  plugin.Start();
  std::set<std::string> seen;
  for (const Function& function : Functions()) {
    const std::string name = encoding::ToUtf8(function.name);
    Expect(!name.empty(), "expected every function to have a name, got an empty one");
    Expect(seen.insert(Lowercase(name)).second,
           "expected every name once, got \"" + name + "\" again");
  }
}

void CheckPrototypes(const Bundle& bundle) {
  ForEachFunction(bundle, [](const Function& function) {
    Expect(function.prototype.starts_with(function.name + u"("),
           "expected a prototype that begins with " + Quoted(function.name + u"(") + ", got " +
               Quoted(function.prototype));
  });
}

void CheckArguments(const Bundle& bundle) {
  ForEachFunction(bundle, [](const Function& function) {
    Expect(
        function.minimum_arguments >= 0 && function.maximum_arguments >= function.minimum_arguments,
        "expected sound argument counts of " + Quoted(function.name) + ", got a minimum of " +
            std::to_string(function.minimum_arguments) + " and a maximum of " +
            std::to_string(function.maximum_arguments));
  });
}

// The second byte says which calculation dialogs offer the function.
void CheckFlags(const Bundle& bundle) {
  ForEachFunction(bundle, [](const Function& function) {
    Expect((function.flags & 0xFF00U) != 0, "expected flags that let a calculation dialog offer " +
                                                Quoted(function.name) + ", got " +
                                                std::to_string(function.flags));
  });
}

void ExpectNoneLeft() {
  for (const Function& function : Functions()) {
    Expect(false, "expected no function after the shutdown, got " + Quoted(function.name));
  }
  ExpectEqual("the number of values left after the shutdown", 0, fmx::host::LiveValues());
}

void CheckShutdown(const Bundle& bundle) {
  Plugin plugin(bundle);
  plugin.Start();
  plugin.Send(kFMXT_Shutdown);
  ExpectNoneLeft();
}

using Registered = std::vector<std::tuple<std::int16_t, std::u16string, std::u16string>>;

// A life from initialisation to shutdown in which every function is called.
Registered Live(Plugin& plugin) {
  ExpectEqual("the answer", kReady, plugin.Initialise(kUsualVersion));
  Registered registered;
  for (const Function& function : Functions()) {
    registered.emplace_back(function.id, function.name, function.prototype);
    ExpectEqual("the error code of " + Quoted(function.name), 0, Call(function, u"1|1").error);
  }
  plugin.Send(kFMXT_Shutdown);
  return registered;
}

void CheckSecondLife(const Bundle& bundle) {
  Plugin plugin(bundle);
  const Registered first = Live(plugin);
  Expect(Live(plugin) == first, "expected the same functions in a second life, got others");
}

}  // namespace

std::vector<std::string> RegisteredNames(const Bundle& bundle) {
  Plugin plugin(bundle);
  ExpectEqual("the answer", kReady, plugin.Initialise(kUsualVersion));
  Expect(!Functions().empty(), "expected registered functions, got none");
  std::vector<std::string> names;
  std::transform(Functions().begin(), Functions().end(), std::back_inserter(names),
                 [](const Function& function) { return encoding::ToUtf8(function.name); });
  return names;
}

std::vector<Check> RegistrationChecks() {
  return {{"functions", CheckFunctions},
          {"function-ids", CheckIds},
          {"function-plugin-id", CheckPluginId},
          {"function-names", CheckNames},
          {"function-prototypes", CheckPrototypes},
          {"function-arguments", CheckArguments},
          {"function-flags", CheckFlags},
          {"shutdown", CheckShutdown},
          {"second-life", CheckSecondLife}};
}

}  // namespace workbench::check
