#pragma once

#include <cstdint>
#include <vector>

namespace workbench::check {

// The IDs of functions whose registration FileMaker refused. A plug-in does not look at that
// answer, and the function is then missing where its ID was taken before.
std::vector<std::int16_t>& RefusedRegistrations();

}  // namespace workbench::check
