// The functions of the language that work on texts. Characters are what people count as such, from
// 1.

#include <algorithm>
#include <set>

#include "calculation/built_ins.h"
#include "calculation/interruption.h"
#include "calculation/text_search.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

using LetterCase = SearchKey::Case;

constexpr long kLastCodePoint = 0x10FFFF;
constexpr long kCodeUnit = 100'000;  // codes of several characters stand in steps of five digits

std::size_t Count(long number) { return static_cast<std::size_t>(std::max(number, 0L)); }

// `count` characters from number `start` on, both of which may reach beyond the text.
Text Part(const Text& text, long start, long count) {
  Characters characters(text);
  const long first = std::max(start, 1L) - 1;
  const std::size_t begin = characters.Offset(Count(first));
  return text.view().substr(begin, characters.Offset(Count(first + std::max(count, 0L))) - begin);
}

// The same of words, with all that is between them.
Text Words(const Text& text, long start, long count) {
  const auto words = SplitWords(text);
  const long first = std::max(start, 1L) - 1;
  const std::size_t begin = Count(first);
  const std::size_t end = std::min(Count(first + count), words.size());
  if (begin >= end) return {};
  return std::u16string_view(words[begin].data(), words[end - 1].data() + words[end - 1].size());
}

Text Substitute(const Text& text, std::u16string_view search, std::u16string_view replacement) {
  const SearchKey key(text, LetterCase::kMatters);
  const SearchKey wanted(search, LetterCase::kMatters);
  if (key.Find(wanted, 1) == SearchKey::kNone) return text;
  return key.Replaced(wanted, replacement, kLongestText);
}

Value SubstituteAll(const Arguments& given) {
  Text text = given.Text(0);
  const auto substitute = [&text](const Arguments& pair) {
    const Text search = pair.Text(0);
    text = Substitute(text, search, pair.Text(1));
  };
  if (!given.Items(1)) substitute(given.From(1));
  for (std::size_t i = 1; given.Items(1) && given.Has(i); ++i) substitute(*given.Items(i));
  return text;
}

// The number holds one code, or several: the first in its last five digits.
Text Char(const Decimal& number) {
  std::u16string text;
  Decimal codes = number.Truncated();
  if (codes.IsNegative()) throw NumberError("expected the number of a character, 0 to 1114111");
  if (Compare(codes, Decimal(kLastCodePoint)) <= 0) {
    AppendCodePoint(text, static_cast<char32_t>(codes.ToInteger()));
    return text;
  }
  for (const Decimal step(kCodeUnit); !codes.IsZero(); codes = FloorQuotient(codes, step)) {
    AppendCodePoint(text, static_cast<char32_t>(Remainder(codes, step).ToInteger()));
  }
  return text;
}

Value Code(const Text& text) {
  if (text.empty()) return text;
  Decimal codes;
  Decimal step(1);
  for (std::size_t i = 0; i < text.size(); ++i, step = step * Decimal(kCodeUnit)) {
    CheckInterruption();
    const char32_t character = CodePointAt(text, i);
    if (character > 0xFFFF) ++i;
    codes = codes + step * Decimal(static_cast<long>(character));
  }
  return codes;
}

Text Filter(const Text& text, const Text& filter) {
  const auto kept = SplitCharacters(filter);
  const std::set<std::u16string_view> characters(kept.begin(), kept.end());
  std::u16string filtered;
  Characters breaks(text);
  for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
    end = breaks.EndOf(at);
    const std::u16string_view character = text.view().substr(at, end - at);
    if (characters.contains(character)) filtered += character;
  }
  return filtered;
}

long Position(const Text& text, const Text& search, long start, long occurrence) {
  const SearchKey wanted(search, LetterCase::kIgnored);
  // Forwards behind what is skipped; backwards in what begins at the start or before.
  const long skipped = occurrence < 0 ? 0 : std::max(start - 1, 0L);
  const long last = occurrence < 0 ? start - 1 + static_cast<long>(Characters(search).Count())
                                   : static_cast<long>(text.size());
  const SearchKey key(Part(text, skipped + 1, last - skipped), LetterCase::kIgnored);
  const std::size_t found = key.Find(wanted, occurrence);
  return found == SearchKey::kNone ? 0 : skipped + static_cast<long>(found) + 1;
}

Text Quote(const Text& text) {
  std::u16string quoted = u"\"";
  for (const char16_t unit : text.view()) {
    if (unit == u'"' || unit == u'\\' || unit == u'¶') quoted += u'\\';
    quoted += unit == u'\r' ? u'¶' : unit;
  }
  return quoted + u"\"";
}

Text Replace(const Text& text, long start, long count, const Text& replacement) {
  const long first = std::max(start - 1, 0L);
  const long end = first + std::max(count, 0L);
  Text replaced = Part(text, 1, first);
  replaced.Append(replacement);
  replaced.Append(text.view().substr(Characters(text).Offset(Count(end))));
  return replaced;
}

Text Trim(const Text& text) {
  const std::size_t begin = std::min(text.view().find_first_not_of(u' '), text.size());
  return text.view().substr(begin, text.view().find_last_not_of(u' ') + 1 - begin);
}

// What makes a text look otherwise leaves it as it is.
Text AsItIs(const Text& text) { return text; }

