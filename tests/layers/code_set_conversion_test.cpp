// Every code set that the C library has a locale for, and a few more. A process has one code set of
// its user, so the conversions are asked by name.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/corefoundation/characters.h"
#include "platform/corefoundation/code_set.h"

namespace {

using encoding::CodeSet;

constexpr const char* kCodeSets[] = {
    "ARMSCII-8",    "BIG5",        "BIG5-HKSCS",     "CP1251",      "CP1255",      "CP1258",
    "EUC-JISX0213", "EUC-JP",      "EUC-KR",         "EUC-TW",      "GB18030",     "GB2312",
    "GBK",          "GEORGIAN-PS", "ISO-8859-1",     "ISO-8859-10", "ISO-8859-13", "ISO-8859-14",
    "ISO-8859-15",  "ISO-8859-2",  "ISO-8859-3",     "ISO-8859-5",  "ISO-8859-6",  "ISO-8859-7",
    "ISO-8859-8",   "ISO-8859-9",  "KOI8-R",         "KOI8-T",      "KOI8-U",      "PT154",
    "RK1048",       "SHIFT_JIS",   "SHIFT_JISX0213", "TCVN",        "TIS-620"};

// Characters for which a code set has another in their place, or that it writes as a letter and a
// mark apart.
const std::set<std::pair<std::string, char32_t>> kOthers{
    {"EUC-JP", 0xA5},      {"EUC-JP", 0x203E},    {"EUC-KR", 0x20A9}, {"SHIFT_JIS", 0xFFE0},
    {"SHIFT_JIS", 0xFFE1}, {"SHIFT_JIS", 0xFFE2}, {"CP1258", 0x323},  {"CP1258", 0x340},
    {"CP1258", 0x341},     {"CP1258", 0x1FEE},    {"TCVN", 0x323}};

std::string Encoded(const CodeSet& set, const std::u16string& text) {
  std::string bytes(text.size() * CodeSet::kBytesPerUnit, '\0');
  bytes.resize(set.Encode(text, bytes.data()));
  return bytes;
}

std::u16string Decoded(const CodeSet& set, const std::string& bytes) {
  std::u16string text(bytes.size(), u'\0');
  text.resize(set.Decode(bytes, text.data()));
  return text;
}

// All of the scripts with letters, and one in many of those with more characters.
std::vector<char32_t> Characters() {
  std::vector<char32_t> characters;
  for (char32_t c = 0x80; c < 0x30000; c += c < 0x3400 ? 1 : 37) {
    if (c < 0xD800 || c > 0xDFFF) characters.push_back(c);
  }
  return characters;
}

std::u16string Text(const std::u16string& start, char32_t last) {
  char16_t units[2];
  return start + std::u16string(units, encoding::PutUtf16(last, units));
}

class EveryCodeSet : public testing::TestWithParam<const char*> {
 protected:
  EveryCodeSet() : set_(GetParam()) {}

  CodeSet set_;
};

TEST_P(EveryCodeSet, KeepsTheLastCharacterOrSaysThatItLacksIt) {
  ASSERT_TRUE(set_.IsKnown());
  int kept = 0;
  for (const char32_t last : Characters()) {
    const std::u16string text = Text(u"ab", last);
    const std::string bytes = Encoded(set_, text);
    if (bytes == "ab?" || kOthers.contains({GetParam(), last})) continue;
    ASSERT_EQ(Decoded(set_, bytes), text);
    ++kept;
    // Nor is it lost before one that the code set lacks, or before a byte that is no character.
    const std::string before_another = Encoded(set_, text + u"\xFFFF");
    ASSERT_EQ(before_another.substr(0, bytes.size()), bytes);
    ASSERT_TRUE(Decoded(set_, bytes + "\xFF").starts_with(text));
  }
  EXPECT_GT(kept, 60);
  EXPECT_FALSE(CodeSet("NO-SUCH").IsKnown());
}

TEST_P(EveryCodeSet, IsCutBetweenCharacters) {
  std::u16string text;
  for (const char32_t character : Characters()) {
    if (Encoded(set_, Text(u"", character)) == "?" || kOthers.contains({GetParam(), character})) {
      continue;
    }
    text = Text(text, character) + u'1';
    if (text.size() > 200) break;
  }
  const std::string bytes = Encoded(set_, text);
  for (std::size_t size = 0; size <= bytes.size(); ++size) {
    const std::size_t cut = set_.Cut(bytes + "1", size);
    ASSERT_LE(cut, size);
    ASSERT_LT(size - cut, 4U) << "a whole character more would have had its place";
    const std::string start = bytes.substr(0, cut);
    ASSERT_EQ(Encoded(set_, Decoded(set_, start)), start) << size;
  }
  EXPECT_EQ(set_.Cut("\xFF\xFF\xFF", 1), 1U) << "what is no character counts as one byte";
}

std::string NameOf(const testing::TestParamInfo<const char*>& info) {
  std::string name = info.param;
  std::erase_if(name, [](char sign) { return sign == '-' || sign == '_'; });
  return name;
}

INSTANTIATE_TEST_SUITE_P(Encoding, EveryCodeSet, testing::ValuesIn(kCodeSets), NameOf);

}  // namespace
