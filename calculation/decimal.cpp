#include "calculation/decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace calculation {
namespace {

constexpr std::size_t kQuotientDecimals = 16;
constexpr long kLargestInteger = 999'999'999'999'999'999;
constexpr const char* kTooLarge = "the number is too large; expected at most 400 digits";

mpz_class TenTo(std::size_t exponent) {
  mpz_class power;
  mpz_ui_pow_ui(power.get_mpz_t(), 10, exponent);
  return power;
}

std::size_t CountDigits(const mpz_class& digits) {
  const std::size_t count = mpz_sizeinbase(digits.get_mpz_t(), 10);  // or one too many
  return count > 1 && mpz_cmpabs(digits.get_mpz_t(), TenTo(count - 1).get_mpz_t()) < 0 ? count - 1
                                                                                       : count;
}

bool HasTooManyDigits(const mpz_class& digits) {
  static const mpz_class limit = TenTo(Decimal::kMostDigits);
  return mpz_cmpabs(digits.get_mpz_t(), limit.get_mpz_t()) >= 0;
}

// Without the last `count` digits, halves away from zero.
mpz_class RoundedOff(mpz_class digits, std::size_t count) {
  if (count == 0) return digits;
  const mpz_class divisor = TenTo(count);
  const mpz_class half = divisor / 2;
  return (sgn(digits) < 0 ? mpz_class(digits - half) : mpz_class(digits + half)) / divisor;
}

// The zeros behind the point that say nothing.
void StripZeros(mpz_class& digits, std::size_t& scale) {
  if (sgn(digits) == 0) scale = 0;
  if (scale == 0 || !mpz_divisible_ui_p(digits.get_mpz_t(), 10)) return;
  static const mpz_class ten(10);
  const auto zeros = mpz_remove(digits.get_mpz_t(), digits.get_mpz_t(), ten.get_mpz_t());
  if (zeros > scale) digits *= TenTo(zeros - scale);
  scale -= std::min(zeros, scale);
}

// What follows the e of an exponent. One that is too long for any number is clamped.
std::optional<long> ReadExponent(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  const std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return {};
  long exponent = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), exponent);
  if (result.ec != std::errc()) exponent = text.starts_with('-') ? LONG_MIN : LONG_MAX;
  return std::clamp(exponent, -kLargestInteger, kLargestInteger);
}

void RequireDivisor(const Decimal& divisor) {
  if (divisor.IsZero()) throw NumberError("division by zero");
}

}  // namespace

Decimal::Decimal(mpz_class digits, std::size_t scale) : digits_(std::move(digits)), scale_(scale) {
  if (scale_ > kMostDigits) {
    digits_ = RoundedOff(digits_, scale_ - kMostDigits);
    scale_ = kMostDigits;
  }
  if (HasTooManyDigits(digits_)) {
    const std::size_t surplus = std::min(scale_, CountDigits(digits_) - kMostDigits);
    digits_ = RoundedOff(digits_, surplus);
    scale_ -= surplus;
  }
  StripZeros(digits_, scale_);
  if (HasTooManyDigits(digits_)) throw NumberError(kTooLarge);
}

std::optional<Decimal> Decimal::FromText(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
  const auto exponent = mark < text.size() ? ReadExponent(text.substr(mark + 1)) : 0;
  text = text.substr(0, mark);
  const std::size_t point = std::min(text.find('.'), text.size());
  std::string digits(text.substr(0, point));
  digits += text.substr(std::min(point + 1, text.size()));
  const bool are_digits = digits.find_first_not_of("0123456789") == std::string::npos;
  if (!exponent || digits.empty() || !are_digits) return std::nullopt;
  // What is before the point, or too far behind it, is known before any digit is converted.
  const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
  const long whole = static_cast<long>(point) - static_cast<long>(zeros) + *exponent;
  digits.erase(0, zeros);
  if (digits.empty() || whole < -static_cast<long>(kMostDigits)) return Decimal();
  if (whole > static_cast<long>(kMostDigits)) throw NumberError(kTooLarge);
  digits.resize(std::min<std::size_t>(digits.size(), 2 * kMostDigits + 2));
  const long scale = static_cast<long>(digits.size()) - whole;
  mpz_class magnitude(digits, 10);
  if (scale < 0) magnitude *= TenTo(static_cast<std::size_t>(-scale));
  if (negative) magnitude = -magnitude;
  return Decimal(std::move(magnitude), static_cast<std::size_t>(std::max(scale, 0L)));
}

