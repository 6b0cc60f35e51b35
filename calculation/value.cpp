#include "calculation/value.h"

#include <algorithm>

#include "calculation/interruption.h"
#include "calculation/moments.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

bool HasNumber(const Value& value) {
  const auto* text = std::get_if<Text>(&value);
  return !text || std::any_of(text->view().begin(), text->view().end(), IsDigit);
}

Decimal NumberIn(std::u16string_view text) {
  std::string digits;
  std::u16string_view exponent;
  bool has_point = false;
  bool negative = false;
  for (std::size_t i = 0; i < text.size() && exponent.empty(); ++i) {
    if (IsDigit(text[i])) {
      digits += static_cast<char>(text[i]);
    } else if (text[i] == u'.' && !has_point) {
      digits += '.';
      has_point = true;
    } else if (text[i] == u'-' && (digits.empty() || digits == ".")) {
      negative = true;
    } else if (i > 0 && IsDigit(text[i - 1])) {
      exponent = ExponentAt(text.substr(i));
    }
  }
  const Decimal number = Decimal::FromText(digits + ToUtf8(exponent)).value_or(Decimal());
  return negative ? -number : number;
}

// What the sum or difference of two values counts: the kind of moment that one of them is.
Value OfKind(const Value& first, const Value& second, Decimal number) {
  const auto* moment = std::get_if<Moment>(&first);
  const auto* other = std::get_if<Moment>(&second);
  if (!moment) moment = other;
  if (!moment) return number;
  if (other && other->kind == Moment::Kind::kTimestamp) moment = other;
  return MakeMoment(moment->kind, number);
}

}  // namespace

std::u16string_view ExponentAt(std::u16string_view text) {
  if (text.empty() || (text[0] | 0x20) != u'e') return {};
  const std::size_t digits = text.size() > 1 && (text[1] == u'-' || text[1] == u'+') ? 2 : 1;
  const std::size_t end = std::min(text.find_first_not_of(u"0123456789", digits), text.size());
  return end <= digits ? std::u16string_view() : text.substr(0, end);
}

Text AsText(const Value& value) {
  if (const auto* text = std::get_if<Text>(&value)) return *text;
  if (const auto* moment = std::get_if<Moment>(&value)) return AsText(*moment);
  const std::string digits = std::get<Decimal>(value).ToText();
  return std::u16string(digits.begin(), digits.end());
}

Decimal AsNumber(const Value& value) {
  if (const auto* number = std::get_if<Decimal>(&value)) return *number;
  if (const auto* moment = std::get_if<Moment>(&value)) return moment->number;
  return NumberIn(std::get<Text>(value));
}

bool AsTruth(const Value& value) { return !AsNumber(value).IsZero(); }

Value Truth(bool truth) { return Decimal(truth ? 1 : 0); }

int Compare(const Value& first, const Value& second) {
  CheckInterruption();
  const auto* text = std::get_if<Text>(&first);
  const auto* other_text = std::get_if<Text>(&second);
  if (text && other_text) return Collate(*text, *other_text);
  // A date stands beside what its text says.
  const auto* moment = std::get_if<Moment>(text ? &second : &first);
  if (moment && (text || other_text)) {
    if (const auto said = ReadMoment(moment->kind, text ? *text : *other_text)) {
      return text ? Compare(said->number, moment->number) : Compare(moment->number, said->number);
    }
  } else if (HasNumber(first) && HasNumber(second)) {
    return Compare(AsNumber(first), AsNumber(second));
  }
  return Collate(AsText(first), AsText(second));
}

Value Add(const Value& first, const Value& second) {
  return OfKind(first, second, AsNumber(first) + AsNumber(second));
}

Value Subtract(const Value& first, const Value& second) {
  const auto* from = std::get_if<Moment>(&first);
  const auto* taken = std::get_if<Moment>(&second);
  Decimal difference = AsNumber(first) - AsNumber(second);
  if (from && taken && from->kind == taken->kind) {
    if (from->kind == Moment::Kind::kDate) return difference;
    return Moment{Moment::Kind::kTime, std::move(difference)};
  }
  return OfKind(first, second, std::move(difference));
}

}  // namespace calculation
