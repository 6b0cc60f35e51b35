#include "calculation/moments.h"

#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <optional>

#include "calculation/unicode.h"

namespace calculation {
namespace {

using Kind = Moment::Kind;
using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year;

constexpr long kSecondsOfDay = 86'400;
constexpr sys_days kDayZero = sys_days(year(1) / 1 / 1) - days(1);
constexpr long kLastDay = (sys_days(year(4000) / 12 / 31) - kDayZero).count();

constexpr std::u16string_view kDateSigns = u"yMd";

sys_days DayOf(const Moment& date) { return kDayZero + days(date.number.ToInteger()); }

// How the user's country writes moments.
struct Style {
  std::u16string date;  // d, M and y stand for the parts
  bool twelve_hours;
};

const Style& UserStyle() {
  static const Style style = [] {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
        icu::DateTimePatternGenerator::createInstance(UserLocale("LC_TIME"), status));
    if (U_FAILURE(status)) return Style{u"M/d/y", true};
    const icu::UnicodeString date = patterns->getBestPattern(u"yMd", status);
    const icu::UnicodeString time = patterns->getBestPattern(u"j", status);
    return Style{Units(date), time.indexOf(u'a') >= 0};
  }();
  return style;
}

std::string Padded(long number, std::size_t width) {
  std::string digits = std::to_string(number);
  return digits.size() < width ? digits.insert(0, width - digits.size(), '0') : digits;
}

std::string DateText(const Moment& date) {
  const DateParts parts = PartsOf(date);
  const std::array numbers{parts.year, parts.month, parts.day};
  const std::u16string& pattern = UserStyle().date;
  std::u16string text;
  for (std::size_t i = 0, end = 0; i < pattern.size(); i = end) {
    end = std::min(pattern.find_first_not_of(pattern[i], i), pattern.size());
    const std::size_t sign = kDateSigns.find(pattern[i]);
    if (sign == std::u16string_view::npos) {
      text.append(pattern, i, end - i);
    } else {
      text += ToUtf16(Padded(numbers[sign], pattern[i] == u'y' ? 4 : end - i));
    }
  }
  return ToUtf8(text);
}

// Hours, minutes and seconds with their decimals.
std::string TimeText(const Decimal& time, bool twelve_hours) {
  const Decimal length = time.IsNegative() ? -time : time;
  const long seconds = length.ToInteger();
  const long hours = seconds / 3600;
  const std::string fraction = (length - Decimal(seconds)).ToText();
  return (time.IsNegative() ? "-" : "") +
         std::to_string(twelve_hours ? (hours + 11) % 12 + 1 : hours) + ":" +
         Padded(seconds / 60 % 60, 2) + ":" + Padded(seconds % 60, 2) +
         (fraction == "0" ? "" : fraction) + (twelve_hours ? hours < 12 ? " AM" : " PM" : "");
}

// A year of two digits is the one of this century's that is at most 30 years ahead.
long WholeYear(long written) {
  if (written < 0 || written > 99) return written;
  const long now = PartsOf(CurrentMoment(Kind::kDate)).year;
  const long whole = now / 100 * 100 + written;
  return whole > now + 30 ? whole - 100 : whole;
}

// A date at the text's start, and where it ends.
std::optional<Moment> ReadDate(const std::string& text, int& end) {
  std::array<long, 3> numbers{};
  if (std::sscanf(text.c_str(), "%ld%*[^0-9]%ld%*[^0-9]%ld%n", numbers.data(), &numbers[1],
                  &numbers[2], &end) < 3) {
    return std::nullopt;
  }
  const std::u16string& pattern = UserStyle().date;
  const auto number = [&](char16_t sign) {  // by its place in the pattern
    const std::size_t place = pattern.find(sign);
    return numbers[static_cast<std::size_t>(
        std::count_if(kDateSigns.begin(), kDateSigns.end(),
                      [&](char16_t other) { return pattern.find(other) < place; }))];
  };
  const long month = number(u'M');
  const long day = number(u'd');
  const Moment date = MakeDate(month, day, WholeYear(number(u'y')));
  const DateParts parts = PartsOf(date);
  if (parts.month != month || parts.day != day) return std::nullopt;  // the 30th of February
  return date;
}

std::optional<Moment> ReadTime(const std::string& text) {
  long hours = 0;
  long minutes = 0;
  std::array<char, 32> seconds{'0'};
  std::array<char, 3> half{};
  int count = std::sscanf(text.c_str(), "%ld:%ld:%31[0-9.] %2[AaPpMm]", &hours, &minutes,
                          seconds.data(), half.data());
  if (count == 2) std::sscanf(text.c_str(), "%*d:%*d %2[AaPpMm]", half.data());
  if (count < 2 || minutes < 0 || minutes > 59) return std::nullopt;
  if ((half[0] | 0x20) == 'p' && hours < 12) hours += 12;
  if ((half[0] | 0x20) == 'a' && hours == 12) hours = 0;
  const std::optional<Decimal> rest = Decimal::FromText(seconds.data());
  if (!rest) return std::nullopt;
  const Decimal length = Decimal(std::labs(hours) * 3600 + minutes * 60) + *rest;
  return Moment{Kind::kTime, text.starts_with('-') ? -length : length};
}

std::optional<Moment> ReadTimestamp(const std::string& text) {
  int end = 0;
  const std::optional<Moment> date = ReadDate(text, end);
  if (!date) return std::nullopt;
  const std::optional<Moment> time = ReadTime(text.substr(static_cast<std::size_t>(end)));
  return MakeMoment(Kind::kTimestamp, (date->number - Decimal(1)) * Decimal(kSecondsOfDay) +
                                          (time ? time->number : Decimal()));
}

using Names = const icu::UnicodeString* (icu::DateFormatSymbols::*)(int& count) const;

Text NameAt(Names names, long index) {
  static UErrorCode status = U_ZERO_ERROR;
  static const icu::DateFormatSymbols symbols(UserLocale("LC_TIME"), status);
  int count = 0;
  const icu::UnicodeString* const first = (symbols.*names)(count);
  return index < count ? Text(Units(first[index])) : Text();
}

}  // namespace

