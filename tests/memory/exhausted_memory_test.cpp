// Memory runs out at every point of every function: once, and for good.

#include <sys/wait.h>
#include <unistd.h>

#include <set>

#include "plugin/state/dialog_state.h"
#include "tests/memory/failing_allocator.h"
#include "tests/support/plugin_host.h"
#include "tests/support/whole_state.h"

namespace {

using failing_allocator::Pause;

// The script's part is the user's, not the plug-in's: it has all the memory it wants.
class UnhurtDialogs : public ScriptedDialogs {
 public:
  using ScriptedDialogs::ScriptedDialogs;

  bool Open(const display::Description& dialog) override {
    const Pause pause;
    return ScriptedDialogs::Open(dialog);
  }
  std::optional<display::Action> NextAction() override {
    const Pause pause;
    return ScriptedDialogs::NextAction();
  }
  void Change(std::size_t index, const display::Control& control) override {
    const Pause pause;
    ScriptedDialogs::Change(index, control);
  }
  void Reject(const std::string& reason) override {
    const Pause pause;
    ScriptedDialogs::Reject(reason);
  }
};

struct Case {
  const char* function;
  const char* parameter;
  const char* answers;
  int least_points;  // allocations that a call makes at least
  int refusals;      // those without which the function returns that there is no memory
};

const Case kCases[] = {
    {"TarvoDialogVersion", "x", "", 1, 0},
    {"TarvoSetCaption", "a caption of more than a few letters", "", 5, 2},
    {"TarvoPreEnterText", "one|two|three|four", "", 9, 2},
    {"TarvoPosition", "1|2", "", 5, 2},
    {"TarvoSetFocus", "1", "", 4, 1},
    {"TarvoAllowEscape", "1", "", 4, 1},
    {"TarvoSetCustomControls", "2|4|3|0", "", 5, 2},
    {"TarvoPopUps", "aa\rbb|cc|dd|ee", "", 12, 11},
    {"TarvoCustomDialog", "4|a long message|A|B|||1|2|3|4",
     "choose 1 2; click 2; click 3; enter 4 text; press 2", 80, 3},
    {"TarvoDialog", "5|m|A|B|||1|2|3|4|2", "choose 1 2; enter 2 text; press 2", 80, 4},
    {"TarvoDialog", "4|m|A|B|C|D|1|2|3|4", "enter 1 some text; press 1", 80, 4},
    {"TarvoDoListBox", "m|A|B||||1|1||1", "row 1; row+ 2; press 1", 50, 3},
    {"TarvoDoListBox", "m|A|B||||1|1||1", "row 2; row 2", 50, 3},
    {"TarvoFillListBox", "a\rb", "", 6, 3},
    {"TarvoAlert", "1|a long message|e|A|B|C", "press 2", 6, 2},
    {"TarvoLastValue", "", "", 3, 1},
    {"TarvoV1", "", "", 2, 0},
};

enum Reading : int { kAsUtf8, kAsCodeSet, kPastTheEnd };

// How a process of its own reads the user's code set if allocation `at` fails.
Reading ReadCodeSet(int at) {
  const pid_t child = fork();
  if (child == 0) {
    setenv("LC_ALL", "de_DE.ISO-8859-1", 1);
    failing_allocator::Arm(at, false);
    const std::uint32_t code_set = encoding::SystemEncoding();
    const bool is_past = failing_allocator::Disarm() < at;
    char bytes[16];
    const std::size_t size = encoding::Encode(u"Größe", code_set, bytes);
    EXPECT_EQ(encoding::ToUtf16({bytes, size}, code_set), u"Größe");
    if (testing::Test::HasFailure()) std::exit(-1);
    std::exit(is_past ? kPastTheEnd : code_set == encoding::kUtf8 ? kAsUtf8 : kAsCodeSet);
  }
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status)) << at;
  return static_cast<Reading>(WEXITSTATUS(status));
}

// Before all others: a process reads it once.
TEST(ExhaustedCodeSet, IsUtf8WhereItCannotBeRead) {
  std::set<Reading> readings;
  for (int at = 1; at < 1000 && !readings.contains(kPastTheEnd); ++at) {
    readings.insert(ReadCodeSet(at));
  }
  readings.erase(kAsCodeSet);
  EXPECT_EQ(readings, (std::set{kAsUtf8, kPastTheEnd}));
}

class ExhaustedMemory : public PluginHost {
 protected:
  ~ExhaustedMemory() override { failing_allocator::Disarm(); }

