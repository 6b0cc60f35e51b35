#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "platform/corefoundation/encoding.h"
#include "platform/fmwrapper/FMHost.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/check/checks.h"
#include "workbench/check/plugin_under_check.h"

namespace workbench::check {
namespace {

enum StringNumber : std::uint8_t { kAbsent = 0, kName = 128, kConfiguration = 129, kOptions = 131 };

// Longer than any text that is meant to be read.
constexpr std::size_t kRoom = 65536;
constexpr char16_t kBlank = 0x5A5A;

// What the plug-in wrote into the buffer for a string that it was asked for, and after the buffer.
struct Written {
  std::u16string units;
  std::size_t size;

  bool IsUntouched() const { return units.find_first_not_of(kBlank) == std::u16string::npos; }
  bool IsPastItsEnd() const {
    return units.find_first_not_of(kBlank, size) != std::u16string::npos;
  }
  std::u16string Text() const { return units.substr(0, units.find(u'\0')); }
};

// Asks for a string with a buffer that is said to be of `size` units and has room for more.
Written Ask(Plugin& plugin, std::uint8_t number, std::int32_t size) {
  Written written{std::u16string(kRoom + 1, kBlank), static_cast<std::size_t>(std::max(size, 0))};
  plugin.block().string = number;
  plugin.block().size = size;
  plugin.block().result = reinterpret_cast<std::uintptr_t>(written.units.data());
  plugin.Send(kFMXT_GetString);
  return written;
}

std::string Case(std::uint8_t number, std::int32_t size) {
  return "string " + std::to_string(number) + " with a buffer of " + std::to_string(size) +
         " units";
}

std::u16string AskWhole(Plugin& plugin, std::uint8_t number) {
  const Written written = Ask(plugin, number, kRoom);
  Expect(!written.IsUntouched(), "expected a string " + std::to_string(number) + ", got none");
  Expect(written.Text().size() < kRoom,
         "expected string " + std::to_string(number) + " to end with a zero unit, got none");
  return written.Text();
}

void ExpectNothing(Plugin& plugin, std::uint8_t number, std::int32_t size) {
  Expect(Ask(plugin, number, size).IsUntouched(),
         "expected nothing for " + Case(number, size) + ", got something written");
}

void ExpectNothingWithoutRoom(Plugin& plugin, std::uint8_t number) {
  for (const std::int32_t size : {1, 0, -1, INT32_MIN}) ExpectNothing(plugin, number, size);
  plugin.block().string = number;
  plugin.block().size = 1024;
  plugin.block().result = 0;  // writing to it all the same ends the process
  plugin.Send(kFMXT_GetString);
}

void ExpectWhole(Plugin& plugin, std::uint8_t number, std::int32_t size, std::u16string_view text) {
  const Written written = Ask(plugin, number, size);
  Expect(!written.IsPastItsEnd(), "expected nothing written behind the buffer for " +
                                      Case(number, size) + ", got something");
  Expect(written.Text() == text, "expected the whole " + Case(number, size) + ", got " +
                                     Quoted(written.IsUntouched() ? u"" : written.Text()));
}

// A string is loaded only if at least one unit stays free after its terminator.
void CheckString(const Bundle& bundle, std::uint8_t number) {
  Plugin plugin(bundle);
  plugin.Start();
  const std::u16string text = AskWhole(plugin, number);
  Expect(!text.empty(),
         "expected a text as string " + std::to_string(number) + ", got an empty one");
  const auto limit = static_cast<std::int32_t>(text.size()) + 2;
  for (const std::int32_t size : {2, limit - 2, limit - 1}) ExpectNothing(plugin, number, size);
  for (const std::int32_t size : {limit, limit + 1}) ExpectWhole(plugin, number, size, text);
  ExpectNothingWithoutRoom(plugin, number);
}

// FileMaker never asks for this number, and no table has it.
void CheckAbsentString(const Bundle& bundle) {
  Plugin plugin(bundle);
  plugin.Start();
  for (const std::int32_t size : {2, 1024}) ExpectNothing(plugin, kAbsent, size);
  ExpectNothingWithoutRoom(plugin, kAbsent);
}

// Behind the plug-in's ID: always 1; Configure button or not; always n; initialise and shut down,
// which a plug-in with functions needs; idle time or not; always n.
bool AreFlags(const std::string& flags) {
  return flags == "1nnYnn" || flags == "1YnYnn" || flags == "1nnYYn" || flags == "1YnYYn";
}

void CheckOptions(const Bundle& bundle) {
  Plugin plugin(bundle);
  plugin.Start();
  const std::u16string text = AskWhole(plugin, kOptions);
  const std::string options = encoding::ToUtf8(text);
  for (const auto& function : fmx::host::Functions()) {
    const std::string& id = function.plugin_id;
    Expect(options.starts_with(id) && AreFlags(options.substr(id.size())),
           "expected the options " + id + "1nnYnn, got " + Quoted(text));
  }
}

Check StringCheck(const std::string& name, std::uint8_t number) {
  return {name, [number](const Bundle& bundle) { CheckString(bundle, number); }};
}

}  // namespace

std::vector<Check> StringChecks() {
  return {StringCheck("string-128", kName),
          StringCheck("string-129", kConfiguration),
          StringCheck("string-131", kOptions),
          {"string-absent", CheckAbsentString},
          {"options", CheckOptions}};
}

}  // namespace workbench::check
