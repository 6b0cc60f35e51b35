// The user's code set is read once in a process, so each case runs in a process of its own.

#include <sys/wait.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>

#include "tests/support/plugin_host.h"

namespace {

class Host : public PluginHost {
 public:
  using PluginHost::Call;
  using PluginHost::Evaluate;

 private:
  void TestBody() override {}
};

// Runs `body` with a fresh plug-in while LC_ALL is `locale`, and fails if it fails.
template <class Body>
void InLocale(const char* locale, Body body) {
  SCOPED_TRACE(locale);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    setenv("LC_ALL", locale, 1);
    {
      Host host;
      body(host);
    }
    std::exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(CodeSet, WhatItLacksBecomesAQuestionMark) {
  InLocale("de_DE.ISO-8859-1", [](Host& host) {
    EXPECT_EQ(host.Call("TarvoLastValue", ""), "||||") << "fresh memory is not empty by itself";
    EXPECT_EQ(host.Call("TarvoSetCaption", "Größe é€日😀."), "Größe é???.");
    EXPECT_EQ(Host::Evaluate("TarvoSetCaption", u"a\xD800z").result.text, u"a?z");
    EXPECT_EQ(host.Call("TarvoDialog", "1|m", "enter 1 Größe 日; press 1"), "1|Größe ?|||");
    EXPECT_EQ(host.Call("TarvoV1", ""), "Größe ?");
    EXPECT_EQ(host.Call("TarvoFillListBox", "é日\rx"), "2");
    EXPECT_EQ(host.Call("TarvoDoListBox", "m", "row 1; press 1"), "1|é?");
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C") << "the host's locale is its own";
  });
}

TEST(CodeSet, CharactersOfSeveralBytesAreKeptWhole) {
  InLocale("ja_JP.EUC-JP", [](Host& host) {
    EXPECT_EQ(host.Call("TarvoSetCaption", "日本語|é"), "日本語|é");
    std::string kanji;
    for (int i = 0; i < 1100; ++i) kanji += "日";
    host.Call("TarvoFillListBox", kanji + "\rx" + kanji);
    // Two bytes each: 1024 of them fill a cell's 2048 bytes, and with one byte before them 1023 do.
    EXPECT_EQ(host.Call("TarvoDoListBox", "m", "row 1; press 1"), "1|" + kanji.substr(0, 3 * 1024));
    EXPECT_EQ(host.Call("TarvoDoListBox", "m", "row 2; press 1"),
              "1|x" + kanji.substr(0, 3 * 1023));
    // What is no character is one byte.
    const std::uint32_t code_set = encoding::SystemEncoding();
    EXPECT_EQ(encoding::ToUtf16("a\xFF\xFF", code_set), u"a\uFFFD\uFFFD");
    EXPECT_EQ(encoding::CutBetweenCharacters("\xFF\xFF\xFF", 2, code_set), 2U);
    EXPECT_EQ(encoding::CutBetweenCharacters(std::string(20, '\xFF'), 2, code_set), 2U);
  });
}

TEST(CodeSet, IsUtf8WhereNoneIsNamed) {
  for (const char* locale : {"C", "POSIX", "", "xx_XX.NOTHING", "C.UTF-8"}) {
    InLocale(locale, [](Host& host) { EXPECT_EQ(host.Call("TarvoSetCaption", "é€日😀"), "é€日😀"); });
  }
}

}  // namespace
