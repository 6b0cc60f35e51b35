#include "calculation/unicode.h"

#include <unicode/coll.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utext.h>
#include <unicode/utf16.h>

#include <cstdlib>
#include <new>
#include <string>

#include "calculation/interruption.h"

namespace calculation {
namespace {

constexpr char16_t kFirstMark = 0x300;  // nothing below it joins what stands before

int LengthOf(std::u16string_view text) { return static_cast<int>(text.size()); }

// Fails if memory is exhausted or ICU's data cannot be found.
void Require(UErrorCode status) {
  if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  if (U_FAILURE(status)) throw std::runtime_error(std::string("ICU: ") + u_errorName(status));
}

// Shares the text's storage as long as nothing changes it.
icu::UnicodeString Icu(std::u16string_view text) { return {false, text.data(), LengthOf(text)}; }

using Breaks = std::unique_ptr<icu::BreakIterator>;

Breaks BreaksIn(std::u16string_view text, bool of_words) {
  UErrorCode status = U_ZERO_ERROR;
  Breaks breaks(of_words
                    ? icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status)
                    : icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  UText* const shared = utext_openUChars(nullptr, text.data(), LengthOf(text), &status);
  Require(status);
  breaks->setText(shared, status);
  utext_close(shared);
  return Require(status), std::move(breaks);
}

const icu::Collator& UserCollator() {
  static const std::unique_ptr<icu::Collator> collator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> created(
        icu::Collator::createInstance(UserLocale("LC_COLLATE"), status));
    Require(status);
    created->setStrength(icu::Collator::SECONDARY);
    created->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
    return Require(status), std::move(created);
  }();
  return *collator;
}

// Part by part, so that it can be interrupted. What follows a blank is mapped as if it stood alone.
template <class Map>
std::u16string Mapped(std::u16string_view text, Map map) {
  constexpr std::size_t kUsualPart = 1 << 16;
  std::u16string mapped;
  while (!text.empty()) {
    CheckInterruption();
    const std::size_t blank = text.find_first_of(u" \r", kUsualPart);
    const std::size_t end = blank == std::u16string_view::npos ? text.size() : blank + 1;
    icu::UnicodeString part = Icu(text.substr(0, end));
    text.remove_prefix(end);
    map(part);
    mapped += Units(part);
  }
  return mapped;
}

}  // namespace

icu::Locale UserLocale(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    const char* const value = std::getenv(variable);
    if (!value || *value == '\0') continue;
    const std::string_view name = value;
    if (name == "POSIX" || name == "C" || name.starts_with("C.")) break;
    return icu::Locale::createCanonical(value);
  }
  return icu::Locale::getUS();
}

std::u16string Units(const icu::UnicodeString& text) {
  if (text.isBogus()) throw std::bad_alloc();
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

std::u16string Lowercase(std::u16string_view text) {
  return Mapped(text, [](icu::UnicodeString& part) { part.toLower(icu::Locale::getRoot()); });
}

std::u16string Uppercase(std::u16string_view text) {
  return Mapped(text, [](icu::UnicodeString& part) { part.toUpper(icu::Locale::getRoot()); });
}

std::u16string Titlecase(std::u16string_view text) {
  return Mapped(text,
                [](icu::UnicodeString& part) { part.toTitle(nullptr, icu::Locale::getRoot()); });
}

bool IsSameName(std::u16string_view first, std::u16string_view second) {
  UErrorCode status = U_ZERO_ERROR;
  return u_strCaseCompare(first.data(), LengthOf(first), second.data(), LengthOf(second), 0,
                          &status) == 0;
}

int Collate(std::u16string_view first, std::u16string_view second) {
  if (first == second) return 0;
  UErrorCode status = U_ZERO_ERROR;
  const int order = UserCollator().compare(first.data(), LengthOf(first), second.data(),
                                           LengthOf(second), status);
  return Require(status), order;
}

// NOLINTNEXTLINE(readability-function-cognitive-complexity): the branches are the macro's
char32_t CodePointAt(std::u16string_view text, std::size_t position) {
  UChar32 character = 0;
  U16_GET(text, 0, position, text.size(), character);
  return static_cast<char32_t>(character);
}

void AppendCodePoint(std::u16string& text, char32_t character) {
  if (character > 0xFFFF) text += static_cast<char16_t>(U16_LEAD(character));
  text += static_cast<char16_t>(character > 0xFFFF ? U16_TRAIL(character) : character);
}

bool IsBlankInLine(char16_t unit) {
  if (unit == u'\r' || unit == u'\n') return false;
  return u_isUWhiteSpace(unit) || unit == 0x200B || unit == 0xFEFF;
}

std::size_t Characters::EndOf(std::size_t position) {
  CheckInterruption();
  const std::size_t next = position + 1;
  if (next == text_.size() || text_[position] == u'\r') return next;
  if (text_[position] < kFirstMark && text_[next] < kFirstMark) return next;
  if (!breaks_) breaks_ = BreaksIn(text_, false);
  return static_cast<std::size_t>(breaks_->following(static_cast<int>(position)));
}

std::size_t Characters::Count() {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text_.size(); at = EndOf(at)) ++count;
  return count;
}

std::size_t Characters::Offset(std::size_t number) {
  std::size_t at = 0;
  while (number-- > 0 && at < text_.size()) at = EndOf(at);
  return at;
}

std::vector<std::u16string_view> SplitCharacters(std::u16string_view text) {
  std::vector<std::u16string_view> characters;
  Characters breaks(text);
  for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
    end = breaks.EndOf(at);
    characters.push_back(text.substr(at, end - at));
  }
  return characters;
}

std::vector<std::u16string_view> SplitWords(std::u16string_view text) {
  std::vector<std::u16string_view> words;
  const Breaks breaks = BreaksIn(text, true);
  for (int at = breaks->first(), end = 0; (end = breaks->next()) != icu::BreakIterator::DONE;
       at = end) {
    CheckInterruption();
    if (breaks->getRuleStatus() == UBRK_WORD_NONE) continue;  // blanks and punctuation
    words.push_back(text.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(end - at)));
  }
  return words;
}

// A character is as wide as what its marks stand on.
std::size_t DisplayWidth(std::u16string_view text) {
  std::size_t width = 0;
  for (const std::u16string_view character : SplitCharacters(text)) {
    const auto base = static_cast<UChar32>(CodePointAt(character, 0));
    constexpr auto kMarks = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK;
    if ((U_GET_GC_MASK(base) & kMarks) != 0) continue;
    const int kind = u_getIntPropertyValue(base, UCHAR_EAST_ASIAN_WIDTH);
    width += kind == U_EA_WIDE || kind == U_EA_FULLWIDTH ? 2 : 1;
  }
  return width;
}

}  // namespace calculation
