#include "tests/support/plugin_host.h"

namespace {

class Results : public PluginHost {
 protected:
  static std::string All() {
    std::string all;
    for (const char* name : {"TarvoLC", "TarvoV1", "TarvoV2", "TarvoV3", "TarvoV4"}) {
      all += Call(name, "any") + ",";
    }
    return all;
  }
};

TEST_F(Results, AreEmptyAtFirst) {
  EXPECT_EQ(Call("TarvoLastValue", "x"), "||||");
  EXPECT_EQ(All(), ",,,,,");
}

TEST_F(Results, DescribeTheLastDialogAnyNumberOfTimes) {
  Call("TarvoDialog", "4|m|A|B", "enter 1 a; enter 2 b; enter 3 c; enter 4 d; press 2");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(All(), "2,a,b,c,d,");
    EXPECT_EQ(Call("TarvoLastValue", ""), "2|a|b|c|d");
  }
  Call("TarvoDialog", "1|m", "enter 1 new; press 1");
  EXPECT_EQ(All(), "1,new,,,,");
  Call("TarvoAllowEscape", "1");
  Call("TarvoDialog", "4|m", "enter 4 lost; escape");
  EXPECT_EQ(All(), "E,,,,,");
  EXPECT_EQ(Call("TarvoLastValue", std::string(2000, 'x')), "E");
}

}  // namespace
