#pragma once

#include <memory>
#include <string>

#include "workbench/repl/history_file.h"
#include "workbench/repl/line_editor.h"
#include "workbench/repl/lines.h"

namespace workbench {

// Lines that a user types at a terminal, with a prompt, a history that is kept between sessions and
// completion.
class EditedLines : public Lines {
 public:
  // Throws Failure if the line editor cannot be loaded.
  explicit EditedLines(const Candidates& candidates);

  Line Next(bool continues) override;
  bool HasMore() const override;
  void Remember(const std::string& entry) override;

 private:
  HistoryFile history_;
  const LineEditorModule& module_;
  std::unique_ptr<LineEditor, void (*)(LineEditor*)> editor_;
};

}  // namespace workbench
