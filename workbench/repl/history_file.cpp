#include "workbench/repl/history_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace workbench {
namespace {

namespace fs = std::filesystem;

// Empty if the user has none.
fs::path StateFolder() {
  const char* const state = std::getenv("XDG_STATE_HOME");
  if (state && *state == '/') return state;
  const char* const home = std::getenv("HOME");
  return home && *home == '/' ? fs::path(home) / ".local/state" : fs::path();
}

std::string ToLine(const std::string& entry) {
  std::string line;
  for (const char sign : entry) {
    if (sign == '\n') {
      line += "\\n";
    } else if (sign == '\\') {
      line += "\\\\";
    } else {
      line += sign;
    }
  }
  return line + "\n";
}

std::string FromLine(const std::string& line) {
  std::string entry;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool is_escape = line[i] == '\\' && i + 1 < line.size();
    if (is_escape) ++i;
    entry += is_escape && line[i] == 'n' ? '\n' : line[i];
  }
  return entry;
}

// Only its owner may read it. Errors are ignored.
void Write(const std::string& path, int how, const std::string& text) {
  const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | how, S_IRUSR | S_IWUSR);
  if (fd < 0) return;
  [[maybe_unused]] const ssize_t written = write(fd, text.data(), text.size());
  close(fd);
}

}  // namespace

HistoryFile::HistoryFile() {
  const fs::path state = StateFolder();
  if (state.empty()) return;
  std::error_code error;
  fs::create_directories(state / "tarvo", error);
  path_ = state / "tarvo/history";
}

std::vector<std::string> HistoryFile::Load() const {
  std::vector<std::string> entries;
  std::ifstream file(path_);
  for (std::string line; std::getline(file, line);) entries.push_back(FromLine(line));
  if (entries.size() <= kLongest) return entries;
  entries.erase(entries.begin(), entries.end() - kLongest);
  std::string text;
  for (const std::string& entry : entries) text += ToLine(entry);
  Write(path_, O_TRUNC, text);
  return entries;
}

void HistoryFile::Append(const std::string& entry) const { Write(path_, O_APPEND, ToLine(entry)); }

}  // namespace workbench
