#pragma once

// Texts are UTF-16 inside the calculation language and UTF-8 outside it. ICU knows its characters.

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/corefoundation/encoding.h"

namespace calculation {

// What is not UTF-8, or a lone surrogate, becomes U+FFFD.
using encoding::ToUtf16;
using encoding::ToUtf8;

// Throws std::bad_alloc if ICU had no memory for it.
std::u16string Units(const icu::UnicodeString& text);

// What the environment says of a category, such as LC_COLLATE; LC_ALL goes before it and LANG
// behind it. Nobody's locale (C, POSIX, nothing) is English as in the United States.
icu::Locale UserLocale(const char* category);

// The same in every locale of the user. The length may change.
std::u16string Lowercase(std::u16string_view text);
std::u16string Uppercase(std::u16string_view text);
std::u16string Titlecase(std::u16string_view text);  // each word begins with a capital

// Of names: without regard to case, whatever the user's locale.
bool IsSameName(std::u16string_view first, std::u16string_view second);

// Negative, 0 or positive, as the first text stands before, beside or behind the second in the
// order of the user's language, without regard to case.
int Collate(std::u16string_view first, std::u16string_view second);

char32_t CodePointAt(std::u16string_view text, std::size_t position);
void AppendCodePoint(std::u16string& text, char32_t character);

// White space that ends no line, and what is invisible.
bool IsBlankInLine(char16_t unit);

// A text's characters as people count them: a letter and its marks are one, a pair of surrogates
// too. A carriage return always is one.
class Characters {
 public:
  // `text` must outlive this.
  explicit Characters(std::u16string_view text) : text_(text) {}

  // Where the character that begins at `position` ends. REQUIRES: position < the text's length.
  std::size_t EndOf(std::size_t position);

  std::size_t Count();

  // Where character `number`, from 0, begins; the end of the text if it has none.
  std::size_t Offset(std::size_t number);

 private:
  std::u16string_view text_;
  std::unique_ptr<icu::BreakIterator> breaks_;  // made when they are needed
};

std::vector<std::u16string_view> SplitCharacters(std::u16string_view text);
std::vector<std::u16string_view> SplitWords(std::u16string_view text);

// How many columns a terminal gives to a text: two to the wide characters of East Asia and to
// pictures, none to marks.
std::size_t DisplayWidth(std::u16string_view text);

}  // namespace calculation
