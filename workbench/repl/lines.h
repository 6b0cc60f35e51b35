#pragma once

#include <string>

namespace workbench {

// The source of an interactive session's lines.
class Lines {
 public:
  struct Line {
    enum class Kind {
      kText,     // a line, without its end
      kGivenUp,  // the user has given up what was entered so far
      kEnd,      // there is no more
    };

    Kind kind = Kind::kEnd;
    std::string text;
  };

  Lines() = default;
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;
  virtual ~Lines() = default;

  // `continues`: the line goes on with what was entered before.
  virtual Line Next(bool continues) = 0;

  // Whether more has come already, as when several lines are pasted.
  virtual bool HasMore() const { return false; }

  // Keeps what was entered, with all its lines, for the user to have again.
  virtual void Remember(const std::string& entry) = 0;
};

}  // namespace workbench
