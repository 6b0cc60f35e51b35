#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/fmwrapper/FMHost.h"

namespace workbench {

// What a function of the project's own plug-in does: a plug-in registers names and prototypes
// alone.
struct PluginFunctionHelp {
  std::u16string_view name;
  std::string_view description;
};

std::span<const PluginFunctionHelp> DescribedPluginFunctions();

// What there is to know of a function, registered or built in; nothing if there is none of that
// name.
std::optional<std::string> FindHelp(std::string_view name,
                                    const std::vector<fmx::host::Function>& registered);

// What there is to know of a function, registered or built in: its prototype and what it does. The
// name is looked up without regard to case; if there is none, the text says so and proposes the
// nearest.
std::string HelpOnFunction(std::string_view name,
                           const std::vector<fmx::host::Function>& registered);

}  // namespace workbench
