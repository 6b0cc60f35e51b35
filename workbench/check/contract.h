#pragma once

#include <span>
#include <string_view>

namespace workbench::check {

// What a check holds a plug-in to, and what it can say nothing without.
struct Clause {
  std::string_view check;  // of a function's checks: what follows the slash
  std::string_view needs;  // the check without which this one says nothing; empty if there is none
  std::string_view text;   // what the contract says and why it matters
};

// Of every check that does not depend on the plug-in's functions, and of those that do.
std::span<const Clause> Clauses();
std::span<const Clause> FunctionClauses();

// Of the check of this name, FUNCTION/KIND for those of functions. Null if there is none.
const Clause* FindClause(std::string_view check);

}  // namespace workbench::check
