// Large lists and menus against what cannot be saved: the copies into a local text, a work buffer
// and a string, and one scan for the separator. The string of the call before is released by both.

#include <benchmark/benchmark.h>

#include "bench/bare.h"
#include "bench/in_process.h"
#include "bench/loaded_plugin.h"

namespace bench {
namespace {

constexpr double kBar = 2;

std::u16string Lines(std::size_t count) {
  std::u16string text;
  text.reserve(count * 21);
  for (std::size_t i = 0; i < count; ++i) text.append(20, u'x').append(1, u'\r');
  text.pop_back();
  return text;
}

void CopyAndScan(const std::u16string& parameter) {
  static bare::String kept;
  const std::u16string local(parameter);
  auto work = bare::Allocate<char16_t>(2 * local.size());
  std::memcpy(work.get(), local.data(), local.size() * sizeof(char16_t));
  bare::String string = bare::MakeString({work.get(), local.size()});
  work.reset();
  benchmark::DoNotOptimize(bare::Count(string.View(), u'\r'));
  kept = std::move(string);
}

// The texts are made when they are first needed: the largest are 420 MB. One call goes before, so
// that what the first measured one releases is of the same size.
void CompareList(const std::string& row, std::u16string_view function, std::size_t count) {
  const auto text = std::make_shared<std::u16string>();
  const auto call = std::make_shared<std::unique_ptr<Call>>();
  const Work fill = [=] { (**call)(); };
  const Work copy = [=] { CopyAndScan(*text); };
  const auto after_making = [=](const Work& work) -> Work {
    return [=] {
      if (text->empty()) *text = Lines(count);
      if (!*call) *call = std::make_unique<Call>(function, *text);
      work();
    };
  };
  Compare(row, kMicroseconds, {fill, after_making(fill)}, "its copies and one scan",
          {copy, after_making(copy)}, kBar);
}

}  // namespace

void CompareLists() {
  CompareList("TarvoFillListBox, 1,000 lines", u"TarvoFillListBox", 1000);
  CompareList("TarvoFillListBox, 100,000 lines", u"TarvoFillListBox", 100000);
  CompareList("TarvoFillListBox, 10,000,000 lines", u"TarvoFillListBox", 10000000);
  CompareList("TarvoPopUps, 100,000 items", u"TarvoPopUps", 100000);
}

}  // namespace bench
