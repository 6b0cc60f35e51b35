#include "calculation/value.h"

#include <algorithm>

#include "calculation/unicode.h"

namespace calculation {
namespace {

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

bool HasNumber(const Value& value) {
  const auto* text = std::get_if<std::u16string>(&value);
  return !text || std::any_of(text->begin(), text->end(), IsDigit);
}

Decimal NumberIn(const std::u16string& text) {
  std::string digits;
  bool has_point = false;
  bool negative = false;
  for (const char16_t unit : text) {
    if (IsDigit(unit)) {
      digits += static_cast<char>(unit);
    } else if (unit == u'.' && !has_point) {
      digits += '.';
      has_point = true;
    } else if (unit == u'-' && (digits.empty() || digits == ".")) {
      negative = true;
    }
  }
  if (digits.empty() || digits == ".") return {};
  const std::optional<Decimal> number = Decimal::FromText(digits);
  if (!number) throw NumberError("the text has too many digits for a number");
  return negative ? -*number : *number;
}

}  // namespace

std::u16string AsText(const Value& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return *text;
  const std::string digits = std::get<Decimal>(value).ToText();
  return {digits.begin(), digits.end()};
}

Decimal AsNumber(const Value& value) {
  if (const auto* number = std::get_if<Decimal>(&value)) return *number;
  return NumberIn(std::get<std::u16string>(value));
}

bool AsTruth(const Value& value) { return !AsNumber(value).IsZero(); }

Value Truth(bool truth) { return Decimal(truth ? 1 : 0); }

int Compare(const Value& first, const Value& second) {
  const bool one_is_number =
      std::holds_alternative<Decimal>(first) || std::holds_alternative<Decimal>(second);
  if (one_is_number && HasNumber(first) && HasNumber(second)) {
    return Compare(AsNumber(first), AsNumber(second));
  }
  return CompareIgnoringCase(AsText(first), AsText(second));
}

}  // namespace calculation
