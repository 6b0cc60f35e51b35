#include "plugin/host/localised_strings.h"
#include "tests/support/plugin_host.h"
#include "tests/support/temporary_folder.h"

namespace {

class Lifecycle : public PluginHost {
 protected:
  // A bundle whose table holds `strings`.
  std::string MakeBundle(const std::string& strings) {
    folder_.Write("Made.fmplugin/Contents/Resources/en.lproj/Quenlix.strings", strings);
    return folder_ / "Made.fmplugin";
  }

  // Asks for a string with a buffer of `size` units; "untouched" if nothing was written.
  std::string Ask(std::uint8_t number, std::int32_t size, std::uint8_t message = kFMXT_GetString) {
    std::u16string buffer(static_cast<std::size_t>(std::max(size, 1)) + 1, u'#');
    block_.string = number;
    block_.size = size;
    block_.result = reinterpret_cast<std::uintptr_t>(buffer.data());
    Send(message);
    EXPECT_EQ(buffer.back(), u'#') << "written past the buffer";
    if (buffer[0] == u'#') return "untouched";
    return encoding::ToUtf8(buffer.substr(0, buffer.find(u'\0')));
  }

  // `strings` is how many CoreFoundation objects a fresh life has.
  void ExpectAFreshLifeAfter(bool shut_down, CFIndex strings) {
    const std::size_t functions = fmx::host::Functions().size();
    Call("TarvoSetCaption", "caption");
    Call("TarvoPopUps", "aa\rbb|cc");
    Call("TarvoDialog", "5|m", "press 1");
    Call("TarvoFillListBox", "one\rtwo");
    Call("TarvoSetCustomControls", "3|3|3|3");
    Call("TarvoDialog", "1|m", "enter 1 typed; press 1");
    Call("TarvoPreEnterText", "pre");
    Call("TarvoPosition", "1|1");
    Call("TarvoAllowEscape", "1");
    Call("TarvoSetFocus", "2");
    if (shut_down) Send(kFMXT_Shutdown);
    const long menus = carbon::LiveObjects();
    Send(kFMXT_Init);
    EXPECT_EQ(block_.result, 51U);
    EXPECT_EQ(fmx::host::Functions().size(), functions);
    EXPECT_EQ(carbon::LiveObjects(), menus - 2);
    EXPECT_EQ(CFGetLiveObjectCount(), strings) << "what was preset is released";
    EXPECT_EQ(Call("TarvoLastValue", ""), "||||");
    EXPECT_EQ(Call("TarvoDialog", "5|m", ""), "$$001$$");
    EXPECT_EQ(Call("TarvoCustomDialog", "2|m", "escape; press 1"), "1||||");
    EXPECT_EQ(Opened().at("title"), "");
    EXPECT_EQ(Opened().at("content").at(1), 747);
    EXPECT_EQ(Field(1).at("kind"), "edit");
    EXPECT_EQ(Field(1).at("text"), "");
    EXPECT_EQ(FocusedFields(), "1");
  }

