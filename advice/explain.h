#pragma once

#include <string>
#include <vector>

#include "advice/presets.h"

namespace advice {

// One item of a call's parameter.
struct ExplainedItem {
  int number = 0;       // from 1
  std::string meaning;  // "label of field 1"
  std::string text;     // as it stands
  std::string effect;   // what it does, with what presets have added; may be empty
};

// What each item of the call's parameter means and does; nothing of a function that reads none.
std::vector<ExplainedItem> Explain(const Call& call);

// The presets that the call's dialog is made with, each as "what: TEXT".
std::vector<std::string> ExplainPresets(const Call& call, const Presets& before);

}  // namespace advice
