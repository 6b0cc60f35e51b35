#include "tests/support/plugin_host.h"

namespace {

class Alert : public PluginHost {};

TEST_F(Alert, AnswersTheButton) {
  const std::string parameter = "2|Delete record?|This cannot be undone.|Delete|Cancel|Other";
  EXPECT_EQ(Call("TarvoAlert", parameter, "press 1"), "1");
  EXPECT_EQ(Opened().dump(),
            R"({"kind":"alert","type":2,"message":"Delete record?",)"
            R"("explanation":"This cannot be undone.","default":"Delete","cancel":"Cancel",)"
            R"("other":"Other","returnButton":1,"escapeButton":2,"position":45066,)"
            R"("movable":false,"helpButton":false,"flags":0})");
  EXPECT_EQ(Call("TarvoAlert", parameter, "press 2"), "2");
  EXPECT_EQ(Call("TarvoAlert", parameter, "press 3"), "3");
  EXPECT_EQ(Call("TarvoAlert", parameter, "tab; return"), "1");
  EXPECT_EQ(Call("TarvoAlert", parameter, "escape"), "2");
  EXPECT_EQ(Call("TarvoAlert", parameter, "close"), "2");
}

TEST_F(Alert, HasTheButtonsThatHaveAText) {
  EXPECT_EQ(Call("TarvoAlert", "1|m", "escape; press 1"), "1");
  EXPECT_EQ(Opened().at("default"), "OK");
  EXPECT_EQ(Opened().at("cancel"), nullptr);
  EXPECT_EQ(Call("TarvoAlert", "1|m|e||No||x|y", "return; escape"), "2");
  EXPECT_EQ(Opened().at("default"), nullptr);
  EXPECT_EQ(Opened().at("other"), nullptr);
  EXPECT_EQ(Call("TarvoAlert", "1|m|e|||Other", "press 3"), "3");
  EXPECT_EQ(Opened().at("default"), "OK");
  struct {
    const char* parameter;
    const char* action;
    const char* reason;
  } rows[] = {{"1|a\rcaption\n|e||No", "press 1", "there is no button 1"},
              {"1|a caption ", "press 2", "there is no button 2"},
              {"1|a caption ", "press 3", "there is no button 3"},
              {"1|a caption |e|A|B|C", "press 4", "there is no button 4"},
              {"1|a caption ", "enter 1 x", "an alert has buttons alone"}};
  for (const auto& row : rows) {
    Answer(row.action);
    Call("TarvoAlert", row.parameter);
    EXPECT_EQ(dialogs_->failure()->reason, "\"" + std::string(row.action) + "\": " + row.reason);
    EXPECT_EQ(dialogs_->failure()->caption, "a caption ");
  }
}

TEST_F(Alert, KnowsItsKindsExactly) {
  struct {
    const char* kind;
    int type;
  } rows[] = {{"0", 0}, {"1", 1}, {"2", 2}, {"3", 3}, {"4", 4}, {" 1", 4}, {"01", 4}, {"", 4}};
  for (const auto& row : rows) {
    EXPECT_EQ(Call("TarvoAlert", std::string(row.kind) + "|m", "press 1"), "1");
    EXPECT_EQ(Opened().at("type"), row.type) << row.kind;
  }
}

TEST_F(Alert, IsTheLastDialogsButtonAndNothingElse) {
  Call("TarvoDialog", "1|m", "enter 1 typed; press 1");
  Call("TarvoPreEnterText", "kept");
  Call("TarvoAllowEscape", "1");
  EXPECT_EQ(Call("TarvoAlert", "0|m|e|A|B|C", "press 3"), "3");
  EXPECT_EQ(Call("TarvoLC", ""), "3");
  EXPECT_EQ(Call("TarvoLastValue", ""), "3|typed|||");
  EXPECT_EQ(Call("TarvoAlert", ""), "$$002$$");
  EXPECT_EQ(Call("TarvoLC", ""), "3");
  EXPECT_EQ(Call("TarvoDialog", "1|m", "escape"), "E");
  EXPECT_EQ(Field(1).at("text"), "kept");
}

TEST_F(Alert, ReportsNoButtonWhereThereIsNoAnswer) {
  Answer("");
  EXPECT_EQ(Call("TarvoAlert", "0|m"), "0");
  EXPECT_TRUE(dialogs_->failure());
}

}  // namespace
