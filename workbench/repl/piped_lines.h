#pragma once

#include <string>

#include "workbench/repl/lines.h"

namespace workbench {

// Standard input if it is no terminal. A line is handed on as soon as its end has been read.
class PipedLines : public Lines {
 public:
  // Throws Failure (usage) if standard input cannot be read.
  Line Next(bool continues) override;
  void Remember(const std::string&) override {}

 private:
  bool after_cr_ = false;  // a line feed that follows belongs to the line before
};

}  // namespace workbench
