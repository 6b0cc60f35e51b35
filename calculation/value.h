#pragma once

#include <string>
#include <variant>

#include "calculation/decimal.h"

namespace calculation {

// A text or a number.
using Value = std::variant<std::u16string, Decimal>;

// No text grows beyond this many code units, so that doubling a text again and again ends with an
// error and not with the machine's memory.
inline constexpr std::size_t kLongestText = std::size_t{1} << 24;

std::u16string AsText(const Value& value);

// A text's number is made of all its digits, the first point among them, and is negative where a
// minus sign stands before the first digit; a text without digits is 0. Throws NumberError where
// they are too many.
Decimal AsNumber(const Value& value);

// Every number but 0 is true.
bool AsTruth(const Value& value);

Value Truth(bool truth);

// Negative, 0 or positive. Numbers compare as numbers, and so does a text with a digit with a
// number; everything else compares as text, without regard to case.
int Compare(const Value& first, const Value& second);

}  // namespace calculation
