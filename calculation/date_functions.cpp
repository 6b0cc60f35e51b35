// The functions of the language that work on dates and times.

#include "calculation/built_ins.h"
#include "calculation/moments.h"

namespace calculation {
namespace {

using Kind = Moment::Kind;

DateParts DateOf(const Arguments& given) { return PartsOf(ToMoment(Kind::kDate, given.Get(0))); }

Decimal SecondsOf(const Arguments& given) { return ToMoment(Kind::kTime, given.Get(0)).number; }

constexpr BuiltIn kDateRows[] = {
    {u"Date", "month ; day ; year", "a date; months and days beyond their last carry over",
     "Date ( 2 ; 30 ; 2024 )",
     [](const Arguments& given) -> Value {
       const long month = given.Integer(0);
       const long day = given.Integer(1);
       return MakeDate(month, day, given.Integer(2));
     }},
    {u"Day", "date", "the day of the month", "Day ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Arguments& given) -> Value { return Decimal(DateOf(given).day); }},
    {u"DayName", "date", "the name of the day, in the user's language",
     "DayName ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Arguments& given) -> Value { return WeekdayName(DateOf(given).weekday); }},
    {u"DayOfWeek", "date", "the number of the day in its week; Sunday is 1",
     "DayOfWeek ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Arguments& given) -> Value { return Decimal(DateOf(given).weekday); }},
    {u"DayOfYear", "date", "the number of the day in its year",
     "DayOfYear ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Arguments& given) -> Value { return Decimal(DateOf(given).day_of_year); }},
    {u"GetAsDate", "value", "the date that a text, a number or a timestamp says",
     R"(GetAsDate ( "2/29/2024" ) + 1)",
     [](const Arguments& given) -> Value { return ToMoment(Kind::kDate, given.Get(0)); }},
    {u"GetAsTime", "value", "the time that a text, a number or a timestamp says",
     R"(GetAsTime ( "2:30 PM" ))",
     [](const Arguments& given) -> Value { return ToMoment(Kind::kTime, given.Get(0)); }},
    {u"GetAsTimestamp", "value", "the timestamp that a text, a number or a date says",
     R"(GetAsTimestamp ( "2/29/2024 14:30" ))",
     [](const Arguments& given) -> Value { return ToMoment(Kind::kTimestamp, given.Get(0)); }},
    {u"Hour", "time", "the hours of a time", "Hour ( Time ( 14 ; 30 ; 5 ) )",
     [](const Arguments& given) -> Value { return Decimal(SecondsOf(given).ToInteger() / 3600); }},
    {u"Minute", "time", "the minutes of a time", "Minute ( Time ( 14 ; 30 ; 5 ) )",
     [](const Arguments& given) -> Value {
       return Decimal(SecondsOf(given).ToInteger() / 60 % 60);
     }},
    {u"Month", "date", "the number of the month", "Month ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Arguments& given) -> Value { return Decimal(DateOf(given).month); }},
    {u"MonthName", "date", "the name of the month, in the user's language",
     "MonthName ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Arguments& given) -> Value { return MonthName(DateOf(given).month); }},
    {u"Seconds", "time", "the seconds of a time", "Seconds ( Time ( 14 ; 30 ; 5.5 ) )",
     [](const Arguments& given) -> Value { return Remainder(SecondsOf(given), Decimal(60)); }},
    {u"Time", "hours ; minutes ; seconds", "a time; what is too much carries over",
     "Time ( 4 ; 14 ; 70 )",
     [](const Arguments& given) -> Value {
       const Decimal hours = given.Number(0) * Decimal(3600);
       const Decimal minutes = given.Number(1) * Decimal(60);
       return Moment{Kind::kTime, hours + minutes + given.Number(2)};
     }},
    {u"Timestamp", "date ; time", "a date and a time in one",
     "Timestamp ( Date ( 2 ; 29 ; 2024 ) ; Time ( 14 ; 30 ; 0 ) )",
     [](const Arguments& given) -> Value {
       const Moment date = ToMoment(Kind::kDate, given.Get(0));
       return Add(ToMoment(Kind::kTimestamp, date), ToMoment(Kind::kTime, given.Get(1)));
     }},
    {u"WeekOfYear", "date", "the number of the week in its year; the first holds 1 January",
     "WeekOfYear ( Date ( 1 ; 1 ; 2024 ) )",
     [](const Arguments& given) -> Value {
       const DateParts date = DateOf(given);
       const long weekday_of_first = (date.weekday - date.day_of_year % 7 + 7) % 7;  // from 0
       return Decimal((date.day_of_year - 1 + weekday_of_first) / 7 + 1);
     }},
    {u"WeekOfYearFiscal", "date ; weekday",
     "the number of the week in the year that has at least four of its days; weeks begin with "
     "this day",
     "WeekOfYearFiscal ( Date ( 1 ; 1 ; 2023 ) ; 2 )",
     [](const Arguments& given) -> Value {
       const Moment date = ToMoment(Kind::kDate, given.Get(0));
       return Decimal(FiscalWeek(date, given.Integer(1)));
     }},
    {u"Year", "date", "the year", "Year ( Date ( 2 ; 29 ; 2024 ) )",
     [](const Arguments& given) -> Value { return Decimal(DateOf(given).year); }},
};

}  // namespace

constexpr BuiltInGroup kDateFunctions{"Dates and times", kDateRows};

}  // namespace calculation
