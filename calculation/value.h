#pragma once

#include <string>
#include <variant>

#include "calculation/decimal.h"
#include "calculation/text.h"

namespace calculation {

// A date, a time or both, as its number: days since the day before 1 January 1, or seconds since
// midnight, or seconds since that January's first midnight.
struct Moment {
  enum class Kind { kDate, kTime, kTimestamp };

  Kind kind;
  Decimal number;
};

using Value = std::variant<Text, Decimal, Moment>;

// No text grows beyond this many code units, so that doubling a text again and again ends with an
// error and not with the machine's memory.
inline constexpr std::size_t kLongestText = std::size_t{1} << 24;

inline std::string TooLong() {
  return "the text is longer than " + std::to_string(kLongestText) + " characters";
}

constexpr bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// The exponent that the text begins with, as in e3 and E-3; empty if it does not.
std::u16string_view ExponentAt(std::u16string_view text);

Text AsText(const Value& value);

// A text's number is made of all its digits, the first point among them and an exponent right
// behind them, and is negative if a minus sign stands before the first digit; a text without digits
// is 0. Throws NumberError if it is too large.
Decimal AsNumber(const Value& value);

// Every number but 0 is true.
bool AsTruth(const Value& value);

Value Truth(bool truth);

// Negative, 0 or positive. Numbers compare as numbers, and so does a text with a digit with a
// number; everything else compares as text, in the order of the user's language and without regard
// to case.
int Compare(const Value& first, const Value& second);

// Dates and times keep their kind if a number is added or taken away. The difference of two dates
// is a number of days, that of two times or timestamps a time.
Value Add(const Value& first, const Value& second);
Value Subtract(const Value& first, const Value& second);

}  // namespace calculation
