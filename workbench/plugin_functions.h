#pragma once

#include <vector>

#include "calculation/external_functions.h"
#include "platform/fmwrapper/FMHost.h"
#include "workbench/user.h"

namespace workbench {

// What the plug-in has registered, as calculations call it.
class PluginFunctions : public calculation::ExternalFunctions {
 public:
  // Takes note of what is registered now. `user` must outlive this.
  explicit PluginFunctions(User& user);

  // In order of registration, the order of `signatures()` too.
  const std::vector<fmx::host::Function>& functions() const { return functions_; }

  const std::vector<Signature>& signatures() const override { return signatures_; }

  // Throws Failure where the plug-in throws, answers an error, or shows a dialog that gets no
  // answer.
  calculation::Value Call(std::size_t index,
                          const std::vector<calculation::Value>& arguments) override;

 private:
  User& user_;
  std::vector<fmx::host::Function> functions_;
  std::vector<Signature> signatures_;
};

}  // namespace workbench
