#include "tests/support/plugin_host.h"

namespace {

class CustomDialog : public PluginHost {
 protected:
  // Calls functions while the dialog is open.
  class ImpatientHost : public ScriptedDialogs {
   public:
    using ScriptedDialogs::ScriptedDialogs;

    std::optional<display::Action> NextAction() override {
      if (!std::exchange(has_called_, true)) {
        Evaluate("TarvoPopUps", u"|");
        EXPECT_EQ(Evaluate("TarvoDialog", u"5|m").result.text, u"$$001$$");
        Evaluate("TarvoSetCustomControls", u"2|3|4|3");
        Evaluate("TarvoPopUps", u"one");
      }
      return ScriptedDialogs::NextAction();
    }

   private:
    bool has_called_ = false;
  };
};

TEST_F(CustomDialog, ShowsTheKindsThatWereChosen) {
  EXPECT_EQ(Call("TarvoSetCustomControls", "3|3|0"), "3|3|0");
  EXPECT_EQ(Call("TarvoCustomDialog", "3|m|OK||||1|2|3||3", "click 1; enter 3 text; press 1"),
            "1|1|0|text|");
  EXPECT_EQ(Field(1).at("kind"), "checkbox");
  EXPECT_EQ(Field(1).at("rect").dump(), "[57,145,77,165]");
  EXPECT_EQ(Field(1).at("text"), "");
  EXPECT_EQ(Field(1).at("value"), 0);
  EXPECT_EQ(Field(3).at("kind"), "edit") << "the password number is without effect";
  // The kinds stay for the next custom dialog.
  EXPECT_EQ(Call("TarvoCustomDialog", "1|m", "click 1; click 1; press 1"), "1|0|||");
  Call("TarvoDialog", "1|m", "press 1");
  Call("TarvoCustomDialog", "1|m", "press 1");
  EXPECT_EQ(Field(1).at("kind"), "edit") << "a standard dialog resets them";
}

TEST_F(CustomDialog, HasEveryKindInEveryField) {
  Call("TarvoPopUps", "|aa|bb|cc");
  const auto kinds_and_places = [this](const char* kinds) {
    Call("TarvoSetCustomControls", kinds);
    Call("TarvoCustomDialog", "4|m", "press 1");
    std::string fields;
    for (int n = 2; n <= 4; ++n) {
      fields += Field(n).at("kind").get<std::string>() + Field(n).at("rect").dump() + " ";
    }
    return fields;
  };
  EXPECT_EQ(kinds_and_places("0|3|2|4"),
            "checkbox[87,145,107,165] popup[120,146,135,413] radio[147,145,167,165] ");
  EXPECT_EQ(kinds_and_places("0|4|3|2"),
            "radio[87,145,107,165] checkbox[117,145,137,165] popup[150,146,165,413] ");
  EXPECT_EQ(kinds_and_places("0|2|4|3"),
            "popup[90,146,105,413] radio[117,145,137,165] checkbox[147,145,167,165] ");
  EXPECT_EQ(kinds_and_places("0|1|0|1"),
            "password[90,150,105,410] edit[120,150,135,410] password[150,150,165,410] ");
}

TEST_F(CustomDialog, RadioButtonsAreOneGroup) {
  Call("TarvoSetCustomControls", "4|4|3|4");
  EXPECT_EQ(Call("TarvoCustomDialog", "4|m",
                 "click 3; click 1; click 2; click 4; click 3; click 3; press 1"),
            "1|0|0|1|1");
  EXPECT_EQ(Call("TarvoCustomDialog", "4|m", "click 2; click 2; press 1"), "1|0|1|0|0")
      << "one that is on stays on";
  EXPECT_EQ(Call("TarvoCustomDialog", "2|m", "click 1; press 1"), "1|1|0||");
  Call("TarvoPreEnterText", "1|1");
  EXPECT_EQ(Call("TarvoCustomDialog", "2|m", "press 1"), "1|1|1||") << "until one is used";
}

TEST_F(CustomDialog, PopUpsRememberTheChoiceInBothDirections) {
  Call("TarvoSetCustomControls", "2|2");
  Call("TarvoPopUps", "red\rgreen\rblue|a|b\rxx");
  EXPECT_EQ(Call("TarvoCustomDialog", "2|m", "choose 1 2; choose 1 3; press 1"), "1|blue|||");
  const auto shown = [this] {
    const auto& [index, popup] = dialogs_->changes.back();
    return std::vector{popup.value, popup.min, popup.max};
  };
  EXPECT_EQ(shown(), (std::vector<std::optional<int>>{3, 3, 3}));
  EXPECT_EQ(Call("TarvoCustomDialog", "2|m", "choose 1 3; choose 1 1; press 1"), "1|red|||");
  EXPECT_EQ(shown(), (std::vector<std::optional<int>>{1, 1, 1}));
  EXPECT_EQ(Call("TarvoCustomDialog", "2|m", "press 1"), "1|red|||") << "nothing is left over";
  Answer("choose 1 4");
  Call("TarvoCustomDialog", "2|m");
  EXPECT_EQ(dialogs_->failure()->reason,
            "\"choose 1 4\": there is no item 4 in the menu of field 1");
}

TEST_F(CustomDialog, APopUpWithoutMenuIsEmpty) {
  Call("TarvoSetCustomControls", "2");
  EXPECT_EQ(Call("TarvoCustomDialog", "1|m", "press 1"), "1||||");
  EXPECT_EQ(Field(1).at("items").dump(), "[]");
  EXPECT_EQ(Field(1).at("min"), 1);
}

TEST_F(CustomDialog, OutlivesCallsWhileItIsOpen) {
  Call("TarvoSetCustomControls", "2|2|3|0");
  Call("TarvoPopUps", "a\rb\rc|a\rb\rc");
  dialogs_ = std::make_unique<ImpatientHost>(display::ParseAnswerText(
      "choose 1 3; choose 2 3; click 3; click 3; enter 4 typed; press 2; press 1"));
  carbon::SetDisplay(dialogs_.get());
  EXPECT_EQ(Call("TarvoCustomDialog", "4|m|A|B"), "2|||0|0")
      << "what the controls do not have is empty";
}

TEST_F(CustomDialog, ItemsComeBackAsTheyWereWritten) {
  Call("TarvoSetCustomControls", "2");
  Call("TarvoPopUps", "<b>&x\r%s \"q\"\r日本|x");
  EXPECT_EQ(Call("TarvoCustomDialog", "1|m", "choose 1 2; press 1"), "1|%s \"q\"|||");
  EXPECT_EQ(Field(1).at("items").dump(), R"(["<b>&x","%s \"q\"","日本"])");
}