  // The function's result; "bad_alloc" if FileMaker's interface ran out of memory.
  std::string Try(const Case& row, int at, bool for_good) {
    auto answers = display::ParseAnswerText(row.answers);
    dialogs_ = std::make_unique<UnhurtDialogs>(std::move(answers));
    carbon::SetDisplay(dialogs_.get());
    const fmx::host::Function& function = Function(row.function);
    const std::vector<fmx::host::Value> parameters{
        {kFMX_TextType, encoding::ToUtf16(row.parameter), kLocale}};
    failing_allocator::Arm(at, for_good);
    std::string result;
    try {
      const auto outcome = fmx::host::Evaluate(function, parameters);
      points_ = failing_allocator::Disarm();
      EXPECT_EQ(outcome.error, 0);
      result = encoding::ToUtf8(outcome.result.text);
    } catch (const std::bad_alloc&) {
      points_ = failing_allocator::Disarm();
      result = "bad_alloc";
    }
    EXPECT_EQ(dialogs_->closed, static_cast<int>(dialogs_->opened.size()));
    return result;
  }

  int points_ = 0;
};

TEST_F(ExhaustedMemory, EveryFunctionAnswersAndTheNextCallWorks) {
  Call("TarvoPopUps", "aa\rbb|cc|dd|ee");
  Call("TarvoFillListBox", std::string(1500, 'a') + "\rb");
  Call("TarvoSetCustomControls", "2|4|3|0");
  for (const Case& row : kCases) {
    SCOPED_TRACE(std::string(row.function) + " " + row.answers);
    Try(row, 0, false);
    const std::string expected = Try(row, 0, false);
    const int points = points_;
    EXPECT_GE(points, row.least_points);
    const long blocks = failing_allocator::LiveBlocks();
    int refusals = 0;
    for (const bool for_good : {false, true}) {
      for (int at = 1; at <= points; ++at) {
        if (Try(row, at, for_good) == "$$003$$" && !for_good) ++refusals;
        EXPECT_STREQ(BrokenState(), nullptr);
        ASSERT_EQ(Try(row, 0, false), expected) << at;
        ASSERT_EQ(failing_allocator::LiveBlocks(), blocks) << at;
      }
    }
    EXPECT_EQ(refusals, row.refusals);
  }
}

TEST_F(ExhaustedMemory, AResultIsWholeOrSaysWhyItIsNot) {
  Call("TarvoFillListBox", "a\rb");
  for (const Case& row : kCases) {
    Try(row, 0, false);
    const std::string whole = Try(row, 0, false);
    const int points = points_;
    std::set<std::string> others;
    for (int at = 1; at <= points; ++at) others.insert(Try(row, at, true));
    for (const auto& expected : {whole, std::string("bad_alloc"), std::string("$$003$$")}) {
      others.erase(expected);
    }
    // An alert that could not be shown reports that no button was pressed.
    if (std::string_view(row.function) == "TarvoAlert") others.erase("0");
    EXPECT_EQ(others, std::set<std::string>()) << row.function;
  }
}

// The dialog has been shown and answered by then. The standard one has cleared its presets, the
// custom one keeps the texts for the next dialog.
TEST_F(ExhaustedMemory, AResultWithoutMemoryLeavesWhatTheDialogHasCleared) {
  struct {
    const char* function;
    const char* text_left;
    int escape_left;
  } rows[] = {{"TarvoDialog", "", 0}, {"TarvoCustomDialog", "Ann", 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.function);
    const Case dialog{row.function, "1|m", "enter 1 Lee; press 1", 0, 0};
    int results_without_memory = 0;
    bool succeeded = false;
    for (int at = 1; !succeeded; ++at) {
      Call("TarvoPreEnterText", "Ann");
      Call("TarvoAllowEscape", "1");
      Call("TarvoPosition", "100|200");
      const std::string result = Try(dialog, at, false);
      succeeded = points_ < at;
      if (result != "$$003$$" || dialogs_->opened.empty()) continue;
      ++results_without_memory;
      EXPECT_STREQ(TextOf(myreturntext), "");
      EXPECT_STREQ(TextOf(Field1), "Lee");
      EXPECT_TRUE(CFStringCompare(gPreEnter1, *row.text_left ? CFSTR("Ann") : CFSTR(""), 0) == 0);
      EXPECT_EQ(kCanEscape, row.escape_left);
      EXPECT_EQ(gUsePosition, 0);
      EXPECT_EQ(iFieldCount, 0);
    }
    EXPECT_GE(results_without_memory, 1);
  }
}

TEST_F(ExhaustedMemory, AWindowThatCannotBeToldToCloseGoesAllTheSame) {
  const Case dialog{"TarvoDialog", "0|m", "press 1", 0, 0};
  Try(dialog, 0, false);
  const int points = points_;
  const long objects = carbon::LiveObjects();
  for (int at = 1; at <= points; ++at) {
    try {
      Try(dialog, at, true);
    } catch (const std::bad_alloc&) {
    }
    EXPECT_EQ(carbon::LiveObjects(), objects) << at;
    EXPECT_EQ(gWindowRef, nullptr) << at;
  }
}

