// The functions of the language that work on dates and times.

#include "calculation/built_ins.h"
#include "calculation/moments.h"

namespace calculation {
namespace {

using Kind = Moment::Kind;

DateParts DateOf(const Value& value) { return PartsOf(ToMoment(Kind::kDate, value)); }

template <long DateParts::*part>
Value DatePart(const Arguments& given) {
  return Decimal(DateOf(given.Get(0)).*part);
}

Decimal SecondsOf(const Value& value) { return ToMoment(Kind::kTime, value).number; }

template <Kind kind>
Value As(const Arguments& given) {
  return ToMoment(kind, given.Get(0));
}

constexpr BuiltIn kDateRows[] = {
    {u"Date", "month ; day ; year", "a date; months and days beyond their last carry over",
     "Date ( 2 ; 30 ; 2024 )", Calling<MakeDate>},
    {u"Day", "date", "the day of the month", "Day ( Date ( 2 ; 29 ; 2024 ) )",
     DatePart<&DateParts::day>},
    {u"DayName", "date", "the name of the day, in the user's language",
     "DayName ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Value& value) { return WeekdayName(DateOf(value).weekday); }},
    {u"DayOfWeek", "date", "the number of the day in its week; Sunday is 1",
     "DayOfWeek ( Date ( 2 ; 29 ; 2024 ) )", DatePart<&DateParts::weekday>},
    {u"DayOfYear", "date", "the number of the day in its year",
     "DayOfYear ( Date ( 2 ; 29 ; 2024 ) )", DatePart<&DateParts::day_of_year>},
    {u"GetAsDate", "value", "the date that a text, a number or a timestamp says",
     R"(GetAsDate ( "2/29/2024" ) + 1)", As<Kind::kDate>},
    {u"GetAsTime", "value", "the time that a text, a number or a timestamp says",
     R"(GetAsTime ( "2:30 PM" ))", As<Kind::kTime>},
    {u"GetAsTimestamp", "value", "the timestamp that a text, a number or a date says",
     R"(GetAsTimestamp ( "2/29/2024 14:30" ))", As<Kind::kTimestamp>},
    {u"Hour", "time", "the hours of a time", "Hour ( Time ( 14 ; 30 ; 5 ) )",
     [](const Value& value) { return SecondsOf(value).ToInteger() / 3600; }},
    {u"Minute", "time", "the minutes of a time", "Minute ( Time ( 14 ; 30 ; 5 ) )",
     [](const Value& value) { return SecondsOf(value).ToInteger() / 60 % 60; }},
    {u"Month", "date", "the number of the month", "Month ( Date ( 2 ; 29 ; 2024 ) )",
     DatePart<&DateParts::month>},
    {u"MonthName", "date", "the name of the month, in the user's language",
     "MonthName ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Value& value) { return MonthName(DateOf(value).month); }},
    {u"Seconds", "time", "the seconds of a time", "Seconds ( Time ( 14 ; 30 ; 5.5 ) )",
     [](const Value& value) { return Remainder(SecondsOf(value), Decimal(60)); }},
    {u"Time", "hours ; minutes ; seconds", "a time; what is too much carries over",
     "Time ( 4 ; 14 ; 70 )",
     [](const Decimal& hours, const Decimal& minutes, const Decimal& seconds) {
       return Moment{Kind::kTime, hours * Decimal(3600) + minutes * Decimal(60) + seconds};
     }},
    {u"Timestamp", "date ; time", "a date and a time in one",
     "Timestamp ( Date ( 2 ; 29 ; 2024 ) ; Time ( 14 ; 30 ; 0 ) )",
     [](const Value& date, const Value& time) {
       return Add(ToMoment(Kind::kTimestamp, ToMoment(Kind::kDate, date)),
                  ToMoment(Kind::kTime, time));
     }},
    {u"WeekOfYear", "date", "the number of the week in its year; the first holds 1 January",
     "WeekOfYear ( Date ( 1 ; 1 ; 2024 ) )",
     [](const Value& value) {
       const DateParts date = DateOf(value);
       const long weekday_of_first = (date.weekday - date.day_of_year % 7 + 7) % 7;  // from 0
       return (date.day_of_year - 1 + weekday_of_first) / 7 + 1;
     }},
    {u"WeekOfYearFiscal", "date ; weekday",
     "the number of the week in the year that has at least four of its days; weeks begin with "
     "this day",
     "WeekOfYearFiscal ( Date ( 1 ; 1 ; 2023 ) ; 2 )",
     [](const Value& date, long first_weekday) {
       return FiscalWeek(ToMoment(Kind::kDate, date), first_weekday);
     }},
    {u"Year", "date", "the year", "Year ( Date ( 2 ; 29 ; 2024 ) )", DatePart<&DateParts::year>},
};

}  // namespace

constexpr BuiltInGroup kDateFunctions{"Dates and times", kDateRows};

}  // namespace calculation
