#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/carbon/CarbonHost.h"
#include "platform/corefoundation/CFHost.h"
#include "platform/corefoundation/encoding.h"
#include "platform/fmwrapper/FMHost.h"
#include "tests/support/scripted_dialogs.h"

extern "C" void FMExternCallProc(FMX_ExternCallPtr call);
extern "C" FMX_ExternCallPtr gFMX_ExternCallPtr;

// How many functions the plug-in registers.
inline constexpr int kFunctionCount = 19;

// FileMaker's part: initialises the plug-in, evaluates its functions, answers its dialogs from a
// script, shuts it down, and sees to it that nothing of a test is left.
class PluginHost : public testing::Test {
 protected:
  PluginHost() { Initialise(PLUGIN_BUNDLE); }

  ~PluginHost() override {
    Send(kFMXT_Shutdown);
    carbon::SetDisplay(nullptr);
    EXPECT_EQ(fmx::host::LiveValues(), 0);
    EXPECT_TRUE(fmx::host::Functions().empty());
    CFRelease(reinterpret_cast<CFBundleRef>(block_.bundle));
  }

  std::int32_t Initialise(const std::string& bundle, std::int16_t version = 200) {
    if (block_.bundle != 0) CFRelease(reinterpret_cast<CFBundleRef>(block_.bundle));
    block_.bundle = reinterpret_cast<std::uintptr_t>(CFBundleCreateWithPath(bundle));
    block_.version = version;
    Send(kFMXT_Init);
    return static_cast<std::int32_t>(block_.result);
  }

  void Send(std::uint8_t message) {
    block_.message = message;
    FMExternCallProc(&block_);
  }

  static const fmx::host::Function& Function(std::string_view name) {
    for (const auto& function : fmx::host::Functions()) {
      if (encoding::ToUtf8(function.name) == name) return function;
    }
    throw std::invalid_argument("no function " + std::string(name));
  }

  static fmx::host::Outcome Evaluate(const std::string& name, std::u16string parameter) {
    return fmx::host::Evaluate(Function(name), {{kFMX_TextType, std::move(parameter), kLocale}});
  }

  // A function's result as UTF-8. Every function returns error code 0 and leaves no value behind.
  static std::string Call(const std::string& name, const std::string& parameter) {
    const fmx::host::Outcome outcome = Evaluate(name, encoding::ToUtf16(parameter));
    EXPECT_EQ(outcome.error, 0);
    EXPECT_EQ(fmx::host::LiveValues(), 0);
    return encoding::ToUtf8(outcome.result.text);
  }

  // A function that shows dialogs, answered by `answers`, which must serve.
  std::string Call(const std::string& name, const std::string& parameter,
                   const std::string& answers) {
    Answer(answers);
    std::string result = Call(name, parameter);
    EXPECT_FALSE(dialogs_->failure()) << dialogs_->failure()->reason;
    EXPECT_EQ(dialogs_->closed, static_cast<int>(dialogs_->opened.size()));
    return result;
  }

  void Answer(const std::string& answers) {
    dialogs_ = std::make_unique<ScriptedDialogs>(display::ParseAnswerText(answers));
    carbon::SetDisplay(dialogs_.get());
  }

  // What the last dialog looked like when it opened.
  const display::Json& Opened() const { return dialogs_->opened.at(0); }

  const display::Json& Control(int id) const {
    for (const auto& control : Opened().at("controls")) {
      if (control.at("id") == id) return control;
    }
    throw std::invalid_argument("no control " + std::to_string(id));
  }

  const display::Json& Field(int number) const { return Control(control_id::Field(number)); }

  bool HasControl(int id) const {
    for (const auto& control : Opened().at("controls")) {
      if (control.at("id") == id) return true;
    }
    return false;
  }

  // The numbers of the fields that have the focus.
  std::string FocusedFields() const {
    std::string fields;
    for (int number = 1; number <= 4; ++number) {
      const int id = control_id::Field(number);
      if (HasControl(id) && Control(id).at("focused")) fields += std::to_string(number);
    }
    return fields;
  }

  static constexpr int kLocale = 7;

  FMX_ExternCallBlock<std::uintptr_t> block_{};
  std::unique_ptr<ScriptedDialogs> dialogs_;
};
