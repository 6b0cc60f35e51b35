#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace workbench {

// The whole of the file `path`; of standard input if `path` is "-". Throws Failure (usage) if it
// cannot be read.
std::string ReadFile(const std::string& path);

// The path of a file or folder that comes with this program: beside it, as in the build folder, or
// else in the folder for such files of an installation.
std::string FindCompanion(const std::string& name);

// A file that is written line by line. Other programs can read each line at once.
class LineFile {
 public:
  // Truncates the file; "-" is standard output. Throws Failure (usage) if it cannot be written.
  explicit LineFile(const std::string& path);

  // Throws Failure if the line cannot be written.
  void Write(std::string_view line);

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::string path_;
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace workbench
