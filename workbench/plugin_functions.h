#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "advice/presets.h"
#include "calculation/external_functions.h"
#include "platform/fmwrapper/FMHost.h"
#include "workbench/user.h"

namespace workbench {

// A call that a calculation made, or a step that shows a dialog.
struct MadeCall {
  advice::Call call;
  calculation::CallPlace place;
};

// Is told of every call that calculations make.
class CallListener {
 public:
  virtual ~CallListener() = default;

  virtual void Called(const MadeCall& call) = 0;
};

// The functions that the plug-in has registered, for calculations to call.
class PluginFunctions : public calculation::ExternalFunctions {
 public:
  // Takes note of what is registered now. `user` must outlive this.
  explicit PluginFunctions(User& user);

  // In order of registration, the order of `signatures()` too.
  const std::vector<fmx::host::Function>& functions() const { return functions_; }

  const std::vector<Signature>& signatures() const override { return signatures_; }

  // `listener`, which may be null, must outlive this.
  void TellCallsTo(CallListener* listener) { listener_ = listener; }

  void Calling(const calculation::CallPlace& place) override { place_ = place; }

  // Throws Failure if the plug-in throws, returns an error, or shows a dialog that its user does
  // not end.
  calculation::Value Call(std::size_t index,
                          const std::vector<calculation::Value>& arguments) override;

  // Shows what a step of a script that stands there says, as User::ShowMessage does. The listener
  // is told of it too.
  int ShowMessage(calculation::Span place, const std::string& title, const std::string& message,
                  const std::vector<std::string>& buttons);

  calculation::Value Get(std::string_view name) const override;
  bool IsLeftOut(std::string_view name) const override;

  // What Get says from now on. `name` is the whole of it: "Get ( ScriptResult )".
  void Tell(const std::string& name, calculation::Value value) { known_[name] = std::move(value); }

 private:
  void Tell(const std::string& name, const std::vector<fmx::host::Value>& parameters,
            const fmx::host::Value& result);

  User& user_;
  CallListener* listener_ = nullptr;
  calculation::CallPlace place_;  // of the next call
  std::vector<fmx::host::Function> functions_;
  std::vector<Signature> signatures_;
  std::map<std::string, calculation::Value, std::less<>> known_;
};

}  // namespace workbench