Text AsText(const Moment& moment) {
  if (moment.kind == Kind::kTime) return {ToUtf16(TimeText(moment.number, false))};
  if (moment.kind == Kind::kDate) return {ToUtf16(DateText(moment))};
  const Decimal time = Remainder(moment.number, Decimal(kSecondsOfDay));
  return {ToUtf16(DateText(ToMoment(Kind::kDate, moment)) + " " +
                  TimeText(time, UserStyle().twelve_hours))};
}

std::optional<Moment> ReadMoment(Kind kind, std::u16string_view utf16) {
  const std::string text = ToUtf8(utf16);
  int end = 0;  // a date or a time may be part of a whole timestamp
  if (kind == Kind::kDate) return ReadDate(text, end);
  if (kind == Kind::kTimestamp) return ReadTimestamp(text);
  if (std::optional<Moment> time = ReadTime(text)) return time;
  const std::optional<Moment> timestamp = ReadTimestamp(text);
  return timestamp ? std::optional(ToMoment(kind, *timestamp)) : std::nullopt;
}

Moment ToMoment(Kind kind, const Value& value) {
  static constexpr std::array kNames{"date", "time", "timestamp"};
  if (const auto* text = std::get_if<Text>(&value)) {
    if (const std::optional<Moment> moment = ReadMoment(kind, *text)) return *moment;
    throw NumberError("\"" + ToUtf8(*text) + "\" is no " + kNames[static_cast<std::size_t>(kind)]);
  }
  const auto* moment = std::get_if<Moment>(&value);
  if (!moment || moment->kind == kind) return MakeMoment(kind, AsNumber(value));
  const Decimal day(kSecondsOfDay);
  if (moment->kind == Kind::kTimestamp && kind == Kind::kDate) {
    return MakeMoment(kind, FloorQuotient(moment->number, day) + Decimal(1));
  }
  if (moment->kind == Kind::kTimestamp) return MakeMoment(kind, Remainder(moment->number, day));
  if (moment->kind == Kind::kDate && kind == Kind::kTimestamp) {
    return MakeMoment(kind, (moment->number - Decimal(1)) * day);
  }
  throw NumberError("a time is no date, and a date no time");
}

Moment MakeMoment(Kind kind, const Decimal& number) {
  if (kind == Kind::kTime) return {kind, number};
  const bool is_date = kind == Kind::kDate;
  const Decimal whole = is_date ? number.Floor() : number;
  const long day =
      is_date ? whole.ToInteger() : FloorQuotient(number, Decimal(kSecondsOfDay)).ToInteger() + 1;
  if (day < 1 || day > kLastDay) throw NumberError("the date is not in the years 1 to 4000");
  return {kind, whole};
}

Moment MakeDate(long month, long day, long year_number) {
  // Whatever is further lies outside the years anyway.
  const auto near = [](long number) { return std::clamp(number, -4'000'000L, 4'000'000L); };
  const long months = 12 * near(year_number) + near(month) - 1;
  const long whole_year = months / 12 - (months % 12 < 0 ? 1 : 0);
  if (whole_year < -12'000 || whole_year > 16'000) return MakeMoment(Kind::kDate, Decimal());
  const sys_days first = year(static_cast<int>(whole_year)) /
                         std::chrono::month(static_cast<unsigned>(months - 12 * whole_year + 1)) /
                         1;
  return MakeMoment(Kind::kDate, Decimal((first - kDayZero).count() + near(day) - 1));
}

Moment CurrentMoment(Kind kind) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  Moment date = MakeDate(local.tm_mon + 1, local.tm_mday, local.tm_year + 1900);
  const Decimal time(local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
  if (kind == Kind::kDate) return date;
  if (kind == Kind::kTime) return {kind, time};
  return {kind, ToMoment(kind, date).number + time};
}

long CurrentMicrosecondsUtc() {
  const auto since_1970 = std::chrono::system_clock::now().time_since_epoch();
  const auto before = sys_days() - kDayZero - days(1);
  return std::chrono::duration_cast<std::chrono::microseconds>(since_1970 + before).count();
}

DateParts PartsOf(const Moment& date) {
  const sys_days day = DayOf(date);
  const std::chrono::year_month_day parts(day);
  return {static_cast<int>(parts.year()), static_cast<unsigned>(parts.month()),
          static_cast<unsigned>(parts.day()), std::chrono::weekday(day).c_encoding() + 1L,
          (day - sys_days(parts.year() / 1 / 1)).count() + 1};
}

// The fourth day of a week decides which year it belongs to.
long FiscalWeek(const Moment& date, long first_weekday) {
  const long into_week = (PartsOf(date).weekday - first_weekday + 7) % 7;
  const Moment fourth{Kind::kDate, date.number + Decimal(3 - into_week)};
  return (PartsOf(fourth).day_of_year - 1) / 7 + 1;
}

Text MonthName(long month) { return NameAt(&icu::DateFormatSymbols::getMonths, month - 1); }

// Sunday is number 1 there too.
Text WeekdayName(long weekday) { return NameAt(&icu::DateFormatSymbols::getWeekdays, weekday); }

}  // namespace calculation
