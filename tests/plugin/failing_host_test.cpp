// Every call into FileMaker's interface fails in turn, in every function and in the lifecycle.

#include <dlfcn.h>

#include <algorithm>
#include <string_view>
#include <typeinfo>

#include "tests/support/plugin_host.h"

namespace {

// From which call on, counted from 1, the interface reports `code`; 0 for never.
struct Failure {
  int at = 0;
  int code = 0;
  bool for_good = false;
  std::string_view operation = {};  // calls of this one alone are counted and fail; empty: of all
};

Failure failure;
int calls = 0;

constexpr int kUnknownCode = 99;

bool FailsNow(std::string_view operation) {
  if (!failure.operation.empty() && operation != failure.operation) return false;
  ++calls;
  return failure.at != 0 && (failure.for_good ? calls >= failure.at : calls == failure.at);
}

// The real operation, or its failure. What a plug-in gives back is gone even if that is reported
// as a failure, and a code that nobody knows reports nothing.
template <class Real>
auto Through(std::string_view operation, fmx::Error& error, bool releases, Real real) {
  const bool fails = FailsNow(operation);
  if (fails) error.code = failure.code;
  using Result = decltype(real());
  if (fails && !releases && failure.code != kUnknownCode) return Result();
  return real();
}

}  // namespace

