#include "workbench/suite/look.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include "workbench/child_program.h"
#include "workbench/failure.h"
#include "workbench/files.h"
#include "workbench/observers.h"

namespace workbench::suite {
namespace {

namespace fs = std::filesystem;

// Draws the difference if there is one.
bool LookTheSame(const std::string& kept, const std::string& came, const std::string& difference) {
  fs::remove(difference);
  if (ReadFile(kept) == ReadFile(came)) return true;
  const std::string painter = FindCompanion(kPainter);
  if (RunChild({painter, "--compare", kept, came, difference}, "")) return true;
  if (fs::exists(difference)) return false;
  throw Failure(Status::kWrong, "cannot compare " + kept + " and " + came + " with " + painter);
}

}  // namespace

std::string DifferenceOfPictures(const std::string& kept, const std::string& came) {
  const auto old_pictures = PicturesIn(kept);
  const auto new_pictures = PicturesIn(came);
  std::string difference;
  for (std::size_t i = 0; i < std::min(old_pictures.size(), new_pictures.size()); ++i) {
    const fs::path drawn = fs::path(came) / (new_pictures[i].stem().string() + "-difference.png");
    if (LookTheSame(old_pictures[i], new_pictures[i], drawn)) continue;
    difference += "dialog " + std::to_string(i + 1) + ": " + drawn.string() + "\n";
  }
  if (old_pictures.size() != new_pictures.size()) {
    difference += std::to_string(old_pictures.size()) + " pictures, now " +
                  std::to_string(new_pictures.size()) + ": " + came + "\n";
  }
  if (difference.empty()) fs::remove_all(came);
  return difference;
}

void KeepPictures(const std::string& kept, const std::string& came) {
  for (const fs::path& picture : PicturesIn(kept)) fs::remove(picture);
  for (const fs::path& picture : PicturesIn(came)) {
    fs::rename(picture, fs::path(kept) / picture.filename());
  }
  fs::remove_all(came);
}

}  // namespace workbench::suite
