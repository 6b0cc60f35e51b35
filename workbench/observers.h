#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/carbon/display.h"
#include "workbench/files.h"
#include "workbench/observing_display.h"

namespace workbench {

// Writes every dialog's description as it opened, one JSON object a line.
class DescriptionLog : public Observer {
 public:
  explicit DescriptionLog(const std::string& path) : file_(path) {}

  void Opened(const display::Description& dialog) override;
  void Acted(const display::Action&, bool) override {}

 private:
  LineFile file_;
};

// Writes the user's actions as a script of answers, which gives the same results again, also if
// buttons, fields or lines have changed their places: it calls them by their names.
class Recording : public Observer {
 public:
  // Without `with_passwords` a placeholder stands for what was entered into a password field. With
  // `by_number` no names are written.
  Recording(const std::string& path, bool with_passwords, bool by_number)
      : file_(path), with_passwords_(with_passwords), by_number_(by_number) {}

  void Opened(const display::Description& dialog) override;
  void Acted(const display::Action& action, bool secret) override;

 private:
  LineFile file_;
  bool with_passwords_;
  bool by_number_;
  display::Description dialog_;  // as it opened
  int count_ = 0;
};

// Draws dialogs, and compares pictures of them. Carbon, which starts it to show dialogs, tells no
// host what it is called.
inline constexpr const char* kPainter = "tarvo-desktop";

// The pictures 1.png, 2.png and so on in a folder, in the order of their numbers.
std::vector<std::filesystem::path> PicturesIn(const std::string& folder);

// Draws every dialog as it opened into a folder, as such pictures.
class Screenshots : public Observer {
 public:
  // Makes the folder, or takes away the pictures that it holds from before. Throws Failure (usage)
  // if that cannot be done.
  explicit Screenshots(const std::string& folder);

  void Opened(const display::Description& dialog) override;
  void Acted(const display::Action&, bool) override {}

 private:
  std::string folder_;
  int count_ = 0;
};

}  // namespace workbench
