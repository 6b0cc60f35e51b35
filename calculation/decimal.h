#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace calculation {

// A calculation that has no number as its result. what() is one clause for the user.
class NumberError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A decimal number as people write it: 0.1 is one tenth. Sums, differences and products are exact
// up to 400 digits, beyond which decimals are rounded; a quotient has 16 decimals, or as many as
// its operands where they have more. Halves are rounded away from zero. What needs more than 400
// digits before the point throws NumberError.
class Decimal {
 public:
  static constexpr std::size_t kMostDigits = 400;

  Decimal() = default;
  explicit Decimal(long long value);

  // A sign or none, digits, at most one point. Nothing where `text` is something else, or holds
  // more than 400 digits.
  static std::optional<Decimal> FromText(std::string_view text);

  // The same form, without exponent, needless zeros or a plus sign.
  std::string ToText() const;

  bool IsZero() const { return digits_.empty(); }
  bool IsNegative() const { return negative_; }

  // The whole part; beyond 18 digits clamped to them.
  long long ToInteger() const;

  // To `decimals` places; a negative number of them rounds to tens, hundreds and so on.
  Decimal Rounded(long long decimals) const;
  Decimal Truncated() const;

  Decimal operator-() const;
  friend Decimal operator+(const Decimal& first, const Decimal& second);
  friend Decimal operator-(const Decimal& first, const Decimal& second);
  friend Decimal operator*(const Decimal& first, const Decimal& second);
  friend Decimal operator/(const Decimal& dividend, const Decimal& divisor);

  // Whole exponents are exact as products are; others have the 15 digits of a double.
  friend Decimal Power(const Decimal& base, const Decimal& exponent);

  // Negative, 0 or positive.
  friend int Compare(const Decimal& first, const Decimal& second);

 private:
  Decimal(bool negative, std::string digits, std::size_t scale);

  std::string DigitsAt(std::size_t scale) const;
  void DropDecimals(std::size_t count);
  void Trim();
  double ToDouble() const;

  bool negative_ = false;
  std::string digits_;     // without leading zeros; none of zero
  std::size_t scale_ = 0;  // how many of the digits are decimals; the last of them is not 0
};

}  // namespace calculation
