#include "calculation/decimal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace calculation {
namespace {

constexpr std::size_t kQuotientDecimals = 16;
constexpr std::size_t kIntegerDigits = 18;
constexpr std::size_t kMostDecimals = Decimal::kMostDigits;

// Magnitudes are digits, the most significant first, without leading zeros.

void StripLeadingZeros(std::string& digits) {
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
}

int CompareMagnitudes(const std::string& first, const std::string& second) {
  if (first.size() != second.size()) return first.size() < second.size() ? -1 : 1;
  return first.compare(second);
}

std::string AddMagnitudes(std::string first, std::string second) {
  if (first.size() < second.size()) std::swap(first, second);
  second.insert(0, first.size() - second.size(), '0');
  int carry = 0;
  for (std::size_t i = first.size(); i-- > 0;) {
    const int sum = first[i] - '0' + second[i] - '0' + carry;
    first[i] = static_cast<char>('0' + sum % 10);
    carry = sum / 10;
  }
  if (carry != 0) first.insert(first.begin(), '1');
  return first;
}

// REQUIRES: first >= second.
std::string SubtractMagnitudes(std::string first, const std::string& second) {
  const std::size_t offset = first.size() - second.size();
  int borrow = 0;
  for (std::size_t i = first.size(); i-- > 0 && (i >= offset || borrow != 0);) {
    int difference = first[i] - '0' - borrow - (i >= offset ? second[i - offset] - '0' : 0);
    borrow = difference < 0 ? 1 : 0;
    if (difference < 0) difference += 10;
    first[i] = static_cast<char>('0' + difference);
  }
  StripLeadingZeros(first);
  return first;
}

std::string MultiplyMagnitudes(const std::string& first, const std::string& second) {
  std::vector<int> columns(first.size() + second.size(), 0);
  for (std::size_t i = first.size(); i-- > 0;) {
    for (std::size_t j = second.size(); j-- > 0;) {
      columns[i + j + 1] += (first[i] - '0') * (second[j] - '0');
    }
  }
  std::string product(columns.size(), '0');
  int carry = 0;
  for (std::size_t i = columns.size(); i-- > 0;) {
    const int column = columns[i] + carry;
    product[i] = static_cast<char>('0' + column % 10);
    carry = column / 10;
  }
  StripLeadingZeros(product);
  return product;
}

// Long division; the remainder is dropped.
std::string DivideMagnitudes(const std::string& dividend, const std::string& divisor) {
  std::string quotient;
  std::string rest;
  for (const char digit : dividend) {
    if (!rest.empty() || digit != '0') rest += digit;
    char times = '0';
    while (CompareMagnitudes(rest, divisor) >= 0) {
      rest = SubtractMagnitudes(std::move(rest), divisor);
      ++times;
    }
    quotient += times;
  }
  StripLeadingZeros(quotient);
  return quotient;
}

}  // namespace

Decimal::Decimal(long long value)
    : Decimal(value < 0, std::to_string(value).substr(value < 0 ? 1 : 0), 0) {}

Decimal::Decimal(bool negative, std::string digits, std::size_t scale)
    : negative_(negative), digits_(std::move(digits)), scale_(scale) {
  StripLeadingZeros(digits_);
  if (scale_ > kMostDecimals) DropDecimals(scale_ - kMostDecimals);
  if (digits_.size() > kMostDigits) DropDecimals(std::min(scale_, digits_.size() - kMostDigits));
  if (digits_.size() > kMostDigits) throw NumberError("the number is too large");
  Trim();
}

std::optional<Decimal> Decimal::FromText(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  std::string digits(text.substr(0, point));
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  digits += decimals;
  const bool is_number =
      !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
  StripLeadingZeros(digits);
  if (!is_number || digits.size() > kMostDigits || decimals.size() > kMostDecimals) {
    return std::nullopt;
  }
  return Decimal(negative, std::move(digits), decimals.size());
}

std::string Decimal::ToText() const {
  if (IsZero()) return "0";
  std::string text = digits_;
  if (scale_ >= text.size()) text.insert(0, scale_ + 1 - text.size(), '0');
  if (scale_ > 0) text.insert(text.size() - scale_, ".");
  return negative_ ? "-" + text : text;
}

long long Decimal::ToInteger() const {
  const Decimal whole = Truncated();
  if (whole.IsZero()) return 0;
  const std::string digits =
      whole.digits_.size() > kIntegerDigits ? std::string(kIntegerDigits, '9') : whole.digits_;
  return (negative_ ? -1 : 1) * std::strtoll(digits.c_str(), nullptr, 10);
}

