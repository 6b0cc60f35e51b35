#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace testing_tools {

// An environment variable that is another one, or with null none, until the object goes.
class ChangedVariable {
 public:
  ChangedVariable(const char* name, const char* value) : name_(name) {
    if (const char* before = getenv(name)) before_ = before;
    Set(value);
  }
  ChangedVariable(const ChangedVariable&) = delete;
  ChangedVariable& operator=(const ChangedVariable&) = delete;
  ~ChangedVariable() { Set(before_ ? before_->c_str() : nullptr); }

 private:
  void Set(const char* value) const {
    if (value) {
      setenv(name_, value, 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> before_;
};

}  // namespace testing_tools
