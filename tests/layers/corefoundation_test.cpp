#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/corefoundation/CFHost.h"
#include "platform/corefoundation/encoding.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class CoreFoundation : public testing::Test {
 protected:
  ~CoreFoundation() override { EXPECT_EQ(CFGetLiveObjectCount(), at_start_); }

 private:
  CFIndex at_start_ = CFGetLiveObjectCount();
};

CFStringRef NewString(std::u16string_view text) {
  return CFStringCreateWithCharacters(kCFAllocatorDefault, text.data(),
                                      static_cast<CFIndex>(text.size()));
}

std::u16string UnitsOf(CFStringRef string) {
  std::u16string units(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
  CFStringGetCharacters(string, {0, CFStringGetLength(string)}, units.data());
  return units;
}

TEST_F(CoreFoundation, SplittingKeepsEmptyPartsAndEveryPartKeepsItsParent) {
  struct {
    const char16_t* text;
    const char16_t* separator;
    std::vector<std::u16string> parts;
  } rows[] = {{u"a|b", u"|", {u"a", u"b"}},
              {u"a||b", u"|", {u"a", u"", u"b"}},
              {u"a|", u"|", {u"a", u""}},
              {u"|", u"|", {u"", u""}},
              {u"a", u"|", {u"a"}},
              {u"", u"|", {u""}},
              {u"units|of|several|steps", u"|", {u"units", u"of", u"several", u"steps"}},
              {u"a, b,, c", u", ", {u"a", u"b,", u"c"}},
              {u", ", u", ", {u"", u""}},
              {u"a,b", u", ", {u"a,b"}},
              {u"a|b", u"", {u"a|b"}}};
  for (const auto& row : rows) {
    const CFStringRef text = NewString(row.text);
    const CFStringRef separator = NewString(row.separator);
    const CFArrayRef array =
        CFStringCreateArrayBySeparatingStrings(kCFAllocatorDefault, text, separator);
    CFRelease(separator);
    CFRelease(text);
    std::vector<std::u16string> parts;
    for (CFIndex i = 0; i < CFArrayGetCount(array); ++i) {
      parts.push_back(UnitsOf(static_cast<CFStringRef>(CFArrayGetValueAtIndex(array, i))));
    }
    EXPECT_EQ(parts, row.parts);
    EXPECT_EQ(CFArrayGetValueAtIndex(array, CFArrayGetCount(array)), nullptr);
    EXPECT_EQ(CFArrayGetValueAtIndex(array, -1), nullptr);
    // A part that is retained outlives the array that its owner gives back.
    const CFIndex last = CFArrayGetCount(array) - 1;
    const auto part = static_cast<CFStringRef>(CFRetain(CFArrayGetValueAtIndex(array, last)));
    CFRelease(array);
    EXPECT_EQ(UnitsOf(part), row.parts.back());
    CFRelease(part);
  }
}

TEST_F(CoreFoundation, ACopyOfAPartHoldsNothingElse) {
  const CFStringRef text = NewString(u"long|short");
  const CFArrayRef array =
      CFStringCreateArrayBySeparatingStrings(kCFAllocatorDefault, text, CFSTR("|"));
  CFRelease(text);
  const CFIndex with_array = CFGetLiveObjectCount();
  const CFStringRef copy = CFStringCreateCopy(
      kCFAllocatorDefault, static_cast<CFStringRef>(CFArrayGetValueAtIndex(array, 1)));
  CFRelease(array);
  EXPECT_EQ(CFGetLiveObjectCount(), with_array - 1) << "the copy alone is left";
  EXPECT_EQ(CFStringCompare(copy, CFSTR("short"), 0), kCFCompareEqualTo);
  EXPECT_EQ(CFStringCompare(copy, CFSTR("Short"), 0), kCFCompareGreaterThan);
  EXPECT_EQ(CFStringCompare(CFSTR("shor"), copy, 0), kCFCompareLessThan);
  CFRelease(copy);
}

TEST_F(CoreFoundation, FormatsAndConverts) {
  const CFStringRef key =
      CFStringCreateWithFormat(kCFAllocatorDefault, nullptr, CFSTR("Größe %d"), 131U);
  EXPECT_EQ(UnitsOf(key), u"Größe 131");
  std::string exact(12, 'x');
  EXPECT_EQ(CFStringGetCString(key, exact.data(), 12, encoding::kUtf8), 1);
  EXPECT_STREQ(exact.c_str(), "Größe 131");
  char small[11] = "kept";
  EXPECT_FALSE(CFStringGetCString(key, small, 11, encoding::kUtf8));
  EXPECT_STREQ(small, "");
  EXPECT_FALSE(CFStringGetCString(key, small, 0, encoding::kUtf8));
  CFRelease(key);
  for (const std::u16string_view text : {u"", u"日"}) {
    const CFStringRef format = NewString(text);
    const CFStringRef same = CFStringCreateWithFormat(kCFAllocatorDefault, nullptr, format);
    EXPECT_EQ(UnitsOf(same), text);
    const auto size = static_cast<CFIndex>(3 * text.size());
    EXPECT_FALSE(CFStringGetCString(same, small, size, encoding::kUtf8)) << "no room for the end";
    EXPECT_EQ(CFStringGetCString(same, small, size + 1, encoding::kUtf8), 1);
    EXPECT_EQ(small, encoding::ToUtf8(text));
    CFRelease(format);
    CFRelease(same);
  }
  EXPECT_EQ(CFStringCreateWithFormat(kCFAllocatorDefault, nullptr, CFSTR("%lc"), 0xD800), nullptr);
  EXPECT_EQ(CFRetain(nullptr), nullptr);
}

TEST_F(CoreFoundation, Utf8KeepsEveryCharacterAndReplacesWhatIsNone) {
  for (const std::u16string_view text :
       {u"", u"plain", u"\u007F\u0080\u07FF\u0800\uFFFF", u"\U00010000\U0010FFFF", u"\u0080",
        u"\u0800", u"aé日😀", u"日é日日é😀日 é aa😀é日a😀éé a run that is longer than a block é日"}) {
    EXPECT_EQ(encoding::ToUtf16(encoding::ToUtf8(text)), text);
  }
  for (std::size_t i = 0; i < 40; ++i) {  // ASCII is copied in blocks
    for (const char16_t other : {u'é', u'Ā'}) {
      std::u16string text(40, u'a');
      text[i] = other;
      EXPECT_EQ(encoding::ToUtf16(encoding::ToUtf8(text)), text);
    }
  }
  EXPECT_EQ(encoding::ToUtf8(u"a\xD800"
                             u"b\xDC00"),
            "a\uFFFDb\uFFFD");
  EXPECT_EQ(encoding::ToUtf8(u"\xDC00\xD800"), "\uFFFD\uFFFD");
  for (const char* bytes :
       {"\x80", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xED\xB0\x80", "\xF4\x90\x80\x80",
        "\xF8\x88", "\xFF", "\xE0\x80\x80", "\xE0\x9F\xBF\x80", "\xF0\x80\x80\x80"}) {
    EXPECT_EQ(encoding::ToUtf16(bytes),
              std::u16string(std::string_view(bytes).size(), encoding::kReplacement));
  }
  EXPECT_EQ(encoding::ToUtf16("\xC3X\x80"), u"\uFFFDX\uFFFD");
  EXPECT_EQ(encoding::ToUtf16("é\xC1\xBF\xC1\xBFé"), u"é\uFFFD\uFFFD\uFFFD\uFFFDé");
  EXPECT_EQ(encoding::ToUtf16("\xE2xx"), u"\uFFFDxx");
  EXPECT_EQ(encoding::ToUtf16("\xE2\x82x\x82"), u"\uFFFD\uFFFDx\uFFFD");
  EXPECT_EQ(encoding::ToUtf16("\xE2é"), u"\uFFFDé");
}

TEST_F(CoreFoundation, CutsBetweenCharacters) {
  const auto cut = [](std::string_view bytes, std::size_t size) {
    return encoding::CutBetweenCharacters(bytes, size, encoding::kUtf8);
  };
  EXPECT_EQ(cut("aé", 3), 3U);
  EXPECT_EQ(cut("aé", 2), 1U);
  EXPECT_EQ(cut("a😀b", 4), 1U);
  EXPECT_EQ(cut("a😀b", 5), 5U);
  EXPECT_EQ(cut("\x80\x80\x80\x80\x80\x80", 5), 5U) << "what is no character is cut anywhere";
  EXPECT_EQ(cut("a\x80\x80\x80\x80", 4), 4U);
  EXPECT_EQ(cut("\x80\x80\x80", 2), 2U);
  EXPECT_EQ(cut("é", 1), 0U);
  EXPECT_EQ(cut("é", 0), 0U);
}

// A bundle with tables in a temporary folder.
class Bundle : public CoreFoundation {
 protected:
  Bundle() {
    for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) unsetenv(name);
  }

  void Write(const std::string& language, const std::string& table) {
    parent_.Write("Tables.bundle/Contents/Resources/" + language + ".lproj/Table.strings", table);
  }

  // The text of `key`; "missing" if the key itself came back.
  std::string Text(std::u16string_view key) {
    const CFBundleRef bundle = CFBundleCreateWithPath(folder_.string());
    const CFStringRef name = NewString(key);
    const CFStringRef text = CFBundleCopyLocalizedString(bundle, name, name, CFSTR("Table"));
    const std::string result = text == name ? "missing" : encoding::ToUtf8(UnitsOf(text));
    for (const CFTypeRef object : {CFTypeRef{text}, CFTypeRef{name}, CFTypeRef{bundle}}) {
      CFRelease(object);
    }
    return result;
  }

  const testing_tools::TemporaryFolder parent_;
  const fs::path folder_ = parent_ / "Tables.bundle";
};

