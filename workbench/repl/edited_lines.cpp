#include "workbench/repl/edited_lines.h"

#include <dlfcn.h>
#include <poll.h>
#include <unistd.h>

#include <string_view>
#include <utility>
#include <vector>

#include "workbench/failure.h"
#include "workbench/files.h"
#include "workbench/user_text.h"

namespace workbench {
namespace {

constexpr const char* kPrompt = "tarvo> ";
constexpr const char* kContinuation = "  ...> ";

const LineEditorModule& Load() {
  const std::string path = FindCompanion(LineEditorModule::kFile);
  void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  const void* const symbol = module ? dlsym(module, LineEditorModule::kSymbol) : nullptr;
  if (!symbol) throw Failure(Status::kWrong, std::string("no line editor: ") + dlerror());
  return *static_cast<const LineEditorModule*>(symbol);
}

// The editor works in the user's code set.
std::vector<std::string> AllForUser(std::vector<std::string> texts) {
  for (std::string& text : texts) text = ForUser(text);
  return texts;
}

}  // namespace

EditedLines::EditedLines(const Candidates& candidates)
    : module_(Load()),
      editor_(module_.start(AllForUser(history_.Load()), HistoryFile::kLongest,
                            [candidates] { return AllForUser(candidates()); }),
              module_.stop) {}

Lines::Line EditedLines::Next(bool continues) {
  Line line = module_.next(*editor_, continues ? kContinuation : kPrompt);
  if (auto text = FromUser(line.text)) line.text = std::move(*text);
  return line;
}

bool EditedLines::HasMore() const {
  pollfd waiting{STDIN_FILENO, POLLIN, 0};
  return poll(&waiting, 1, 0) > 0;
}

void EditedLines::Remember(const std::string& entry) {
  if (module_.remember(*editor_, ForUser(entry))) history_.Append(entry);
}

}  // namespace workbench
