#pragma once

#include <stdexcept>
#include <string>

namespace workbench {

// How the program ends.
enum class Status {
  kDone = 0,
  kWrong = 1,          // a calculation or script is wrong, or its results cannot be written
  kUsage = 2,          // the command line is wrong
  kBundle = 3,         // the bundle cannot be loaded, or refuses
  kAnswer = 4,         // an answer is missing, or names what its dialog does not have
  kNoDisplay = 5,      // there is nothing to show a dialog on
  kInterrupted = 130,  // by Control-C
};

// Ends the program. what() is the message for the user, without the program's name.
class Failure : public std::runtime_error {
 public:
  Failure(Status status, const std::string& what) : std::runtime_error(what), status_(status) {}

  Status status() const { return status_; }

 private:
  Status status_;
};

}  // namespace workbench
