// What the language knows of its surroundings: Get ( … ).

#include <unistd.h>

#include <array>
#include <cstdio>
#include <random>

#include "calculation/built_ins.h"
#include "calculation/moments.h"
#include "calculation/unicode.h"
#include "calculation/user_locale.h"

namespace calculation {
namespace {

using Kind = Moment::Kind;

Value FromHost(const Arguments& given) {
  return given.evaluator().externals().Get(ToUtf8(given.function()));
}

Value UserLanguage(const Arguments&) {
  icu::UnicodeString name;
  UserLocale("LC_MESSAGES").getDisplayLanguage(icu::Locale::getEnglish(), name);
  return Text(std::u16string_view(name.getBuffer(), static_cast<std::size_t>(name.length())));
}

// Of version 4: random but for six bits.
Value Uuid(const Arguments&) {
  std::random_device random;
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%08X-%04X-4%03X-%04X-%04X%08X", random(),
                random() & 0xFFFF, random() & 0xFFF, 0x8000 | (random() & 0x3FFF),
                random() & 0xFFFF, random());
  return Text(ToUtf16(text.data()));
}

Value UuidNumber(const Arguments&) {
  std::random_device random;
  Decimal number;
  for (int i = 0; i < 4; ++i) number = number * Decimal(1L << 32) + Decimal(random());
  return number;
}

constexpr BuiltIn kGetRows[] = {
    {u"Get ( ApplicationLanguage )", "", "the user's language, in English", "", UserLanguage},
    {u"Get ( CurrentDate )", "", "today's date", "",
     [](const Arguments&) -> Value { return CurrentMoment(Kind::kDate); }},
    {u"Get ( CurrentTime )", "", "the time of day", "",
     [](const Arguments&) -> Value { return CurrentMoment(Kind::kTime); }},
    {u"Get ( CurrentTimestamp )", "", "the date and the time of day", "",
     [](const Arguments&) -> Value { return CurrentMoment(Kind::kTimestamp); }},
    {u"Get ( CurrentTimeUTCMicroseconds )", "", "microseconds since the year 1, in world time", "",
     [](const Arguments&) -> Value { return Decimal(CurrentMicrosecondsUtc()); }},
    {u"Get ( CurrentTimeUTCMilliseconds )", "", "milliseconds since the year 1, in world time", "",
     [](const Arguments&) -> Value { return Decimal(CurrentMicrosecondsUtc() / 1000); }},
    {u"Get ( LastError )", "", "0: a step that fails ends its script here", "Get ( LastError )",
     [](const Arguments&) { return Truth(false); }},
    {u"Get ( LastMessageChoice )", "", "the button that ended the last Show Custom Dialog", "",
     FromHost},
    {u"Get ( ScreenHeight )", "", "the height of the main screen, in pixels", "", FromHost},
    {u"Get ( ScreenWidth )", "", "the width of the main screen, in pixels", "", FromHost},
    {u"Get ( ScriptName )", "", "the name of the script that runs", "", FromHost},
    {u"Get ( ScriptParameter )", "", "what Perform Script handed to the script that runs", "",
     FromHost},
    {u"Get ( ScriptResult )", "", "the Exit Script result of the last script performed", "",
     FromHost},
    {u"Get ( SystemLanguage )", "", "the user's language, in English", "", UserLanguage},
    {u"Get ( SystemPlatform )", "", "5, which stands for Linux", "Get ( SystemPlatform )",
     [](const Arguments&) -> Value { return Decimal(5); }},
    {u"Get ( UUID )", "", "a new identifier that nothing else has", "", Uuid},
    {u"Get ( UUIDNumber )", "", "the same as a number", "", UuidNumber},
};

}  // namespace

constexpr BuiltInGroup kGetFunctions{"Get", kGetRows};

}  // namespace calculation