TEST_F(Bundle, ReadsTablesAsPeopleWriteThem) {
  Write("en", R"(/* a comment ; "x" = "y"; */
// another = "z";
/**/"plain" = "value"; bare.key-1 = Bare_value; Zz09 = Aaz;
"escaped \"key\"" = "q\" b\\ n\n r\r t\t o\101\0611\7 u\U00E91\U00AF\U00af \u2f/\U2fG\U2f_\U2fg \{\8\18";
"two
lines"="a
b";"plain" = "second";
"broken" "x"; "after" = "lost";)");
  EXPECT_EQ(Text(u"plain"), "value");
  EXPECT_EQ(Text(u"bare.key-1"), "Bare_value");
  EXPECT_EQ(Text(u"Zz09"), "Aaz");
  EXPECT_EQ(Text(u"escaped \"key\""),
            "q\" b\\ n\n r\r t\t oA11\a ué1¯¯ ///G/_/g {8\x01"
            "8");
  EXPECT_EQ(Text(u"two\nlines"), "a\nb");
  EXPECT_EQ(Text(u"x"), "missing");
  EXPECT_EQ(Text(u"broken"), "missing");
  const CFStringRef value = CFSTR("value");
  EXPECT_EQ(CFBundleCopyLocalizedString(nullptr, CFSTR("k"), value, CFSTR("Table")), value);
  EXPECT_EQ(Text(u"after"), "missing");
}

