#pragma once

// A bundle and the plug-in in it as the checks hold them: nothing is taken for granted, every
// message can be sent, and whatever is wrong is told by ContractBroken.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/check/answering_display.h"

namespace workbench::check {

using Block = FMX_ExternCallBlock<std::uintptr_t>;

// What a plug-in returns for the initialisation message.
inline constexpr std::intptr_t kReady = 51;
inline constexpr std::intptr_t kRefused = -1;

// The interface version that a plug-in is offered when the version is not what is checked.
inline constexpr std::int16_t kUsualVersion = 200;

struct Bundle {
  std::filesystem::path folder;
  std::filesystem::path module;
};

// Throws ContractBroken with this text unless `holds`.
void Expect(bool holds, const std::string& what);

// "expected WHAT to be EXPECTED, got GOT".
void ExpectEqual(const std::string& what, std::intmax_t expected, std::intmax_t got);

// A text in quotation marks, UTF-8.
std::string Quoted(std::u16string_view text);

// The plug-in, loaded; its dialogs are answered by a display of its own. It stays loaded to the end
// of the check's process.
class Plugin {
 public:
  explicit Plugin(const Bundle& bundle);
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;
  ~Plugin();

  // Sends a message with `block` as it is; with the plug-in's own block if none is given.
  void Send(std::uint8_t message, Block& block);
  void Send(std::uint8_t message) { Send(message, block_); }

  // Sends the initialisation message and returns the whole result field.
  std::intptr_t Initialise(std::int16_t version);

  // Initialises with the usual version; throws NotApplicable if the plug-in is not ready then.
  void Start();

  // The call block that the plug-in says it was called with last.
  FMX_ExternCallPtr LatestCall() const;

  Block& block() { return block_; }
  const AnsweringDisplay& display() const { return display_; }

 private:
  void* module_ = nullptr;
  void (*entry_point_)(FMX_ExternCallPtr call) = nullptr;
  Block block_{};
  CFBundleRef bundle_ = nullptr;
  AnsweringDisplay display_;
};

}  // namespace workbench::check
