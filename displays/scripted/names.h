#pragma once

// The names of what a dialog shows, for answers that say them in place of numbers.

#include <stdexcept>
#include <string>

#include "displays/scripted/answers.h"
#include "platform/carbon/display.h"

namespace display {

// The dialog shows nothing under a name, or more than one thing. what() is one clause for the user,
// with what can be meant.
class NameError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The answer's action, with the numbers of what its names name. Throws NameError.
Action ActionOf(const Answer& answer, const Description& dialog);

// Names for the numbers of the action, each if it names one thing of the dialog alone.
Names NamesFor(const Action& action, const Description& dialog);

}  // namespace display