TEST_F(Bundle, ReadsUtf8AndUtf16) {
  Write("en", "\xEF\xBB\xBF\"k\"\t=\r\"日本\";");
  EXPECT_EQ(Text(u"k"), "日本");
  Write("en", std::string("\xFF\xFE\"\0k\0\"\0=\0\"\0\xE5\x65\"\0;\0", 18));
  EXPECT_EQ(Text(u"k"), "日");
  Write("en", std::string("\xFE\xFF\0\"\0k\0\"\0=\0\"\x65\xE5\0\"\0;", 18));
  EXPECT_EQ(Text(u"k"), "日");
}

TEST_F(Bundle, SurvivesTablesThatAreNone) {
  for (const char* table :
       {"", "/*", "//", "\"", "\"k", "\"k\"", "\"k\"=", "\"k\"=\"", "\"k\"=\"v", "\"k\"=\"v\"",
        "\"k\"=\"\\", "\"k\"=\"\\U12", "=;", "{", "\x01", "\"k\"=|;", "\xFF\xFE\x22", "\xFF"}) {
    Write("en", table);
    EXPECT_EQ(Text(u"k"), "missing") << table;
  }
}

TEST_F(Bundle, SpeaksTheUsersLanguage) {
  fs::create_directories(folder_);
  EXPECT_EQ(Text(u"k"), "missing") << "there is no table at all";
  for (const char* language : {"en", "de", "pt_BR", "pt", "x/pt"}) {
    Write(language, std::string("\"k\" = \"") + language + "\";");
  }
  struct {
    const char* variable;
    const char* value;
    const char* language;
  } rows[] = {{"LANG", "ja_JP.UTF-8", "en"},
              {"LANG", "de_AT.UTF-8@euro", "de"},
              {"LC_MESSAGES", "pt_BR", "pt_BR"},
              {"LC_MESSAGES", "pt_PT.UTF-8", "pt"},
              {"LC_ALL", "C", "en"},
              {"LC_ALL", "de", "de"},
              {"LANGUAGE", "xx:pt:de", "pt"},
              {"LANGUAGE", "pt:de", "pt"},
              {"LANGUAGE", "../de:x/pt:", "de"}};
  EXPECT_EQ(Text(u"k"), "en");
  for (const auto& row : rows) {
    setenv(row.variable, row.value, 1);
    EXPECT_EQ(Text(u"k"), row.language) << row.variable << "=" << row.value;
  }
}

TEST_F(Bundle, FindsItsModule) {
  EXPECT_EQ(CFBundleCreateWithPath(folder_.string()), nullptr);
  EXPECT_EQ(CFBundleCreateWithPath(""), nullptr);
  fs::create_directories(folder_ / "Contents");
  const auto executable = [this] {
    const CFBundleRef bundle = CFBundleCreateWithPath(folder_.string() + "/");
    const std::string path = CFBundleGetExecutablePath(bundle);
    CFRelease(bundle);
    return path;
  };
  EXPECT_EQ(executable(), (folder_ / "Contents/Linux/Tables").string());
  std::ofstream(folder_ / "Contents/Info.plist") << "<key>CFBundleExecutable</key><string>cut";
  EXPECT_EQ(executable(), (folder_ / "Contents/Linux/Tables").string());
  std::ofstream(folder_ / "Contents/Info.plist")
      << "<dict><key>CFBundleExecutable</key>\n <string>Other</string></dict>";
  EXPECT_EQ(executable(), (folder_ / "Contents/Linux/Other").string());
}

}  // namespace
