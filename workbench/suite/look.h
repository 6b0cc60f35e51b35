#pragma once

#include <string>

namespace workbench::suite {

// How the pictures of a run's dialogs differ from those that were kept, a line for each; nothing if
// they look the same. The difference is drawn beside the run's pictures, which go away if there is
// none.
std::string DifferenceOfPictures(const std::string& kept, const std::string& came);

// The run's pictures take the place of those that were kept.
void KeepPictures(const std::string& kept, const std::string& came);

}  // namespace workbench::suite
