// The functions of the language that work on lists: texts whose lines are values. A carriage return
// behind the last value makes no further one.

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <set>
#include <vector>

#include "calculation/built_ins.h"
#include "calculation/interruption.h"
#include "calculation/moments.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

using Values = std::vector<std::u16string_view>;

// The values share the text's storage.
Values ValuesOf(std::u16string_view text) {
  Values values;
  while (!text.empty()) {
    CheckInterruption();
    const std::size_t end = std::min(text.find(u'\r'), text.size());
    values.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return values;
}

// `count` values from number `start` on, both of which may reach beyond the list, a carriage return
// behind each.
Text Lines(const Values& values, long start = 1, long count = LONG_MAX) {
  std::u16string lines;
  const long first = std::max(start, 1L) - 1;
  const long last = std::min(count, static_cast<long>(values.size()) - first) + first;
  for (long i = first; i < last; ++i) {
    CheckInterruption();
    lines += values[static_cast<std::size_t>(i)];
    lines += u'\r';
  }
  return lines;
}

// A value of a list as what the list holds: 1 texts, 2 numbers, 3 dates, 4 times, 5 timestamps.
Value AsKind(std::u16string_view value, long kind) {
  CheckInterruption();
  if (kind == 2) return AsNumber(Text(value));
  if (kind < 3 || kind > 5) return Text(value);
  return ToMoment(static_cast<Moment::Kind>(kind - 3), Text(value));
}

struct SortItem {
  Value key;
  std::u16string_view value;
};

std::vector<SortItem> ItemsOf(std::u16string_view list, long kind) {
  std::vector<SortItem> items;
  for (const auto value : ValuesOf(list)) items.push_back({AsKind(value, kind), value});
  return items;
}

Text FilterValues(const Text& list, const Text& filter) {
  Values wanted = ValuesOf(filter);
  const auto before = [](auto first, auto second) { return Collate(first, second) < 0; };
  std::sort(wanted.begin(), wanted.end(), before);
  Values values = ValuesOf(list);
  std::erase_if(values, [&](std::u16string_view value) {
    return !std::binary_search(wanted.begin(), wanted.end(), value, before);
  });
  return Lines(values);
}

// Equal values stay in their order. A negative kind sorts downwards.
Text SortValues(const Text& list, std::optional<long> list_kind) {
  const long kind = list_kind.value_or(1);
  std::vector<SortItem> items = ItemsOf(list, std::labs(kind));
  std::stable_sort(items.begin(), items.end(), [kind](const SortItem& a, const SortItem& b) {
    return kind < 0 ? Compare(b.key, a.key) < 0 : Compare(a.key, b.key) < 0;
  });
  Values values;
  for (const SortItem& item : items) values.push_back(item.value);
  return Lines(values);
}

// The first of those that are equal stays, in its place.
Text UniqueValues(const Text& list, std::optional<long> kind) {
  const std::vector<SortItem> items = ItemsOf(list, kind.value_or(1));
  std::set<Value, decltype([](const Value& a, const Value& b) { return Compare(a, b) < 0; })> seen;
  Values values;
  for (const SortItem& item : items) {
    if (seen.insert(item.key).second) values.push_back(item.value);
  }
  return Lines(values);
}

Value List(const Arguments& given) {
  Text list;
  for (std::size_t i = 0; given.Has(i); ++i) {
    const Text value = given.Text(i);
    if (!list.empty() && !value.empty()) list.Append(u"\r");
    list.Append(value);
  }
  return list;
}

constexpr BuiltIn kListRows[] = {
    {u"FilterValues", "list ; values", "the list's values that are among these, each ended by ¶",
     R"(FilterValues ( "a¶b¶c" ; "C¶a" ))", Calling<FilterValues>},
    {u"GetValue", "list ; number", "one value of a list whose values are separated by ¶",
     R"(GetValue ( "a¶b¶c" ; 2 ))",
     [](const Text& list, long number) {
       const auto values = ValuesOf(list);
       if (number < 1 || number > static_cast<long>(values.size())) return Text();
       return Text(values[static_cast<std::size_t>(number - 1)]);
     }},
    {u"LeftValues", "list ; count", "the first values of a list, each ended by ¶",
     R"(LeftValues ( "a¶b¶c" ; 2 ))",
     [](const Text& list, long count) { return Lines(ValuesOf(list), 1, count); }},
    {u"List", "value1 {; value2 ; ...}", "the values that are not empty, separated by ¶",
     R"(List ( "a" ; "" ; "b" ))", List},
    {u"MiddleValues", "list ; start ; count",
     "values of a list from value number start on, each ended by ¶",
     R"(MiddleValues ( "a¶b¶c" ; 2 ; 1 ))",
     [](const Text& list, long start, long count) { return Lines(ValuesOf(list), start, count); }},
    {u"RightValues", "list ; count", "the last values of a list, each ended by ¶",
     R"(RightValues ( "a¶b¶c" ; 2 ))",
     [](const Text& list, long count) {
       const auto values = ValuesOf(list);
       const auto all = static_cast<long>(values.size());
       return Lines(values, all + 1 - std::max(count, 0L), count);
     }},
    {u"SortValues", "list {; kind ; locale}",
     "the values in order, each ended by ¶; kind 1 is texts, 2 numbers, 3 dates, 4 times, 5 "
     "timestamps, and negative the other way round",
     R"(SortValues ( "10¶9¶8" ; 2 ))", Calling<SortValues>},
    {u"UniqueValues", "list {; kind ; locale}",
     "the values without those that were there before, each ended by ¶",
     R"(UniqueValues ( "a¶b¶A" ))", Calling<UniqueValues>},
    {u"ValueCount", "list", "how many values a list has", R"(ValueCount ( "a¶b¶c" ))",
     [](const Text& list) { return ValuesOf(list).size(); }},
};

}  // namespace

constexpr BuiltInGroup kListFunctions{"Lists", kListRows};

}  // namespace calculation
