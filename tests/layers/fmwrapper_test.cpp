#include "platform/fmwrapper/FMWrapper.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/fmwrapper/FMHost.h"

namespace {

fmx::errcode DoNothing(std::int16_t, const fmx::ExprEnv&, const fmx::DataVect&, fmx::Data&) {
  return 0;
}

TEST(FMWrapper, ReportsWhatIsNotThere) {
  fmx::Error error{};
  const fmx::TextAutoPtr text(FM_Text_Constructor1(error));
  FM_Text_SetText(*text, *text, 1, 1, error);
  EXPECT_EQ(error.code, 2);
  FM_Text_Delete(nullptr, error);
}

TEST(FMWrapper, FunctionsAreTakenBackByTheirOwnPlugin) {
  fmx::Error error{};
  const fmx::TextAutoPtr name(FM_Text_Constructor1(error));
  FM_Text_Assign(*name, "Function", 0, error);
  fmx::QuadChar* own = FM_QuadChar_Constructor2('O', 'W', 'N', 'R', error);
  fmx::QuadChar* other = FM_QuadChar_Constructor2('O', 'T', 'H', 'R', error);
  EXPECT_EQ(FM_ExprEnv_RegisterExternalFunction(*own, 0, *name, *name, 1, 1, 0, DoNothing, error),
            0);
  EXPECT_NE(FM_ExprEnv_UnRegisterExternalFunction(*other, 0, error), 0);
  EXPECT_EQ(fmx::host::Functions().size(), 1U);
  EXPECT_EQ(FM_ExprEnv_UnRegisterExternalFunction(*own, 0, error), 0);
  EXPECT_TRUE(fmx::host::Functions().empty());
  FM_QuadChar_Delete(own, error);
  FM_QuadChar_Delete(other, error);
  EXPECT_EQ(error.code, 0);
}

std::u16string UnitsOf(const fmx::Text& text) {
  fmx::Error error{};
  std::u16string units(FM_Text_GetSize(text, error), u'\0');
  FM_Text_GetUnicode(text, units.data(), 0, static_cast<std::uint32_t>(units.size()), error);
  EXPECT_EQ(error.code, 0);
  return units;
}

// However long it is, and whatever it was copied from or from which part of itself.
TEST(FMWrapper, ATextChangesAlone) {
  for (const std::u16string_view units :
       {u"few", u"eight of", u"a text of more than a few units"}) {
    fmx::Error error{};
    const fmx::TextAutoPtr first(FM_Text_Constructor1(error));
    const fmx::TextAutoPtr second(FM_Text_Constructor1(error));
    FM_Text_AssignUnicode(*first, units.data(), error);
    FM_Text_SetText(*second, *first, 0, UINT32_MAX, error);
    EXPECT_EQ(UnitsOf(*second), units);
    FM_Text_DeleteText(*second, 1, UINT32_MAX, error);
    EXPECT_EQ(UnitsOf(*second), units.substr(0, 1));
    FM_Text_SetText(*second, *first, 0, UINT32_MAX, error);
    FM_Text_SetText(*second, *second, 1, UINT32_MAX, error);
    EXPECT_EQ(UnitsOf(*second), units.substr(1));
    FM_Text_SetText(*second, *second, 0, UINT32_MAX, error);
    EXPECT_EQ(UnitsOf(*second), units.substr(1));
    FM_Text_Assign(*second, "", 0, error);
    EXPECT_EQ(UnitsOf(*second), u"");
    EXPECT_EQ(UnitsOf(*first), units);
    EXPECT_EQ(error.code, 0);
  }
}

}  // namespace
