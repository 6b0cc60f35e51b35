#include "workbench/repl/edited_lines.h"

#include <dlfcn.h>

#include "workbench/failure.h"
#include "workbench/files.h"

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

}  // namespace

EditedLines::EditedLines(const Candidates& candidates)
    : module_(Load()),
      editor_(module_.start(history_.Load(), HistoryFile::kLongest, candidates), module_.stop) {}

Lines::Line EditedLines::Next(bool continues) {
  return module_.next(*editor_, continues ? kContinuation : kPrompt);
}

void EditedLines::Remember(const std::string& entry) {
  if (module_.remember(*editor_, entry)) history_.Append(entry);
}

}  // namespace workbench