TEST_F(CustomDialog, UnknownKindsShowTheLabelAlone) {
  Call("TarvoSetCustomControls", "7|-1|1|4294967296");
  EXPECT_EQ(Call("TarvoCustomDialog", "4|m|||||a|b|c|d", "enter 3 pw; press 1"), "1|||pw|");
  EXPECT_EQ(Control(204).at("text"), "a");
  for (const int id : {205, 207, 211}) EXPECT_FALSE(HasControl(id)) << id;
  EXPECT_EQ(Field(3).at("kind"), "password");
  Answer("click 3");
  Call("TarvoCustomDialog", "4|m");
  EXPECT_EQ(dialogs_->failure()->reason,
            "\"click 3\": there is no check box or radio button in field 3");
}

TEST_F(CustomDialog, HasNoPopUpMode) {
  Call("TarvoPopUps", "aa|bb");
  Call("TarvoCustomDialog", "1|m", "enter 1 x; press 1");
  EXPECT_EQ(Call("TarvoCustomDialog", "5|m", ""), "1|x|||");
  Call("TarvoPosition", "3|4");
  EXPECT_EQ(Call("TarvoCustomDialog", "-1|m", ""), "1|x|||");
  Call("TarvoCustomDialog", "1|m", "press 1");
  EXPECT_EQ(Opened().at("content").dump(), "[4,3,131,428]") << "the position waited for a window";
  Call("TarvoCustomDialog", "1|m", "press 1");
  EXPECT_EQ(Opened().at("content").at(1), 747) << "and served it alone";
}

TEST_F(CustomDialog, MenusDoNotPileUp) {
  Call("TarvoSetCustomControls", "2|2|2|2");
  Call("TarvoPopUps", "aa|bb|cc|dd");
  const auto dialog = [this] {
    EXPECT_EQ(Call("TarvoCustomDialog", "4|m", "choose 4 1; press 1"), "1|aa|bb|cc|dd");
  };
  dialog();
  const long objects = carbon::LiveObjects();
  for (int i = 0; i < 10; ++i) dialog();
  EXPECT_EQ(carbon::LiveObjects(), objects);
}

}  // namespace