std::string Decimal::ToText() const {
  std::string text = mpz_class(abs(digits_)).get_str();
  if (scale_ > text.size()) text.insert(0, scale_ - text.size(), '0');
  if (scale_ > 0) text.insert(text.size() - scale_, ".");
  return IsNegative() ? "-" + text : text;
}

long Decimal::ToInteger() const {
  const mpz_class whole = Truncated().digits_;
  if (mpz_cmpabs_ui(whole.get_mpz_t(), kLargestInteger) > 0)
    return IsNegative() ? -kLargestInteger : kLargestInteger;
  return whole.get_si();
}

Decimal Decimal::Cut(long decimals, bool rounds) const {
  const auto surplus = static_cast<long>(scale_) - decimals;
  if (surplus <= 0) return *this;
  if (surplus > static_cast<long>(CountDigits(digits_) + scale_)) return {};
  const auto count = static_cast<std::size_t>(surplus);
  const mpz_class unit = TenTo(count);
  return {(rounds ? RoundedOff(digits_, count) : mpz_class(digits_ / unit)) * unit, scale_};
}

Decimal Decimal::Floor() const { return FloorQuotient(*this, Decimal(1)); }

Decimal Decimal::operator-() const { return {-digits_, scale_}; }

Decimal operator+(const Decimal& first, const Decimal& second) {
  const std::size_t scale = std::max(first.scale_, second.scale_);
  return {first.DigitsAt(scale) + second.DigitsAt(scale), scale};
}

Decimal operator-(const Decimal& first, const Decimal& second) {
  const std::size_t scale = std::max(first.scale_, second.scale_);
  return {first.DigitsAt(scale) - second.DigitsAt(scale), scale};
}

Decimal operator*(const Decimal& first, const Decimal& second) {
  return {first.digits_ * second.digits_, first.scale_ + second.scale_};
}

Decimal operator/(const Decimal& dividend, const Decimal& divisor) {
  RequireDivisor(divisor);
  const std::size_t scale = std::max({kQuotientDecimals, dividend.scale_, divisor.scale_});
  // One decimal more than is kept, for the rounding.
  const mpz_class quotient = dividend.digits_ * TenTo(divisor.scale_ + scale + 1) /
                             (divisor.digits_ * TenTo(dividend.scale_));
  return {RoundedOff(quotient, 1), scale};
}

Decimal FloorQuotient(const Decimal& dividend, const Decimal& divisor) {
  RequireDivisor(divisor);
  const std::size_t scale = std::max(dividend.scale_, divisor.scale_);
  mpz_class quotient;
  mpz_fdiv_q(quotient.get_mpz_t(), dividend.DigitsAt(scale).get_mpz_t(),
             divisor.DigitsAt(scale).get_mpz_t());
  return {std::move(quotient), 0};
}

Decimal Remainder(const Decimal& dividend, const Decimal& divisor) {
  RequireDivisor(divisor);
  const std::size_t scale = std::max(dividend.scale_, divisor.scale_);
  mpz_class rest;
  mpz_fdiv_r(rest.get_mpz_t(), dividend.DigitsAt(scale).get_mpz_t(),
             divisor.DigitsAt(scale).get_mpz_t());
  return {std::move(rest), scale};
}

Decimal Power(const Decimal& base, const Decimal& exponent) {
  if (exponent.IsNegative()) return Decimal(1) / Power(base, -exponent);
  if (!exponent.IsWhole()) {
    std::array<char, 512> text{};
    const auto real = [](const Decimal& decimal) {
      return std::strtod(decimal.ToText().c_str(), nullptr);
    };
    std::snprintf(text.data(), text.size(), "%.15f", std::pow(real(base), real(exponent)));
    const std::optional<Decimal> power = Decimal::FromText(text.data());
    if (!power) throw NumberError("the power is no number, or is too large");
    return *power;
  }
  Decimal result(1);
  Decimal square = base;
  for (long rest = exponent.ToInteger(); rest > 0 && !result.IsZero(); rest /= 2) {
    if (rest % 2 == 1) result = result * square;
    if (rest > 1) square = square * square;
  }
  return result;
}

int Compare(const Decimal& first, const Decimal& second) {
  if (first.scale_ == second.scale_) return cmp(first.digits_, second.digits_);
  const std::size_t scale = std::max(first.scale_, second.scale_);
  return cmp(first.DigitsAt(scale), second.DigitsAt(scale));
}

// The digits with zeros behind them, so that `scale` of them are decimals.
mpz_class Decimal::DigitsAt(std::size_t scale) const {
  return scale == scale_ ? digits_ : mpz_class(digits_ * TenTo(scale - scale_));
}

}  // namespace calculation