  const testing_tools::TemporaryFolder folder_;
};

TEST_F(Lifecycle, AcceptsInterfaceVersions50To255) {
  for (const int version : {50, 51, 254, 255}) {
    Send(kFMXT_Shutdown);
    EXPECT_EQ(Initialise(PLUGIN_BUNDLE, static_cast<std::int16_t>(version)), 51) << version;
    EXPECT_EQ(fmx::host::Functions().size(), std::size_t{kFunctionCount});
  }
  for (const int version : {49, 256, 0, -1, -32768, 32767}) {
    Send(kFMXT_Shutdown);
    EXPECT_EQ(Initialise(PLUGIN_BUNDLE, static_cast<std::int16_t>(version)), -1) << version;
    EXPECT_EQ(block_.result, UINTPTR_MAX) << "the whole field is written";
    EXPECT_TRUE(fmx::host::Functions().empty());
  }
}

TEST_F(Lifecycle, RegistersItsFunctionsInOrder) {
  std::string registered;
  for (const auto& function : fmx::host::Functions()) {
    registered += std::to_string(function.id) + " " + encoding::ToUtf8(function.name) + "\n";
    EXPECT_EQ(function.plugin_id, "TRVO");
    EXPECT_EQ(function.minimum_arguments, 1);
    EXPECT_EQ(function.maximum_arguments, 1);
    EXPECT_EQ(function.flags, 0xFF01U);
    EXPECT_TRUE(function.prototype.starts_with(function.name + u"("));
  }
  EXPECT_EQ(registered,
            "0 TarvoDialogVersion\n2 TarvoDialog\n3 TarvoSetCaption\n4 TarvoPreEnterText\n"
            "5 TarvoLastValue\n6 TarvoV1\n7 TarvoV2\n8 TarvoV3\n9 TarvoV4\n10 TarvoLC\n"
            "13 TarvoPopUps\n14 TarvoAlert\n15 TarvoPosition\n16 TarvoCustomDialog\n"
            "17 TarvoSetCustomControls\n18 TarvoFillListBox\n19 TarvoDoListBox\n"
            "20 TarvoAllowEscape\n21 TarvoSetFocus\n");
  Send(kFMXT_Shutdown);
  EXPECT_TRUE(fmx::host::Functions().empty());
}

TEST_F(Lifecycle, LeavesTheCallBlockAloneOnUnknownMessages) {
  for (const int message : {1, 2, 3, 5, 6, 8, 255}) {
    FMX_ExternCallBlock<std::uintptr_t> block;
    std::memset(&block, 0x5A, sizeof block);
    block.message = static_cast<std::uint8_t>(message);
    const auto before = block;
    FMExternCallProc(&block);
    EXPECT_EQ(std::memcmp(&block, &before, sizeof block), 0) << message;
    EXPECT_EQ(gFMX_ExternCallPtr, &block);
  }
}

TEST_F(Lifecycle, AnswersStringRequestsThatFitTheBuffer) {
  Initialise(MakeBundle(R"("Quenlix 1" = "options"; "Quenlix 128" = "12345678";
                           "Quenlix 129" = "123456789"; "Quenlix 130" = "";
                           "Quenlix 131" = "never";)"));
  EXPECT_EQ(Ask(131, 100), "options");
  EXPECT_EQ(Ask(128, 10), "12345678");
  EXPECT_EQ(Ask(129, 10), "untouched");
  EXPECT_EQ(Ask(129, 11), "123456789");
  for (const std::uint32_t language : {1U, 0xFFFFFFFFU}) {
    block_.language = language;
    EXPECT_EQ(Ask(128, 10), "12345678") << "the language makes no difference";
  }
  for (const std::int32_t size : {1, 0, -1}) EXPECT_EQ(Ask(128, size), "untouched");
  EXPECT_EQ(Ask(130, 2), "");
  EXPECT_EQ(Ask(7, 100), "untouched");
  UniChar buffer[10];
  EXPECT_EQ(Do_GetString(128, 0, 10, buffer), 8);
  EXPECT_EQ(Do_GetString(129, 0, 10, buffer), 0);
  EXPECT_EQ(Do_GetString(128, 0, 1, buffer), 0);
  EXPECT_EQ(Do_GetString(7, 0, 10, buffer), 0);
  block_.string = 128;
  block_.size = 100;
  block_.result = 0;
  Send(kFMXT_GetString);
  const CFIndex objects = CFGetLiveObjectCount();
  Ask(128, 10);
  Ask(7, 100);
  EXPECT_EQ(CFGetLiveObjectCount(), objects);
  EXPECT_EQ(Ask(128, 10, kFMXT_Shutdown), "untouched");
}

TEST_F(Lifecycle, CutsNamesAtTheFirstParenthesis) {
  const std::string longest(1022 - 2, 'x');
  Send(kFMXT_Shutdown);
  Initialise(
      MakeBundle("\"Quenlix 102\" = \"A (b(c))\"; \"Quenlix 104\" = \"NoParenthesis\";"
                 "\"Quenlix 105\" = \"L(" +
                 longest + "\"; \"Quenlix 106\" = \"L(x" + longest + "\";"));
  const auto& functions = fmx::host::Functions();
  ASSERT_EQ(functions.size(), std::size_t{kFunctionCount});
  EXPECT_EQ(functions[0].name, u"A ");
  EXPECT_EQ(functions[0].prototype, u"A (b(c))");
  EXPECT_EQ(functions[1].name, u"NoParenthesis");
  EXPECT_EQ(functions[2].prototype.size(), 1022U);
  EXPECT_EQ(functions[3].prototype, u"") << "one unit too long";
  EXPECT_EQ(functions[4].name, u"") << "missing in the table";
}

// The host may have shut it down or not; a function that is registered still is refused then, which
// makes no difference.
TEST_F(Lifecycle, StartsAfreshInASecondLife) {
  const CFIndex strings = CFGetLiveObjectCount();
  for (const bool shut_down : {true, false}) {
    SCOPED_TRACE(shut_down);
    ExpectAFreshLifeAfter(shut_down, strings);
  }
}

}  // namespace
