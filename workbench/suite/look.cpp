#include "workbench/suite/look.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include "workbench/child_program.h"
#include "workbench/files.h"
#include "workbench/observers.h"

namespace workbench::suite {
namespace {

namespace fs = std::filesystem;

// What is different, in a few words and as a picture; nothing if they look the same.
std::string Compare(const std::string& kept, const std::string& came,
                    const std::string& difference) {
  fs::remove(difference);
  if (ReadFile(kept) == ReadFile(came)) return "";
  const std::string painter = FindCompanion(kPainter);
  if (RunChild({painter, "--compare", kept, came, difference}, "")) return "";
  return fs::exists(difference) ? difference : kept + " cannot be compared with " + came;
}

}  // namespace

std::string DifferenceOfPictures(const std::string& kept, const std::string& came) {
  const auto old_pictures = PicturesIn(kept);
  const auto new_pictures = PicturesIn(came);
  std::string difference;
  for (std::size_t i = 0; i < std::min(old_pictures.size(), new_pictures.size()); ++i) {
    const fs::path drawn = fs::path(came) / (new_pictures[i].stem().string() + "-difference.png");
    const std::string found = Compare(old_pictures[i], new_pictures[i], drawn);
    if (!found.empty()) difference += "dialog " + std::to_string(i + 1) + ": " + found + "\n";
  }
  if (old_pictures.size() != new_pictures.size()) {
    difference += std::to_string(old_pictures.size()) + " pictures, now " +
                  std::to_string(new_pictures.size()) + ": " + came + "\n";
  }
  if (difference.empty()) fs::remove_all(came);
  return difference;
}

void KeepPictures(const std::string& kept, const std::string& came) {
  const std::vector<fs::path> pictures = PicturesIn(came);
  for (const fs::path& picture : pictures) {
    fs::rename(picture, fs::path(kept) / picture.filename());
  }
  for (const fs::path& picture : PicturesIn(kept)) {  // of dialogs that are no more
    const bool is_new = std::any_of(pictures.begin(), pictures.end(), [&](const fs::path& other) {
      return other.filename() == picture.filename();
    });
    if (!is_new) fs::remove(picture);
  }
  fs::remove_all(came);
}

}  // namespace workbench::suite
