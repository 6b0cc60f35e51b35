#include "workbench/check/plugin_under_check.h"

#include <dlfcn.h>

#include "platform/carbon/CarbonHost.h"
#include "platform/corefoundation/CFHost.h"
#include "platform/corefoundation/encoding.h"
#include "workbench/check/isolation.h"

namespace workbench::check {

void Expect(bool holds, const std::string& what) {
  if (!holds) throw ContractBroken(what);
}

void ExpectEqual(const std::string& what, std::intmax_t expected, std::intmax_t got) {
  Expect(expected == got, "expected " + what + " to be " + std::to_string(expected) + ", got " +
                              std::to_string(got));
}

std::string Quoted(std::u16string_view text) { return "\"" + encoding::ToUtf8(text) + "\""; }

Plugin::Plugin(const Bundle& bundle) : module_(dlopen(bundle.module.c_str(), RTLD_NOW)) {
  Expect(module_ != nullptr, "expected a module that can be loaded, got " +
                                 std::string(module_ == nullptr ? dlerror() : ""));
  entry_point_ = reinterpret_cast<decltype(entry_point_)>(dlsym(module_, "FMExternCallProc"));
  Expect(entry_point_ != nullptr, "expected an entry point FMExternCallProc, got none");
  bundle_ = CFBundleCreateWithPath(bundle.folder);
  block_.bundle = reinterpret_cast<std::uintptr_t>(bundle_);
  carbon::SetDisplay(&display_);
}

Plugin::~Plugin() {
  carbon::SetDisplay(nullptr);
  if (bundle_) CFRelease(bundle_);
}

void Plugin::Send(std::uint8_t message, Block& block) {
  block.message = message;
  entry_point_(&block);
}

std::intptr_t Plugin::Initialise(std::int16_t version) {
  block_.version = version;
  Send(kFMXT_Init);
  return static_cast<std::intptr_t>(block_.result);
}

void Plugin::Start() {
  const std::intptr_t result = Initialise(kUsualVersion);
  if (result == kReady) return;
  throw NotApplicable("the plug-in answers its initialisation with " + std::to_string(result));
}

FMX_ExternCallPtr Plugin::LatestCall() const {
  const auto* latest = static_cast<FMX_ExternCallPtr*>(dlsym(module_, "gFMX_ExternCallPtr"));
  Expect(latest != nullptr, "expected a global gFMX_ExternCallPtr, got none");
  return *latest;
}

}  // namespace workbench::check