TEST_F(ExhaustedMemory, ABufferThatIsTooSmallForTheWorstCaseNeedsMemory) {
  char bytes[5] = "kept";
  failing_allocator::Arm(1, false);
  EXPECT_FALSE(CFStringGetCString(CFSTR("text"), bytes, sizeof bytes, encoding::kUtf8));
  EXPECT_EQ(failing_allocator::Disarm(), 1);
  EXPECT_STREQ(bytes, "");
}

TEST_F(ExhaustedMemory, ABundleIsWholeOrNone) {
  const auto create = [](int at) {
    CFBundleRef bundle = nullptr;
    failing_allocator::Arm(at, true);
    try {
      bundle = CFBundleCreateWithPath(PLUGIN_BUNDLE);
    } catch (const std::bad_alloc&) {
    }
    const int points = failing_allocator::Disarm();
    EXPECT_EQ(bundle != nullptr, at == 0) << at;
    CFRelease(bundle);
    return points;
  };
  const int points = create(0);
  EXPECT_GE(points, 10);
  for (int at = 1; at <= points; ++at) create(at);
}

TEST_F(ExhaustedMemory, AHandlerThatCannotBeInstalledIsNotKept) {
  constexpr EventTypeSpec kCommands{kEventClassCommand, kEventCommandProcess};
  constexpr Rect kContent{0, 0, 100, 200};
  const auto handle = [](EventHandlerCallRef, EventRef, void*) { return OSStatus{noErr}; };
  std::set<int> points;  // allocations of an installation that succeeds after others have failed
  Call("TarvoDialog", "0|m", "press 1");  // the first handler of a process makes room for more
  for (int failures = 1; failures <= 8; ++failures) {
    WindowRef window = nullptr;
    CreateNewWindow(kMovableModalWindowClass, 0, &kContent, &window);
    const auto install = [&](int at, EventHandlerRef* handler) {
      failing_allocator::Arm(at, false);
      return InstallEventHandler(GetWindowEventTarget(window), handle, 1, &kCommands, nullptr,
                                 handler);
    };
    EventHandlerRef handler = nullptr;
    for (int i = 0; i < failures; ++i) {
      EXPECT_EQ(install(3, &handler), memFullErr);
      EXPECT_EQ(handler, nullptr);
    }
    EXPECT_EQ(install(0, &handler), noErr);
    points.insert(failing_allocator::Disarm());
    DisposeWindow(window);
  }
  EXPECT_EQ(points.size(), 1U) << "a window's list grows with handlers that it does not have";
}

TEST_F(ExhaustedMemory, AListWithoutRoomForItsLinesIsRefused) {
  const std::string lines = std::string(1500, 'a') + "\rb";
  const Case fill{"TarvoFillListBox", lines.c_str(), "", 0, 0};
  std::string result;
  for (int at = 1; result != "2"; ++at) {
    Call("TarvoDoListBox", "m", "press 1");  // takes back the room that there was
    result = Try(fill, at, false);
    EXPECT_TRUE(result != "$$003$$" || glistlength == 0) << at;
  }
}

TEST_F(ExhaustedMemory, InitialisationRefusesOrRaises) {
  const auto initialise = [this](int at, bool for_good) {
    Send(kFMXT_Shutdown);
    // Each time with a bundle that has not read its strings yet.
    CFRelease(reinterpret_cast<CFBundleRef>(block_.bundle));
    block_.bundle = reinterpret_cast<std::uintptr_t>(CFBundleCreateWithPath(PLUGIN_BUNDLE));
    failing_allocator::Arm(at, for_good);
    block_.result = 0;
    bool raised = false;
    try {
      Send(kFMXT_Init);
    } catch (const std::bad_alloc&) {
      raised = true;
    }
    points_ = failing_allocator::Disarm();
    return raised ? 0 : static_cast<std::int32_t>(block_.result);
  };
  EXPECT_EQ(initialise(0, false), 51);
  const int points = points_;
  EXPECT_GE(points, 100);
  const std::size_t all = fmx::host::Functions().size();
  std::set<std::int32_t> answers;
  for (const bool for_good : {false, true}) {
    for (int at = 1; at <= points; ++at) {
      const std::int32_t answer = initialise(at, for_good);
      answers.insert(answer);
      EXPECT_TRUE(answer != -1 || fmx::host::Functions().size() == all) << at;
      EXPECT_EQ(fmx::host::LiveValues(), 0) << at;
      ASSERT_EQ(initialise(0, false), 51) << at;
    }
  }
  EXPECT_TRUE(answers.contains(51)) << "a string that could not be read";
  EXPECT_TRUE(answers.contains(-1)) << "a result buffer that could not be had";
  EXPECT_TRUE(answers.contains(0)) << "a failure inside FileMaker's interface";
}

}  // namespace
