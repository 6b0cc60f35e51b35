// What the language knows of its surroundings: Get ( … ).

#include <unistd.h>

#include <array>
#include <cstdio>
#include <random>

#include "calculation/built_ins.h"
#include "calculation/moments.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

using Kind = Moment::Kind;

Value FromHost(const Arguments& given) {
  return given.evaluator().externals().Get(ToUtf8(given.function()));
}

Text UserLanguage() {
  icu::UnicodeString name;
  UserLocale("LC_MESSAGES").getDisplayLanguage(icu::Locale::getEnglish(), name);
  return Units(name);
}

// Of version 4: random but for six bits.
Text Uuid() {
  std::random_device random;
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%08X-%04X-4%03X-%04X-%04X%08X", random(),
                random() & 0xFFFF, random() & 0xFFF, 0x8000 | (random() & 0x3FFF),
                random() & 0xFFFF, random());
  return ToUtf16(text.data());
}

Decimal UuidNumber() {
  std::random_device random;
  Decimal number;
  for (int i = 0; i < 4; ++i) number = number * Decimal(1L << 32) + Decimal(random());
  return number;
}

constexpr BuiltIn kGetRows[] = {
    {u"Get ( ApplicationLanguage )", "", "the user's language, in English", "",
     Calling<UserLanguage>},
    {u"Get ( CurrentDate )", "", "today's date", "", [] { return CurrentMoment(Kind::kDate); }},
    {u"Get ( CurrentTime )", "", "the time of day", "", [] { return CurrentMoment(Kind::kTime); }},
    {u"Get ( CurrentTimestamp )", "", "the date and the time of day", "",
     [] { return CurrentMoment(Kind::kTimestamp); }},
    {u"Get ( CurrentTimeUTCMicroseconds )", "", "microseconds since the year 1, in world time", "",
     Calling<CurrentMicrosecondsUtc>},
    {u"Get ( CurrentTimeUTCMilliseconds )", "", "milliseconds since the year 1, in world time", "",
     [] { return CurrentMicrosecondsUtc() / 1000; }},
    {u"Get ( LastError )", "", "0: a step that fails ends its script here", "Get ( LastError )",
     [] { return 0; }},
    {u"Get ( LastMessageChoice )", "", "the button that ended the last Show Custom Dialog", "",
     FromHost},
    {u"Get ( ScreenHeight )", "", "the height of the main screen, in pixels", "", FromHost},
    {u"Get ( ScreenWidth )", "", "the width of the main screen, in pixels", "", FromHost},
    {u"Get ( ScriptName )", "", "the name of the script that runs", "", FromHost},
    {u"Get ( ScriptParameter )", "", "what Perform Script handed to the script that runs", "",
     FromHost},
    {u"Get ( ScriptResult )", "", "the Exit Script result of the last script performed", "",
     FromHost},
    {u"Get ( SystemLanguage )", "", "the user's language, in English", "", Calling<UserLanguage>},
    {u"Get ( SystemPlatform )", "", "5, which stands for Linux", "Get ( SystemPlatform )",
     [] { return 5; }},
    {u"Get ( UUID )", "", "a new identifier that nothing else has", "", Calling<Uuid>},
    {u"Get ( UUIDNumber )", "", "the same as a number", "", Calling<UuidNumber>},
};

}  // namespace

constexpr BuiltInGroup kGetFunctions{"Get", kGetRows};

}  // namespace calculation
