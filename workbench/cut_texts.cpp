#include "workbench/cut_texts.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <nlohmann/json.hpp>

#include "displays/protocol/display_json.h"
#include "workbench/child_program.h"
#include "workbench/files.h"

namespace workbench {

std::vector<std::string> FindCutTexts(const display::Description& dialog) {
  const int file = memfd_create("tarvo-cut-texts", 0);  // the child inherits it
  if (file < 0) return {};
  std::string json;
  if (RunChild({FindCompanion("tarvo-desktop"), "--cut-texts", "/dev/fd/" + std::to_string(file)},
               display::FormatDescription(dialog) + "\n")) {
    std::array<char, 4096> part{};
    for (ssize_t count = 0;
         (count = pread(file, part.data(), part.size(), static_cast<off_t>(json.size()))) > 0;) {
      json.append(part.data(), static_cast<std::size_t>(count));
    }
  }
  close(file);
  const display::Json texts = display::ParseJsonOrDiscard(json);
  return texts.is_array() ? texts.get<std::vector<std::string>>() : std::vector<std::string>();
}

}  // namespace workbench
