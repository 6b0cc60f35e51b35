#pragma once

// The line editor is a module of its own, which only an interactive session loads: the library that
// it stands on takes its time to load, and no other command needs it.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "workbench/repl/lines.h"

namespace workbench {

// What a word may be completed to, asked for again each time.
using Candidates = std::function<std::vector<std::string>()>;

struct LineEditor;

// The module's interface.
struct LineEditorModule {
  static constexpr const char* kFile = "tarvo-line-editor.so";
  static constexpr const char* kSymbol = "tarvo_line_editor";

  // Edits at the terminal of standard input, and shows on standard error. `history` is what was
  // entered before, the oldest first; more than `longest_history` of it is forgotten.
  LineEditor* (*start)(const std::vector<std::string>& history, std::size_t longest_history,
                       const Candidates& candidates);
  Lines::Line (*next)(LineEditor& editor, const std::string& prompt);
  // False if the entry is the same as the last one, and so is not kept again.
  bool (*remember)(LineEditor& editor, const std::string& entry);
  void (*stop)(LineEditor* editor);
};

}  // namespace workbench
