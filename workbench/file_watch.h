#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace workbench {

// Notices when files are saved. It watches their folders, since editors write a new file and give
// it the name of the old one; of a symbolic link, the folders of the link and of what it leads to.
class FileWatch {
 public:
  enum class News { kNone, kGone, kSaved };

  // Throws Failure (usage) if a folder cannot be watched.
  explicit FileWatch(std::vector<std::string> paths);
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;
  ~FileWatch();

  // Can be read when there may be news.
  int descriptor() const { return descriptor_; }

  // What has happened since the last call: a file was saved, or else was taken away, as some
  // editors do before they save it. Throws Failure (usage) if a folder is gone, and no other has
  // its name.
  News Take();

 private:
  void Watch();
  bool IsWatched(int folder) const;

  std::vector<std::string> paths_;
  int descriptor_;
  std::set<std::pair<int, std::string>> files_;  // the number of the folder, and the name in it
};

}  // namespace workbench
