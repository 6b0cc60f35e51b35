#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "platform/fmwrapper/FMHost.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/check/checks.h"
#include "workbench/check/plugin_under_check.h"

namespace workbench::check {
namespace {

void CheckAccepted(const Bundle& bundle, std::int16_t version) {
  Plugin plugin(bundle);
  ExpectEqual("the answer", kReady, plugin.Initialise(version));
  Expect(!fmx::host::Functions().empty(), "expected registered functions, got none");
}

void CheckRefused(const Bundle& bundle, std::int16_t version) {
  Plugin plugin(bundle);
  ExpectEqual("the answer, over the whole result field,", kRefused, plugin.Initialise(version));
  ExpectEqual("the number of registered functions", 0,
              static_cast<std::intmax_t>(fmx::host::Functions().size()));
}

using Snapshot = std::array<unsigned char, sizeof(Block)>;

Snapshot Bytes(const Block& block) {
  Snapshot bytes;
  std::memcpy(bytes.data(), &block, sizeof block);
  return bytes;
}

// Sends the message of `block` and expects its first `kept` bytes to be as before.
void ExpectUntouched(Plugin& plugin, Block& block, std::size_t kept = sizeof(Block)) {
  const int message = block.message;
  const Snapshot before = Bytes(block);
  plugin.Send(block.message, block);
  const Snapshot after = Bytes(block);
  for (std::size_t i = 0; i < kept; ++i) {
    Expect(before.at(i) == after.at(i),
           "expected message " + std::to_string(message) +
               " to leave the call block as it is, got a change at byte " + std::to_string(i));
  }
}

bool IsKnown(int message) {
  return message == kFMXT_Init || message == kFMXT_Shutdown || message == kFMXT_GetString;
}

void SendUnknownMessages(Plugin& plugin) {
  for (int message = 0; message <= 255; ++message) {
    Block block;
    std::memset(&block, 0x5A, sizeof block);
    block.message = static_cast<std::uint8_t>(message);
    if (!IsKnown(message)) ExpectUntouched(plugin, block);
  }
}

void CheckUnknownMessages(const Bundle& bundle) {
  Plugin plugin(bundle);
  SendUnknownMessages(plugin);
  plugin.Start();
  SendUnknownMessages(plugin);
}

// An initialisation writes the result field alone; a request for a string and a shutdown write
// nothing into the call block.
void CheckKnownMessages(const Bundle& bundle) {
  Plugin plugin(bundle);
  Block& block = plugin.block();
  std::memset(block.reserved1, 0x5A, sizeof block.reserved1);
  block.version = kUsualVersion;
  block.message = kFMXT_Init;
  ExpectUntouched(plugin, block, offsetof(Block, result));
  std::array<char16_t, 2048> buffer{};
  block.message = kFMXT_GetString;
  block.string = 128;
  block.size = 1024;
  block.result = reinterpret_cast<std::uintptr_t>(buffer.data());
  ExpectUntouched(plugin, block);
  block.message = kFMXT_Shutdown;
  ExpectUntouched(plugin, block);
}

void CheckLatestCall(const Bundle& bundle) {
  Plugin plugin(bundle);
  Expect(plugin.LatestCall() == nullptr,
         "expected gFMX_ExternCallPtr to be null at first, got an address");
  for (const int message : {0, 1, 7, 255, 4}) {
    Block block = plugin.block();
    block.version = kUsualVersion;
    plugin.Send(static_cast<std::uint8_t>(message), block);
    Expect(plugin.LatestCall() == &block,
           "expected gFMX_ExternCallPtr to be the call block of message " +
               std::to_string(message) + ", got another address");
  }
}

Check VersionCheck(const std::string& name, std::int16_t version,
                   void (*check)(const Bundle& bundle, std::int16_t version)) {
  return {name, [=](const Bundle& bundle) { check(bundle, version); }};
}

}  // namespace

std::vector<Check> MessageChecks() {
  return {VersionCheck("version-49", 49, CheckRefused),
          VersionCheck("version-50", 50, CheckAccepted),
          VersionCheck("version-255", 255, CheckAccepted),
          VersionCheck("version-256", 256, CheckRefused),
          VersionCheck("version-minus-1", -1, CheckRefused),
          VersionCheck("version-minus-32768", INT16_MIN, CheckRefused),
          {"unknown-messages", CheckUnknownMessages},
          {"known-messages", CheckKnownMessages},
          {"latest-call", CheckLatestCall}};
}

}  // namespace workbench::check
