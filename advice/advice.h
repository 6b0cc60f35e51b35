#pragma once

// What looks wrong with a dialog, said before anybody sits in front of it. Values go in, values
// come out: the calls of a run in their order, each with the dialog that it showed.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "advice/presets.h"

namespace advice {

// Something that looks wrong.
struct Remark {
  std::string sentence;     // what, with the texts concerned
  int item = 0;             // of the call's parameter, from 1; 0: none, or all of it
  std::string preset = {};  // the function whose call it is about, if not the one that is looked at
};

// One call, and what the calls before it left.
struct Situation {
  const Call& call;
  const Presets& presets;
  std::vector<std::string> items;  // of the call's parameter
};

struct Advice {
  std::string_view name;      // never changes: scripts and options say it
  std::string_view sentence;  // what it is about
  std::string_view reason;    // why that is wrong
  std::string_view example;   // calculations, a line each, that get this advice
  std::vector<Remark> (*look)(const Situation& situation);  // null: it looks at the end of a run
};

std::span<const Advice> AllAdvice();

// A remark of a run's call.
struct Finding {
  std::string_view advice;
  std::string sentence;
  std::string_view reason;
  std::size_t call = 0;  // its number, from 0
  int item = 0;
};

// About the call that follows those that left `before`.
std::vector<Finding> AdviseOn(const Call& call, const Presets& before);

// About presets that no dialog of the run used. `all`: also about those that stay for all later
// dialogs; false if steps of the run were left out that might use them.
std::vector<Finding> AdviseAtEnd(const Presets& presets, bool all);

// All of a run.
std::vector<Finding> Advise(std::span<const Call> calls);

}  // namespace advice
