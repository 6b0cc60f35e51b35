#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace workbench {

// What was entered, kept in a file between sessions: an entry a line, in which \n stands for a line
// break and \\ for a backslash. If the file cannot be read or written, nothing is kept.
class HistoryFile {
 public:
  // More entries than this are not kept for long.
  static constexpr std::size_t kLongest = 1000;

  // The file is $XDG_STATE_HOME/tarvo/history, by default ~/.local/state/tarvo/history.
  HistoryFile();

  // The latest entries, the oldest first. The others leave the file.
  std::vector<std::string> Load() const;

  // The entry is in the file at once: the plug-in may bring the program down, and other sessions
  // append to the file too.
  void Append(const std::string& entry) const;

 private:
  std::string path_;
};

}  // namespace workbench
