#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace workbench {

// The whole of the file `path`; of standard input where `path` is "-". Throws Failure (usage) where
// it cannot be read.
std::string ReadFile(const std::string& path);

// The path of a file or folder that comes with this program: beside it, where it was built, or else
// in the folder where it was installed.
std::string FindCompanion(const std::string& name);

// A file that is written line by line, each of which is there for others at once.
class LineFile {
 public:
  // Truncates the file. Throws Failure (usage) where it cannot be written.
  explicit LineFile(const std::string& path);

  // Throws Failure where the line cannot be written.
  void Write(std::string_view line);

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::string path_;
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace workbench
