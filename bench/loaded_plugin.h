#pragma once

// The plug-in under measurement, called as FileMaker calls it.

#include <string>
#include <string_view>

#include "platform/carbon/display.h"
#include "platform/fmwrapper/FMHost.h"
#include "platform/fmwrapper/values.h"

namespace bench {

// The function that is registered under this name. The first call initialises the plug-in.
const fmx::host::Function& Function(std::u16string_view name);

// One call with a parameter that is there already, so that nothing but the plug-in is measured.
class Call {
 public:
  Call(std::u16string_view name, std::u16string_view parameter);
  void operator()();

 private:
  const fmx::host::Function& function_;
  fmx::DataVect parameters_;
  fmx::ExprEnv environment_;
};

// A user who enters a text into each of `fields` fields and presses the default button.
class QuickUser : public display::Display {
 public:
  QuickUser(int fields, std::string text);
  ~QuickUser() override;
  QuickUser(const QuickUser&) = delete;
  QuickUser& operator=(const QuickUser&) = delete;

  Rect MainScreen() override { return {0, 0, 1080, 1920}; }
  bool Open(const display::Description& dialog) override;
  std::optional<display::Action> NextAction() override;
  void Change(std::size_t, const display::Control&) override {}
  void Reject(const std::string&) override {}
  void Close() override {}

 private:
  int fields_;
  int next_ = 1;
  std::string text_;
};

// What a dialog leaves in each of the four fields for the result functions.
void LeaveInFields(const std::string& text);

}  // namespace bench
