#include "calculation/list_functions.h"

#include <algorithm>
#include <vector>

namespace calculation {
namespace {

// The values share the text's storage.
std::vector<std::u16string_view> ValuesOf(std::u16string_view text) {
  std::vector<std::u16string_view> values;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(u'\r'), text.size());
    values.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return values;
}

// Values `first` (from 0, which may lie outside) to before `last`, a carriage return behind each.
std::u16string Lines(const std::vector<std::u16string_view>& values, long long first,
                     long long last) {
  std::u16string lines;
  last = std::min(last, static_cast<long long>(values.size()));
  for (long long i = std::max(first, 0LL); i < last; ++i) {
    lines += values[static_cast<std::size_t>(i)];
    lines += u'\r';
  }
  return lines;
}

}  // namespace

Value GetValueFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  const long long number = arguments.Integer(1);
  const auto values = ValuesOf(text);
  if (number < 1 || number > static_cast<long long>(values.size())) return {};
  return std::u16string(values[static_cast<std::size_t>(number - 1)]);
}

Value LeftValuesFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  return Lines(ValuesOf(text), 0, arguments.Integer(1));
}

Value ListFunction(const Arguments& arguments) {
  std::u16string list;
  for (std::size_t i = 0; arguments.Has(i); ++i) {
    const std::u16string value = arguments.Text(i);
    if (!list.empty() && !value.empty()) list += u'\r';
    list += value;
  }
  return list;
}

Value MiddleValuesFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  const long long start = std::max(arguments.Integer(1), 1LL);
  return Lines(ValuesOf(text), start - 1, start - 1 + arguments.Integer(2));
}

Value RightValuesFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  const auto values = ValuesOf(text);
  const auto count = static_cast<long long>(values.size());
  return Lines(values, count - std::max(arguments.Integer(1), 0LL), count);
}

Value ValueCountFunction(const Arguments& arguments) {
  const std::u16string text = arguments.Text(0);
  return Decimal(static_cast<long long>(ValuesOf(text).size()));
}

}  // namespace calculation
