#pragma once

#include <cstdint>
#include <vector>

namespace workbench::check {

// The IDs of functions whose registration FileMaker refused. A plug-in does not look at the
// returned code, so a function whose ID was taken already is silently missing.
std::vector<std::int16_t>& RefusedRegistrations();

}  // namespace workbench::check
