#include "tests/support/plugin_host.h"

namespace {

class Parameter : public PluginHost {};

TEST_F(Parameter, VersionIsANumberWhateverIsAsked) {
  for (const std::size_t length : {0u, 1u, 5000u}) {
    const auto outcome = Evaluate("TarvoDialogVersion", std::u16string(length, u'x'));
    EXPECT_EQ(outcome.error, 0);
    EXPECT_EQ(outcome.result.type, kFMX_NumberType);
    EXPECT_EQ(outcome.result.text, u"220");
  }
}

TEST_F(Parameter, BoundedFunctionsTake1To1024CodeUnits) {
  for (const char* name : {"TarvoSetCaption", "TarvoPreEnterText", "TarvoPosition", "TarvoSetFocus",
                           "TarvoAllowEscape", "TarvoSetCustomControls", "TarvoCustomDialog",
                           "TarvoDoListBox", "TarvoAlert"}) {
    const auto call = [&](std::size_t length) {
      return Call(name, std::string(length, '|'), "press 1");
    };
    EXPECT_EQ(call(0), "$$002$$") << name;
    EXPECT_NE(call(1), "$$002$$") << name;
    EXPECT_NE(call(1024), "$$002$$") << name;
    EXPECT_EQ(call(1025), "$$002$$") << name;
    EXPECT_TRUE(dialogs_->opened.empty()) << name;
  }
  // Code units count, not characters: 512 characters beyond the first plane fill the parameter.
  std::string text;
  for (int i = 0; i < 512; ++i) text += "😀";
  EXPECT_EQ(Call("TarvoSetCaption", text), text);
  EXPECT_EQ(Call("TarvoSetCaption", text + "x"), "$$002$$");
}

TEST_F(Parameter, UnboundedFunctionsTakeAnyLength) {
  for (const char* name : {"TarvoDialog", "TarvoPopUps", "TarvoFillListBox"}) {
    EXPECT_EQ(Call(name, ""), "$$002$$") << name;
    EXPECT_NE(Call(name, std::string(5000, ' '), "press 1"), "$$002$$") << name;
  }
}

TEST_F(Parameter, ResultsHaveTheLocaleOfTheParameter) {
  for (const char* name : {"TarvoSetCaption", "TarvoV1", "TarvoFillListBox"}) {
    for (const char16_t* text : {u"", u"text"}) {
      const auto outcome = Evaluate(name, text);
      EXPECT_EQ(outcome.result.type, kFMX_TextType);
      EXPECT_EQ(outcome.result.locale, kLocale) << name;
    }
  }
}

TEST_F(Parameter, NumbersAreTakenAsTheirDecimalText) {
  const fmx::host::Value number{kFMX_NumberType, u"2", kLocale};
  EXPECT_EQ(fmx::host::Evaluate(Function("TarvoSetFocus"), {number}).result.text, u"2");
}

TEST_F(Parameter, NumbersAreReadUpToTheFirstOtherCharacter) {
  struct {
    const char* text;
    const char* allows;
  } rows[] = {{"1", "1"},
              {"5", "1"},
              {"2x", "1"},
              {" \t\r\n7", "1"},
              {"+3", "1"},
              {"0", "0"},
              {"no", "0"},
              {"-3", "0"},
              {"- 3", "0"},
              {"", "$$002$$"},
              {"x1", "0"},
              {"٣", "0"},
              {"0x9", "0"},
              {"4294967296", "1"},
              {"99999999999999999999", "1"},
              {"-99999999999999999999", "0"},
              {"2147483648", "1"},
              {"000000000000000000000000000000000000000000000000000000000000001", "1"},
              {"                                                               1", "1"}};
  for (const auto& row : rows)
    EXPECT_EQ(Call("TarvoAllowEscape", row.text), row.allows) << row.text;
}

TEST_F(Parameter, ZeroCharactersAndLoneSurrogatesAreSurvived) {
  EXPECT_EQ(Evaluate("TarvoSetCaption", u"a\xD800z").result.text, u"a\xFFFDz");
  EXPECT_EQ(Evaluate("TarvoSetCaption", std::u16string(u"a\0z", 3)).result.text, u"a");
  EXPECT_EQ(Evaluate("TarvoFillListBox", std::u16string(3, u'\0')).result.text, u"1");
}

}  // namespace
