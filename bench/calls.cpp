// Calls that show nothing, each against the operations that it consists of, done bare: fetch the
// text, copy it out, make the string, split it, convert it, set the result. The plug-in's own way
// to read a number, without a conversion, is granted to the reference too.

#include <benchmark/benchmark.h>

#include "bench/bare.h"
#include "bench/in_process.h"
#include "bench/loaded_plugin.h"

namespace bench {
namespace {

constexpr double kBar = 2;
constexpr std::size_t kSizes[] = {1, 20, 1024};

std::string RowName(const char* function, std::size_t size) {
  return std::string(function) + ", " + std::to_string(size) +
         (size == 1 ? " code unit" : " code units");
}

std::u16string Repeat(std::u16string_view pattern, std::size_t size) {
  std::u16string text;
  while (text.size() < size) text += pattern;
  text.resize(size);
  return text;
}

// The interface hands out texts by address: each is a block of its own.
using Text = std::unique_ptr<std::u16string>;

// The result: a text made of bytes, copied into the result.
void Answer(const char* bytes) {
  const Text answer = std::make_unique<std::u16string>(bare::ToText(bytes));
  const std::u16string result(*answer);
  benchmark::DoNotOptimize(result.data());
}

void AnswerNumber() {
  const auto number = std::make_unique<std::int64_t>(220);
  benchmark::DoNotOptimize(number.get());
  const std::string digits = std::to_string(*number);
  const std::u16string result(digits.begin(), digits.end());
  benchmark::DoNotOptimize(result.data());
}

void AnswerText(std::u16string_view text) { Answer(bare::ToBytes(text).get()); }

bare::String FetchBounded(const std::u16string& parameter) {
  const Text local = std::make_unique<std::u16string>(parameter);
  char16_t units[1024];
  std::memcpy(units, local->data(), local->size() * sizeof(char16_t));
  benchmark::DoNotOptimize(units);
  return bare::MakeString({units, local->size()});
}

bare::String FetchUnbounded(const std::u16string& parameter) {
  const Text local = std::make_unique<std::u16string>(parameter);
  const auto units = bare::Allocate<char16_t>(2 * local->size());
  std::memcpy(units.get(), local->data(), local->size() * sizeof(char16_t));
  return bare::MakeString({units.get(), local->size()});
}

using Operations = void (*)(const std::u16string& parameter);

void SetCaption(const std::u16string& parameter) {
  static bare::String caption;
  caption = FetchBounded(parameter);
  AnswerText(caption.View());
}

void PreEnterText(const std::u16string& parameter) {
  static bare::String texts[4];
  const bare::String string = FetchBounded(parameter);
  std::size_t count;
  const auto parts = bare::Split(string.View(), u'|', count);
  for (std::size_t i = 0; i < 4; ++i) {
    texts[i] = i < count ? bare::MakeString(parts[i]) : bare::String();
  }
  AnswerText(string.View());
}

int ReadNumbers(std::u16string_view text, std::size_t most) {
  std::size_t count;
  const auto parts = bare::Split(text, u'|', count);
  int numbers = 0;
  for (std::size_t i = 0; i < most && i < count; ++i) numbers += bare::ReadNumber(parts[i]);
  return numbers;
}

void Position(const std::u16string& parameter) {
  benchmark::DoNotOptimize(ReadNumbers(FetchBounded(parameter).View(), 2));
  Answer("0");
}

void SetFocus(const std::u16string& parameter) {
  const bare::String string = FetchBounded(parameter);
  benchmark::DoNotOptimize(bare::ReadNumber(string.View()));
  AnswerText(string.View());
}

void AllowEscape(const std::u16string& parameter) {
  benchmark::DoNotOptimize(bare::ReadNumber(FetchBounded(parameter).View()));
  Answer("1");
}

void SetCustomControls(const std::u16string& parameter) {
  const bare::String string = FetchBounded(parameter);
  benchmark::DoNotOptimize(ReadNumbers(string.View(), 4));
  AnswerText(string.View());
}

struct Items {
  bare::String text;
  bare::Block<std::u16string_view> parts{nullptr, &std::free};
};

Items MakeItems(bare::String text) {
  std::size_t count;
  auto parts = bare::Split(text.View(), u'\r', count);
  return {std::move(text), std::move(parts)};
}

void PopUps(const std::u16string& parameter) {
  static Items menus[4];
  const bare::String string = FetchUnbounded(parameter);
  std::size_t count;
  const auto texts = bare::Split(string.View(), u'|', count);
  for (std::size_t i = 0; i < 4; ++i) {
    menus[i] = MakeItems(bare::MakeString(i < count ? texts[i] : std::u16string_view()));
  }
  Answer("1");
}

void FillListBox(const std::u16string& parameter) {
  static Items lines;
  lines = MakeItems(FetchUnbounded(parameter));
  Answer("1");
}

void CompareSetter(const char* row, std::u16string_view function, std::u16string_view pattern,
                   Operations operations) {
  for (const std::size_t size : kSizes) {
    const std::u16string parameter = Repeat(pattern, size);
    const auto call = std::make_shared<Call>(function, parameter);
    const Work run = [call] { (*call)(); };
    const Work reference = [operations, parameter] { operations(parameter); };
    // One call goes before: it releases what a measurement of another size has left.
    Compare(RowName(row, size), kNanoseconds, {run, run}, "its operations, bare",
            {reference, reference}, kBar);
  }
}

void LeaveResults(std::size_t size) { LeaveInFields(std::string(size, 'x')); }

void CompareResult(const char* row, std::u16string_view function, std::size_t size,
                   const Work& operations) {
  const auto call = std::make_shared<Call>(function, u"x");
  Compare(RowName(row, size), kNanoseconds, {[call] { (*call)(); }, [size] { LeaveResults(size); }},
          "its operations, bare", {operations}, kBar);
}

void ComposeResult(const std::string& field) {
  static bare::Block<char> composed(nullptr, &std::free);
  const std::size_t length = 1 + 4 * std::strlen(field.c_str());
  composed.reset(static_cast<char*>(std::realloc(composed.release(), 4 * (length + 10))));
  char* end = stpcpy(composed.get(), "1");
  for (int i = 0; i < 4; ++i) end = stpcpy(stpcpy(end, "|"), field.c_str());
  Answer(composed.get());
}

void CompareResultsOf(std::size_t size) {
  const std::string field(size, 'x');
  const auto answer_field = [field] { Answer(field.c_str()); };
  CompareResult("TarvoV1", u"TarvoV1", size, answer_field);
  CompareResult("TarvoV2", u"TarvoV2", size, answer_field);
  CompareResult("TarvoV3", u"TarvoV3", size, answer_field);
  CompareResult("TarvoV4", u"TarvoV4", size, answer_field);
  CompareResult("TarvoLastValue", u"TarvoLastValue", size, [field] { ComposeResult(field); });
}

}  // namespace

void CompareCalls() {
  CompareSetter("TarvoSetCaption", u"TarvoSetCaption", u"Enter a name ", SetCaption);
  CompareSetter("TarvoPreEnterText", u"TarvoPreEnterText", u"Ann|Lee|Main Street 1|", PreEnterText);
  CompareSetter("TarvoPosition", u"TarvoPosition", u"100|200|", Position);
  CompareSetter("TarvoSetFocus", u"TarvoSetFocus", u"2 is the field. ", SetFocus);
  CompareSetter("TarvoAllowEscape", u"TarvoAllowEscape", u"1 is for yes. ", AllowEscape);
  CompareSetter("TarvoSetCustomControls", u"TarvoSetCustomControls", u"3|4|2|0|",
                SetCustomControls);
  CompareSetter("TarvoPopUps", u"TarvoPopUps", u"Red\rGreen\rBlue|", PopUps);
  CompareSetter("TarvoFillListBox", u"TarvoFillListBox", u"A line of the list.\r", FillListBox);
  for (const std::size_t size : kSizes) CompareResultsOf(size);
  CompareResult("TarvoLC", u"TarvoLC", 1, [] { Answer("1"); });
  const auto version = std::make_shared<Call>(u"TarvoDialogVersion", u"");
  Compare("TarvoDialogVersion", kNanoseconds, {[version] { (*version)(); }}, "its operations, bare",
          {AnswerNumber}, kBar);
}

}  // namespace bench