constexpr BuiltIn kTextRows[] = {
    {u"Char", "code", "the character of a Unicode code point, or of several", "Char ( 8364 )",
     Calling<Char>},
    {u"Code", "text",
     "the Unicode code point of a character; of several, the first in the last five digits",
     R"(Code ( "ab" ))", Calling<Code>},
    {u"Exact", "text1 ; text2", "1 if both texts are the same, upper and lower case too",
     R"(Exact ( "a" ; "A" ))",
     [](const Text& first, const Text& second) { return first.view() == second.view(); }},
    {u"Filter", "text ; characters", "the text's characters that are among these",
     R"(Filter ( "(555) 0123" ; "0123456789" ))", Calling<Filter>},
    {u"GetAsText", "value", "the value as text", "GetAsText ( 1.50 )", Calling<AsItIs>},
    {u"Left", "text ; count", "the first characters of a text", R"(Left ( "Plaid" ; 3 ))",
     [](const Text& text, long count) { return Part(text, 1, count); }},
    {u"LeftWords", "text ; count", "the first words of a text",
     R"(LeftWords ( "Plaid, canvas suitcase" ; 2 ))",
     [](const Text& text, long count) { return Words(text, 1, count); }},
    {u"Length", "text", "how many characters a text has", R"(Length ( "grün" ))",
     [](const Text& text) { return Characters(text).Count(); }},
    {u"Lower", "text", "the text in small letters", R"(Lower ( "ÄB" ))",
     [](const Text& text) { return Text(Lowercase(text)); }},
    {u"Middle", "text ; start ; count", "characters of a text from character number start on",
     R"(Middle ( "Plaid" ; 2 ; 3 ))", Calling<Part>},
    {u"MiddleWords", "text ; start ; count", "words of a text from word number start on",
     R"(MiddleWords ( "Plaid, canvas suitcase" ; 2 ; 2 ))", Calling<Words>},
    {u"PatternCount", "text ; search", "how often a text holds another, in any case",
     R"(PatternCount ( "Mississippi" ; "IS" ))",
     [](const Text& text, const Text& search) {
       const SearchKey key(text, LetterCase::kIgnored);
       return key.Count(SearchKey(search, LetterCase::kIgnored));
     }},
    {u"Position", "text ; search ; start ; occurrence",
     "where a text holds another, counted from 1, in any case; 0 if it does not. A negative "
     "occurrence is looked for backwards",
     R"(Position ( "Mississippi" ; "is" ; 1 ; 2 ))", Calling<Position>},
    {u"Proper", "text", "the text with a capital at the start of each word",
     R"(Proper ( "ANN LEE" ))", [](const Text& text) { return Text(Titlecase(text)); }},
    {u"Quote", "text", "the text as a literal of a calculation", R"(Quote ( "a¶b" ))",
     Calling<Quote>},
    {u"Replace", "text ; start ; count ; replacement",
     "the text with other characters in place of some", R"(Replace ( "abcdef" ; 2 ; 3 ; "X" ))",
     Calling<Replace>},
    {u"RGB", "red ; green ; blue", "the number of a colour", "RGB ( 255 ; 0 ; 0 )",
     [](const Decimal& red, const Decimal& green, const Decimal& blue) {
       return red * Decimal(0x10000) + green * Decimal(0x100) + blue;
     }},
    {u"Right", "text ; count", "the last characters of a text", R"(Right ( "Plaid" ; 2 ))",
     [](const Text& text, long count) {
       const auto length = static_cast<long>(Characters(text).Count());
       return Part(text, length + 1 - std::max(count, 0L), count);
     }},
    {u"RightWords", "text ; count", "the last words of a text",
     R"(RightWords ( "Plaid, canvas suitcase" ; 2 ))",
     [](const Text& text, long count) {
       const auto words = static_cast<long>(SplitWords(text).size());
       return Words(text, words + 1 - std::max(count, 0L), count);
     }},
    {u"Substitute", "text ; search ; replacement",
     "the text with every occurrence replaced; [ search ; replacement ] pairs do several",
     R"(Substitute ( "banana" ; [ "a" ; "o" ] ; [ "n" ; "m" ] ))", SubstituteAll, 2},
    {u"TextColor", "text ; colour", "the text", R"(TextColor ( "red" ; RGB ( 255 ; 0 ; 0 ) ))",
     Calling<AsItIs>},
    {u"TextColorRemove", "text {; colour}", "the text", R"(TextColorRemove ( "red" ))",
     Calling<AsItIs>},
    {u"TextFont", "text ; font {; script}", "the text", R"(TextFont ( "a" ; "Courier" ))",
     Calling<AsItIs>},
    {u"TextFontRemove", "text {; font ; script}", "the text", R"(TextFontRemove ( "a" ))",
     Calling<AsItIs>},
    {u"TextFormatRemove", "text", "the text", R"(TextFormatRemove ( "a" ))", Calling<AsItIs>},
    {u"TextSize", "text ; size", "the text", R"(TextSize ( "a" ; 18 ))", Calling<AsItIs>},
    {u"TextSizeRemove", "text {; size}", "the text", R"(TextSizeRemove ( "a" ))", Calling<AsItIs>},
    {u"TextStyleAdd", "text ; styles", "the text", R"(TextStyleAdd ( "a" ; Bold + Italic ))",
     Calling<AsItIs>, 0, true},
    {u"TextStyleRemove", "text ; styles", "the text", R"(TextStyleRemove ( "a" ; AllStyles ))",
     Calling<AsItIs>, 0, true},
    {u"Trim", "text", "the text without blanks at its ends", R"(Trim ( "  a b " ))", Calling<Trim>},
    {u"Upper", "text", "the text in capital letters", R"(Upper ( "straße" ))",
     [](const Text& text) { return Text(Uppercase(text)); }},
    {u"WordCount", "text", "how many words a text has", R"(WordCount ( "Plaid, canvas suitcase" ))",
     [](const Text& text) { return SplitWords(text).size(); }},
};

}  // namespace

constexpr BuiltInGroup kTextFunctions{"Text", kTextRows};

}  // namespace calculation