Decimal Decimal::Rounded(long long decimals) const {
  const long long surplus = static_cast<long long>(scale_) - decimals;
  if (surplus <= 0) return *this;
  if (surplus > static_cast<long long>(digits_.size())) return {};
  Decimal rounded = *this;
  rounded.scale_ += static_cast<std::size_t>(std::max(-decimals, 0LL));
  rounded.DropDecimals(static_cast<std::size_t>(surplus));
  if (decimals < 0) rounded.digits_.append(static_cast<std::size_t>(-decimals), '0');
  return {rounded.negative_, rounded.digits_, rounded.scale_};
}

Decimal Decimal::Truncated() const {
  if (scale_ >= digits_.size()) return {};
  return {negative_, digits_.substr(0, digits_.size() - scale_), 0};
}

Decimal Decimal::operator-() const {
  Decimal opposite = *this;
  opposite.negative_ = !negative_ && !IsZero();
  return opposite;
}

Decimal operator+(const Decimal& first, const Decimal& second) {
  const std::size_t scale = std::max(first.scale_, second.scale_);
  std::string a = first.DigitsAt(scale);
  std::string b = second.DigitsAt(scale);
  if (first.negative_ == second.negative_) {
    return {first.negative_, AddMagnitudes(std::move(a), std::move(b)), scale};
  }
  if (CompareMagnitudes(a, b) < 0) {
    return {second.negative_, SubtractMagnitudes(std::move(b), a), scale};
  }
  return {first.negative_, SubtractMagnitudes(std::move(a), b), scale};
}

Decimal operator-(const Decimal& first, const Decimal& second) { return first + -second; }

Decimal operator*(const Decimal& first, const Decimal& second) {
  return {first.negative_ != second.negative_, MultiplyMagnitudes(first.digits_, second.digits_),
          first.scale_ + second.scale_};
}

Decimal operator/(const Decimal& dividend, const Decimal& divisor) {
  if (divisor.IsZero()) throw NumberError("division by zero");
  const std::size_t scale = std::max({kQuotientDecimals, dividend.scale_, divisor.scale_});
  // One decimal more than is kept, for the rounding.
  std::string numerator = dividend.digits_ + std::string(divisor.scale_ + scale + 1, '0');
  const std::string denominator = divisor.digits_ + std::string(dividend.scale_, '0');
  Decimal quotient;
  quotient.negative_ = dividend.negative_ != divisor.negative_;
  quotient.digits_ = DivideMagnitudes(numerator, denominator);
  quotient.scale_ = scale + 1;
  quotient.DropDecimals(1);
  return {quotient.negative_, quotient.digits_, quotient.scale_};
}

Decimal Power(const Decimal& base, const Decimal& exponent) {
  if (exponent.negative_) return Decimal(1) / Power(base, -exponent);
  if (exponent.scale_ > 0) {
    char text[512];
    std::snprintf(text, sizeof text, "%.15f", std::pow(base.ToDouble(), exponent.ToDouble()));
    const std::optional<Decimal> power = Decimal::FromText(text);
    if (!power) throw NumberError("the power is no number, or is too large");
    return *power;
  }
  Decimal result(1);
  Decimal square = base;
  for (long long rest = exponent.ToInteger(); rest > 0 && !result.IsZero(); rest /= 2) {
    if (rest % 2 == 1) result = result * square;
    if (rest > 1) square = square * square;
  }
  return result;
}

int Compare(const Decimal& first, const Decimal& second) {
  const Decimal difference = first - second;
  if (difference.IsZero()) return 0;
  return difference.IsNegative() ? -1 : 1;
}

// The digits with zeros behind them, so that `scale` of them are decimals.
std::string Decimal::DigitsAt(std::size_t scale) const {
  return IsZero() ? "" : digits_ + std::string(scale - scale_, '0');
}

// Rounds the last `count` digits away.
void Decimal::DropDecimals(std::size_t count) {
  digits_.insert(0, count > digits_.size() ? count - digits_.size() : 0, '0');
  const std::size_t kept = digits_.size() - count;
  const bool up = count > 0 && digits_[kept] >= '5';
  digits_.resize(kept);
  StripLeadingZeros(digits_);
  if (up) digits_ = AddMagnitudes(digits_, "1");
  scale_ -= count;
}

void Decimal::Trim() {
  while (scale_ > 0 && !digits_.empty() && digits_.back() == '0') {
    digits_.pop_back();
    --scale_;
  }
  if (digits_.empty()) {
    negative_ = false;
    scale_ = 0;
  }
}

double Decimal::ToDouble() const { return std::strtod(ToText().c_str(), nullptr); }

}  // namespace calculation
