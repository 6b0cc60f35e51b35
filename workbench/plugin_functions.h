#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "calculation/external_functions.h"
#include "platform/fmwrapper/FMHost.h"
#include "workbench/user.h"

namespace workbench {

// The functions that the plug-in has registered, for calculations to call.
class PluginFunctions : public calculation::ExternalFunctions {
 public:
  // Takes note of what is registered now. `user` must outlive this.
  explicit PluginFunctions(User& user);

  // In order of registration, the order of `signatures()` too.
  const std::vector<fmx::host::Function>& functions() const { return functions_; }

  const std::vector<Signature>& signatures() const override { return signatures_; }

  // Throws Failure if the plug-in throws, returns an error, or shows a dialog that its user does
  // not end.
  calculation::Value Call(std::size_t index,
                          const std::vector<calculation::Value>& arguments) override;

  calculation::Value Get(std::string_view name) const override;
  bool IsLeftOut(std::string_view name) const override;

  // What Get says from now on. `name` is the whole of it: "Get ( ScriptResult )".
  void Tell(const std::string& name, calculation::Value value) { known_[name] = std::move(value); }

  User& user() { return user_; }

 private:
  User& user_;
  std::vector<fmx::host::Function> functions_;
  std::vector<Signature> signatures_;
  std::map<std::string, calculation::Value, std::less<>> known_;
};

}  // namespace workbench
