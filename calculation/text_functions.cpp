#include "calculation/text_functions.h"

#include <algorithm>
#include <utility>

#include "calculation/text_search.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

constexpr std::size_t kNone = std::u16string_view::npos;
constexpr long long kLastCodePoint = 0x10FFFF;

// A count or a place within `text`.
std::size_t Within(const std::u16string& text, long long number) {
  return static_cast<std::size_t>(std::clamp(number, 0LL, static_cast<long long>(text.size())));
}

// The number of characters from character `start` on, which may stand before the text.
std::u16string Part(const std::u16string& text, long long start, long long count) {
  const std::size_t begin = Within(text, start - 1);
  const std::size_t end = Within(text, std::max(start, 1LL) - 1 + std::max(count, 0LL));
  return text.substr(begin, end - begin);
}

std::u16string Substitute(const std::u16string& text, std::u16string search,
                          const std::u16string& replacement) {
  const TextSearch finder(std::move(search));
  std::u16string result;
  std::size_t done = 0;
  for (std::size_t found; (found = finder.Find(text, done)) != kNone;) {
    result.append(text, done, found - done);
    result += replacement;
    if (result.size() > kLongestText) return result;  // is refused where it came from
    done = found + finder.length();
  }
  return result.append(text, done);
}

std::u16string Reversed(std::u16string text) {
  std::reverse(text.begin(), text.end());
  return text;
}

// The place from 0 of occurrence number `occurrence` at or after `from`.
std::size_t FindOccurrence(const std::u16string& text, std::u16string search, std::size_t from,
                           long long occurrence) {
  const TextSearch finder(std::move(search));
  for (std::size_t found; (found = finder.Find(text, from)) != kNone;
       from = found + finder.length()) {
    if (--occurrence == 0) return found;
  }
  return kNone;
}

// The last occurrences that begin at or before character `start`, counted backwards.
std::size_t FindBackwards(const std::u16string& text, const std::u16string& search, long long start,
                          long long occurrence) {
  const std::size_t end = Within(text, start - 1 + static_cast<long long>(search.size()));
  const std::size_t found =
      FindOccurrence(Reversed(text.substr(0, end)), Reversed(search), 0, occurrence);
  return found == kNone ? kNone : end - found - search.size();
}

}  // namespace

Value CharFunction(const Arguments& arguments) {
  const long long code = arguments.Integer(0);
  if (code < 0 || code > kLastCodePoint) {
    throw NumberError("expected the number of a character, 0 to 1114111");
  }
  if (code <= 0xFFFF) return std::u16string(1, static_cast<char16_t>(code));
  return std::u16string{static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)),
                        static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF))};
}

Value CodeFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  if (text.empty()) return text;
  return Decimal(static_cast<long long>(CodePointAt(text, 0)));
}

Value ExactFunction(const Arguments& arguments) {
  const std::u16string first = arguments.Text(0);
  return Truth(first == arguments.Text(1));
}

Value LeftFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  return text.substr(0, Within(text, arguments.Integer(1)));
}

Value LengthFunction(const Arguments& arguments) {
  return Decimal(static_cast<long long>(arguments.Text(0).size()));
}

Value LowerFunction(const Arguments& arguments) { return Lowercase(arguments.Text(0)); }

Value MiddleFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  const long long start = arguments.Integer(1);
  return Part(text, start, arguments.Integer(2));
}

Value PatternCountFunction(const Arguments& arguments) {
  const std::u16string text = Lowercase(arguments.Text(0));
  const TextSearch finder(Lowercase(arguments.Text(1)));
  long long count = 0;
  for (std::size_t found, from = 0; (found = finder.Find(text, from)) != kNone; ++count) {
    from = found + finder.length();
  }
  return Decimal(count);
}

Value PositionFunction(const Arguments& arguments) {
  const std::u16string text = Lowercase(arguments.Text(0));
  const std::u16string search = Lowercase(arguments.Text(1));
  const long long start = arguments.Integer(2);
  const long long occurrence = arguments.Integer(3);
  const std::size_t found = occurrence < 0
                                ? FindBackwards(text, search, start, -occurrence)
                                : FindOccurrence(text, search, Within(text, start - 1), occurrence);
  return Decimal(found == kNone ? 0 : static_cast<long long>(found) + 1);
}

Value QuoteFunction(const Arguments& arguments) {
  std::u16string quoted = u"\"";
  for (const char16_t unit : arguments.Text(0)) {
    if (unit == u'"' || unit == u'\\' || unit == u'¶') quoted += u'\\';
    quoted += unit == u'\r' ? u'¶' : unit;
  }
  return quoted + u"\"";
}

Value ReplaceFunction(const Arguments& arguments) {
  std::u16string text = arguments.Text(0);
  const std::size_t start = Within(text, arguments.Integer(1) - 1);
  const std::size_t count = Within(text, arguments.Integer(2));
  return text.replace(start, count, arguments.Text(3));
}

Value RightFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  return text.substr(text.size() - Within(text, arguments.Integer(1)));
}

Value SubstituteFunction(const Arguments& arguments) {
  std::u16string text = arguments.Text(0);
  if (!arguments.Pair(1)) {
    std::u16string search = arguments.Text(1);
    return Substitute(text, std::move(search), arguments.Text(2));
  }
  for (std::size_t i = 1; arguments.Has(i); ++i) {
    const Arguments pair = *arguments.Pair(i);
    std::u16string search = pair.Text(0);
    text = Substitute(text, std::move(search), pair.Text(1));
  }
  return text;
}

Value TrimFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  const std::size_t begin = std::min(text.find_first_not_of(u' '), text.size());
  return text.substr(begin, text.find_last_not_of(u' ') + 1 - begin);
}

Value UpperFunction(const Arguments& arguments) { return Uppercase(arguments.Text(0)); }

}  // namespace calculation