#define INTERPOSE_AS(Releases, Result, Name, Parameters, Arguments)                      \
  Result Name Parameters {                                                               \
    static const auto real = reinterpret_cast<decltype(&Name)>(dlsym(RTLD_NEXT, #Name)); \
    return Through(#Name, error, Releases, [&] { return real Arguments; });              \
  }
#define INTERPOSE(...) INTERPOSE_AS(false, __VA_ARGS__)
#define INTERPOSE_RELEASE(...) INTERPOSE_AS(true, __VA_ARGS__)

using fmx::Error;
using std::int32_t;
using std::uint32_t;

extern "C" {
INTERPOSE(fmx::Text*, FM_Text_Constructor1, (Error & error), (error))
INTERPOSE_RELEASE(void, FM_Text_Delete, (fmx::Text * t, Error& error), (t, error))
INTERPOSE(uint32_t, FM_Text_GetSize, (const fmx::Text& t, Error& error), (t, error))
INTERPOSE(void, FM_Text_SetText,
          (fmx::Text & d, const fmx::Text& s, uint32_t p, uint32_t n, Error& error),
          (d, s, p, n, error))
INTERPOSE(void, FM_Text_GetUnicode,
          (const fmx::Text& t, char16_t* b, uint32_t p, uint32_t n, Error& error),
          (t, b, p, n, error))
INTERPOSE(void, FM_Text_AssignUnicode, (fmx::Text & t, const char16_t* u, Error& error),
          (t, u, error))
INTERPOSE(void, FM_Text_Assign, (fmx::Text & t, const char* b, int32_t e, Error& error),
          (t, b, e, error))
INTERPOSE(uint32_t, FM_Text_Find,
          (const fmx::Text& t, const fmx::Text& w, uint32_t p, Error& error), (t, w, p, error))
INTERPOSE(void, FM_Text_DeleteText, (fmx::Text & t, uint32_t p, uint32_t n, Error& error),
          (t, p, n, error))
INTERPOSE(const fmx::Data*, FM_DataVect_At, (const fmx::DataVect& v, uint32_t i, Error& error),
          (v, i, error))
INTERPOSE(const fmx::Text*, FM_DataVect_AtAsText,
          (const fmx::DataVect& v, uint32_t i, Error& error), (v, i, error))
INTERPOSE(const fmx::Locale*, FM_Data_GetLocale, (const fmx::Data& d, Error& error), (d, error))
INTERPOSE(void, FM_Data_SetAsText,
          (fmx::Data & d, const fmx::Text& t, const fmx::Locale& l, int32_t y, Error& error),
          (d, t, l, y, error))
INTERPOSE(void, FM_Data_SetAsNumber, (fmx::Data & d, const fmx::FixPt& n, int32_t y, Error& error),
          (d, n, y, error))
INTERPOSE(fmx::FixPt*, FM_FixPt_Constructor1, (int32_t v, int32_t p, Error& error), (v, p, error))
INTERPOSE(void, FM_FixPt_AssignInt, (fmx::FixPt & n, int32_t v, Error& error), (n, v, error))
INTERPOSE_RELEASE(void, FM_FixPt_Delete, (fmx::FixPt * n, Error& error), (n, error))
INTERPOSE(fmx::QuadChar*, FM_QuadChar_Constructor2, (char a, char b, char c, char d, Error& error),
          (a, b, c, d, error))
INTERPOSE_RELEASE(void, FM_QuadChar_Delete, (fmx::QuadChar * q, Error& error), (q, error))
INTERPOSE(fmx::errcode, FM_ExprEnv_RegisterExternalFunction,
          (const fmx::QuadChar& q, std::int16_t i, const fmx::Text& n, const fmx::Text& p,
           std::int16_t a, std::int16_t b, uint32_t f, fmx::ExternalFunction x, Error& error),
          (q, i, n, p, a, b, f, x, error))
INTERPOSE(fmx::errcode, FM_ExprEnv_UnRegisterExternalFunction,
          (const fmx::QuadChar& q, std::int16_t i, Error& error), (q, i, error))
}

namespace {

// What left `run`: nothing, std::bad_alloc or std::exception itself.
enum class Left { kNothing, kBadAlloc, kException, kOther };

template <class Run>
Left Try(Run run) {
  try {
    run();
    return Left::kNothing;
  } catch (const std::bad_alloc&) {
    return Left::kBadAlloc;
  } catch (const std::exception& exception) {
    return typeid(exception) == typeid(std::exception) ? Left::kException : Left::kOther;
  }
}

// Before all others: no plug-in of this process has been initialised yet, and none is. The
// functions that were registered before a failure stay and may be called.
TEST(UninitialisedPlugin, AnswersEveryFunctionThatIsRegistered) {
  FMX_ExternCallBlock<std::uintptr_t> block{};
  block.version = 200;
  const CFBundleRef bundle = CFBundleCreateWithPath(PLUGIN_BUNDLE);
  block.bundle = reinterpret_cast<std::uintptr_t>(bundle);
  failure = {kFunctionCount, 2, false, "FM_ExprEnv_RegisterExternalFunction"};
  calls = 0;
  EXPECT_EQ(Try([&] { FMExternCallProc(&block); }), Left::kException);
  failure = {};
  auto functions = fmx::host::Functions();
  // Results first, while there is none.
  std::stable_partition(functions.begin(), functions.end(),
                        [](const auto& f) { return f.id >= 5 && f.id <= 10; });
  std::string results;
  for (const fmx::host::Function& function : functions) {
    ScriptedDialogs dialogs(display::ParseAnswerText("press 1"));
    carbon::SetDisplay(&dialogs);
    results += encoding::ToUtf8(
        fmx::host::Evaluate(function, {{kFMX_TextType, u"1|m", 0}}).result.text + u"\n");
    carbon::SetDisplay(nullptr);
  }
  EXPECT_EQ(results, "||||\n\n\n\n\n\n220\n1||||\n1|m\n1|m\n0\n1\n0\n1|1|||\n1|m\n1\n1|\n1\n");
  block.message = kFMXT_Shutdown;
  FMExternCallProc(&block);
  CFRelease(bundle);
}

class FailingHost : public PluginHost {
 protected:
  ~FailingHost() override { failure = {}; }

  // Fails each call that `run` makes, once and for good, with each code; returns how many there
  // are.
  template <class Run, class After>
  static int FailEachCall(Run run, After after) {
    struct {
      int code;
      Left left;
    } rows[] = {{1, Left::kBadAlloc}, {2, Left::kException}, {kUnknownCode, Left::kNothing}};
    failure = {};
    calls = 0;
    run();
    const int points = calls;
    for (const auto& row : rows) {
      for (const bool for_good : {false, true}) {
        for (int at = 1; at <= points; ++at) {
          failure = {at, row.code, for_good};
          calls = 0;
          EXPECT_EQ(Try(run), row.left) << "call " << at << " with code " << row.code;
          failure = {};
          EXPECT_EQ(fmx::host::LiveValues(), 0) << "call " << at << " with code " << row.code;
          after();
        }
      }
    }
    return points;
  }
};

struct Case {
  const char* function;
  const char* parameter;
  const char* answers;
  const char* result;
};

TEST_F(FailingHost, EveryFunctionRaisesReleasesAndGoesOn) {
  const Case cases[] = {
      {"TarvoDialogVersion", "x", "", "220"},
      {"TarvoSetCaption", "caption", "", "caption"},
      {"TarvoPreEnterText", "a|b", "", "a|b"},
      {"TarvoPosition", "1|2", "", "0"},
      {"TarvoSetFocus", "1", "", "1"},
      {"TarvoAllowEscape", "1", "", "1"},
      {"TarvoSetCustomControls", "2|4", "", "2|4"},
      {"TarvoPopUps", "aa\rbb|cc", "", "2"},
      {"TarvoFillListBox", "a\rb", "", "2"},
      {"TarvoDialog", "2|m|A|B", "enter 1 x; press 2", "2|x|||"},
      {"TarvoCustomDialog", "0|m", "press 1", "1||||"},
      {"TarvoDoListBox", "m", "row 2; press 1", "1|b"},
      {"TarvoAlert", "1|m", "press 1", "1"},
      {"TarvoAlert", "", "", "$$002$$"},
      {"TarvoLastValue", "", "", "1|b|||"},
      {"TarvoV1", "", "", "b"},
      {"TarvoLC", "", "", "1"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.function);
    const auto run = [&] {
      Answer(row.answers);
      Call(row.function, row.parameter);
    };
    run();
    const long carbon_objects = carbon::LiveObjects();
    const CFIndex strings = CFGetLiveObjectCount();
    const auto after = [&] {
      EXPECT_EQ(carbon::LiveObjects(), carbon_objects);
      EXPECT_EQ(CFGetLiveObjectCount(), strings);
      EXPECT_EQ(dialogs_->closed, static_cast<int>(dialogs_->opened.size()));
    };
    EXPECT_GT(FailEachCall(run, after), 1) << "the parameter is read and a result given";
    EXPECT_EQ(Call(row.function, row.parameter, row.answers), row.result);
  }
}

TEST_F(FailingHost, WhatWasWrittenBeforeTheFailureStays) {
  failure = {1, 1, false, "FM_Data_SetAsText"};
  calls = 0;
  Answer("enter 1 typed; press 1");
  EXPECT_EQ(Try([] { Call("TarvoDialog", "1|m"); }), Left::kBadAlloc);
  failure = {};
  EXPECT_EQ(Call("TarvoLastValue", ""), "1|typed|||");
}

TEST_F(FailingHost, TheLifecycleStopsWhereItFails) {
  const auto initialise = [this] { Send(kFMXT_Init); };
  const auto shut_down = [this] { Send(kFMXT_Shutdown); };
  EXPECT_GT(FailEachCall(initialise, shut_down), kFunctionCount) << "each function is registered";
  initialise();
  EXPECT_GT(FailEachCall(shut_down, initialise), kFunctionCount) << "and taken back";
  // Rows registered before the failure stay.
  shut_down();
  failure = {2, 2, false, "FM_ExprEnv_RegisterExternalFunction"};
  calls = 0;
  EXPECT_EQ(Try(initialise), Left::kException);
  failure = {};
  ASSERT_EQ(fmx::host::Functions().size(), 1U);
  EXPECT_EQ(fmx::host::Functions()[0].name, u"TarvoDialogVersion");
}

}  // namespace
