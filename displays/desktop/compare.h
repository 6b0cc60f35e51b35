#pragma once

#include <string>

namespace desktop {

// Whether two PNG files look the same: they are of one size, and no pixel differs by more than an
// eye may overlook. If they do not, writes a third one with both beside each other and the second
// again, pale, with what differs in red. Needs neither a screen nor an application. Throws
// std::runtime_error, which says what cannot be read or written.
bool LookTheSame(const std::string& before, const std::string& after,
                 const std::string& difference);

}  // namespace desktop
