#pragma once

#include <optional>
#include <string_view>

#include "calculation/value.h"

// Dates, times and timestamps, from the year 1 to 4000 of our calendar. They are written as is
// usual in the user's country; a time counts hours up from 0 and may be longer than a day.

namespace calculation {

Text AsText(const Moment& moment);

// Nothing if `utf16` says none.
std::optional<Moment> ReadMoment(Moment::Kind kind, std::u16string_view utf16);

// What `value` says: a moment of another kind by its part, a number by what it counts, a text as
// the user's country writes it. Throws NumberError if it says none.
Moment ToMoment(Moment::Kind kind, const Value& value);

// Throws NumberError if the moment lies outside the years.
Moment MakeMoment(Moment::Kind kind, const Decimal& number);

// Months and days beyond their last carry over, and so do those below 1.
Moment MakeDate(long month, long day, long year);

Moment CurrentMoment(Moment::Kind kind);
long CurrentMicrosecondsUtc();  // since the first January of all

// Parts of dates; a week has seven days from Sunday, number 1.
struct DateParts {
  long year, month, day;
  long weekday;
  long day_of_year;
};
DateParts PartsOf(const Moment& date);

// The number of the week in the year that has at least four of its days.
long FiscalWeek(const Moment& date, long first_weekday);

// In the user's language.
Text MonthName(long month);
Text WeekdayName(long weekday);

}  // namespace calculation
