#include "workbench/plugin.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <filesystem>

#include "calculation/unicode.h"
#include "platform/corefoundation/CFHost.h"
#include "workbench/check/module_file.h"
#include "workbench/crash_guard.h"
#include "workbench/failure.h"
#include "workbench/files.h"

namespace workbench {
namespace {

constexpr const char* kBundleName = "Quenlix.fmplugin";
constexpr std::size_t kStringSize = 1024;

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
  throw Failure(Status::kBundle, path + ": " + reason);
}

}  // namespace

Plugin::Plugin(const std::string& path, std::int16_t interface_version) {
  Load(path);
  Initialise(path, interface_version);
}

Plugin::~Plugin() {
  try {
    ShutDown();
  } catch (...) {  // the program ends with an earlier error
  }
}

std::string Plugin::String(StringNumber number) {
  char16_t buffer[kStringSize] = {};
  call_.string = number;
  call_.language = 0;
  call_.size = kStringSize;
  call_.result = reinterpret_cast<std::uintptr_t>(buffer);
  const CrashGuard guard("the plug-in crashed while it was asked for its string " +
                         std::to_string(number));
  Send(kFMXT_GetString);
  buffer[kStringSize - 1] = 0;
  return calculation::ToUtf8(buffer);
}

void Plugin::ShutDown() {
  if (!running_) return;
  running_ = false;
  const CrashGuard guard("the plug-in crashed while it was shut down");
  Send(kFMXT_Shutdown);
}

void Plugin::Load(const std::string& path) {
  bundle_.reset(CFBundleCreateWithPath(path));
  if (!bundle_) Refuse(path, "there is no such bundle");
  const std::string module_path = CFBundleGetExecutablePath(bundle_.get());
  if (access(module_path.c_str(), F_OK) != 0) {
    Refuse(path, "the bundle has no module; expected " + module_path);
  }
  const std::string fault = WhyNoModule(module_path);
  if (!fault.empty()) Refuse(path, "the module cannot be loaded: it " + fault);
  const CrashGuard guard(path + ": the module crashed while it was loaded");
  void* const module =
      dlopen(std::filesystem::absolute(module_path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module) Refuse(path, std::string("the module cannot be loaded: ") + dlerror());
  entry_point_ = reinterpret_cast<EntryPoint>(dlsym(module, "FMExternCallProc"));
  if (!entry_point_) Refuse(path, "the module has no entry point FMExternCallProc");
}

void Plugin::Initialise(const std::string& path, std::int16_t interface_version) {
  call_.version = interface_version;
  const CrashGuard guard(path + ": the plug-in crashed while it was initialised");
  try {
    Send(kFMXT_Init);
  } catch (const std::exception& error) {
    Refuse(path, std::string("the plug-in threw while it was initialised: ") + error.what());
  }
  init_result_ = static_cast<std::int32_t>(call_.result);
  if (init_result_ <= 0) {
    Refuse(path, "the plug-in refuses interface version " + std::to_string(interface_version) +
                     ", with the answer " + std::to_string(init_result_));
  }
  running_ = true;
}

void Plugin::Send(std::uint8_t message) {
  call_.message = message;
  call_.bundle = reinterpret_cast<std::uintptr_t>(bundle_.get());
  entry_point_(&call_);
}

std::string ChooseBundle(const Options& options) {
  // The bundle's strings are chosen by this when they are first asked for.
  if (options.language) setenv("LANGUAGE", options.language->c_str(), 1);
  return options.plugin ? *options.plugin : FindCompanion(kBundleName);
}
}  // namespace workbench
