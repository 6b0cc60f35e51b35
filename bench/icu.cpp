// A long result text against ICU's conversion of the same bytes into a buffer.

#include <benchmark/benchmark.h>
#include <unicode/ustring.h>

#include "bench/bare.h"
#include "bench/in_process.h"
#include "bench/loaded_plugin.h"

namespace bench {
namespace {

constexpr std::size_t kBytes = 10'000'000;

std::string MixedScripts() {
  const std::string pattern =
      "The quick brown fox; Zwölf Boxkämpfer jagen Viktor; Ξεσκεπάζω την ψυχοφθόρα; "
      "Съешь же ещё этих мягких; いろはにほへと ちりぬるを; 天地玄黃 宇宙洪荒; 😀🎉 ";
  std::string text;
  while (text.size() + pattern.size() < kBytes) text += pattern;
  return text;
}

void ConvertByIcu(const std::string& bytes) {
  const auto units = bare::Allocate<char16_t>(bytes.size());
  UErrorCode error = U_ZERO_ERROR;
  std::int32_t length = 0;
  u_strFromUTF8(units.get(), static_cast<std::int32_t>(bytes.size()), &length, bytes.data(),
                static_cast<std::int32_t>(bytes.size()), &error);
  benchmark::DoNotOptimize(units.get());
  if (U_FAILURE(error)) std::abort();
}

}  // namespace

void CompareResults() {
  const auto text = std::make_shared<std::string>(MixedScripts());
  const auto call = std::make_shared<Call>(u"TarvoV1", u"x");
  Compare("TarvoV1, 10 MB of mixed scripts", kMilliseconds,
          {[call] { (*call)(); }, [text] { LeaveInFields(*text); }}, "ICU's conversion",
          {[text] { ConvertByIcu(*text); }}, 1);
}

}  // namespace bench
