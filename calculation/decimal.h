#pragma once

#include <gmpxx.h>

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
// its operands if they have more. Halves are rounded away from zero. What needs more than 400
// digits before the point throws NumberError, a literal as well as a result.
class Decimal {
 public:
  static constexpr std::size_t kMostDigits = 400;

  Decimal() = default;
  explicit Decimal(long value) : digits_(value) {}

  // A sign or none, digits, at most one point, an exponent (e3, E-3) or none. Nothing if `text` is
  // something else.
  static std::optional<Decimal> FromText(std::string_view text);

  // Without exponent, needless zeros or a plus sign; what is below 1 begins with its point.
  std::string ToText() const;

  bool IsZero() const { return sgn(digits_) == 0; }
  bool IsNegative() const { return sgn(digits_) < 0; }
  bool IsWhole() const { return scale_ == 0; }

  // The whole part; beyond 18 digits clamped to them.
  long ToInteger() const;

  // To `decimals` places; a negative number of them means tens, hundreds and so on.
  Decimal Rounded(long decimals) const { return Cut(decimals, true); }
  Decimal Truncated(long decimals = 0) const { return Cut(decimals, false); }
  Decimal Floor() const;  // the next whole number that is not above

  Decimal operator-() const;
  friend Decimal operator+(const Decimal& first, const Decimal& second);
  friend Decimal operator-(const Decimal& first, const Decimal& second);
  friend Decimal operator*(const Decimal& first, const Decimal& second);
  friend Decimal operator/(const Decimal& dividend, const Decimal& divisor);

  // The whole quotient that is not above, and what then remains, which has the divisor's sign.
  friend Decimal FloorQuotient(const Decimal& dividend, const Decimal& divisor);
  friend Decimal Remainder(const Decimal& dividend, const Decimal& divisor);

  // Whole exponents are exact as products are; others have the 15 digits of a double.
  friend Decimal Power(const Decimal& base, const Decimal& exponent);

  // Negative, 0 or positive.
  friend int Compare(const Decimal& first, const Decimal& second);

 private:
  Decimal(mpz_class digits, std::size_t scale);

  mpz_class DigitsAt(std::size_t scale) const;
  Decimal Cut(long decimals, bool rounds) const;

  mpz_class digits_;       // with the sign
  std::size_t scale_ = 0;  // how many of the digits are decimals; the last of them is not 0
};

}  // namespace calculation
