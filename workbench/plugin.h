#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/options.h"

namespace workbench {

// A plug-in as FileMaker holds one: its bundle is loaded, it is initialised, asked for its strings,
// and shut down. The module stays loaded to the end of the program, because what it registered or
// left behind may still refer to it.
class Plugin {
 public:
  // FileMaker's numbers of a plug-in's strings.
  enum StringNumber : std::uint8_t { kName = 128, kDescription = 129, kOptions = 131 };

  // Loads and initialises the bundle in the folder `path`. Throws Failure (bundle) that says why it
  // cannot be loaded, or that it refuses the interface version.
  Plugin(const std::string& path, std::int16_t interface_version);
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  // Shuts the plug-in down if that was not done; what it throws is ignored.
  ~Plugin();

  // What the plug-in returned for the initialisation message.
  std::int32_t init_result() const { return init_result_; }

  // One of the plug-in's strings, UTF-8; empty if it has none.
  std::string String(StringNumber number);

  // What the plug-in throws passes through.
  void ShutDown();

 private:
  using EntryPoint = void (*)(FMX_ExternCallPtr call);

  void Load(const std::string& path);
  void Initialise(const std::string& path, std::int16_t interface_version);
  void Send(std::uint8_t message);

  struct Release {
    void operator()(CFBundleRef bundle) const { CFRelease(bundle); }
  };

  std::unique_ptr<CFBundle, Release> bundle_;
  EntryPoint entry_point_ = nullptr;
  FMX_ExternCallBlock<std::uintptr_t> call_{};  // a member, as the plug-in may keep its address
  std::int32_t init_result_ = 0;
  bool running_ = false;
};

// The path of the bundle that the options name, else of the one beside this program, or else of the
// one that was installed with it. Lets them choose the language that its strings will be in.
std::string ChooseBundle(const Options& options);

}  // namespace workbench
