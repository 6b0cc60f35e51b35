// What a blind user hears: Orca, the screen reader of Linux desktops, in front of the whole house,
// used by keys alone.

#include <gtest/gtest.h>

#include <future>

#include "tests/desktop/speech_server.h"
#include "tests/desktop/x_session.h"
#include "tests/support/changed_variable.h"
#include "tests/support/tarvo.h"

namespace desktop_test {
namespace {

using testing_tools::ChangedVariable;
using workbench::Holds;

struct Step {
  const char* keys;
  const char* heard;
  const char* heard_lately = nullptr;  // if Orca's later releases say something else
};

// One text, without what releases differ in all the time: stops, and the keys that later ones tell.
std::string Plain(const std::vector<std::string>& utterances) {
  std::string words;
  for (const std::string& utterance : utterances) {
    if (!words.empty()) words += ' ';
    words += utterance;
  }
  for (const std::string noise : {".", "push ", "tab ", "space ", "left control ", "left shift "}) {
    for (std::size_t at; (at = words.find(noise)) != std::string::npos;)
      words.erase(at, noise.size());
  }
  return words;
}

class Orca : public testing::Test {
 protected:
  void SetUp() override {
    if (OutputOf("command -v orca").empty()) GTEST_SKIP() << "Orca is not installed";
    if (!OutputOf("pgrep -x orca").empty()) GTEST_SKIP() << "the user's own Orca runs";
    bus_ = std::make_unique<Process>(
        std::vector<std::string>{"sh", "-c",
                                 "exec dbus-daemon --session --nofork --print-address "
                                 "--address=\"$DBUS_SESSION_BUS_ADDRESS\" 2>/dev/null"},
        Process::Output::kRead);
    bus_->Line();
    OutputOf(
        "dbus-send --print-reply --dest=org.a11y.Bus /org/a11y/bus"
        " org.freedesktop.DBus.Properties.Set string:org.a11y.Status string:IsEnabled"
        " variant:boolean:true");
    orca_ =
        std::make_unique<Process>(std::vector<std::string>{"sh", "-c", "exec orca 2>/dev/null"});
    const auto speaks = [this] { return !speech_.Heard().empty(); };
    for (int i = 0; i < 3 && !WaitFor(speaks); ++i) continue;  // it starts slowly the first time
    ASSERT_NO_FATAL_FAILURE(Expect("Screen reader on"));
    alarm(50);  // a dialog that nobody answers ends the test instead of holding it up
  }
  void TearDown() override {
    if (orca_) orca_->Signal(SIGKILL);  // it takes its time for anything less
  }

  // Begins to evaluate; Result is what the last calculation gives.
  void Evaluate(std::vector<std::string> calculations) {
    calculations.insert(calculations.begin(), "eval");
    const std::string screen = std::string("DISPLAY=") + std::getenv("DISPLAY");
    ending_ = std::async(std::launch::async, [calculations, screen] {
      return testing_tools::Run({TARVO_PROGRAM, calculations, "", {screen}, ""});
    });
  }
  std::string Result() {
    if (HasFatalFailure()) return "";  // the dialog is still open
    const std::string output = ending_.get().output;
    const std::size_t start = output.rfind('\n', output.size() - 2);
    return output.substr(start + 1, output.size() - start - 2);
  }

  // One of the texts in `texts`, with | between them. Later releases now and then tell again what
  // they have told before they tell what is new.
  void Expect(const std::string& texts) {
    std::vector<std::string> heard;
    const auto is_heard = [&] {
      heard = speech_.Heard();
      auto news = heard;
      while (!Holds("|" + texts + "|", "|" + Plain(news) + "|")) {
        if (!is_late_ || news.empty() || !Holds(told_, " " + Plain({news.front()}) + " "))
          return false;
        news.erase(news.begin());
      }
      return true;
    };
    WaitFor(is_heard);
    ASSERT_TRUE(is_heard()) << texts << "\nis not heard, but:\n" << testing::PrintToString(heard);
    told_ += Plain(heard) + " ";
    speech_.Forget();
  }

  void Walk(const std::vector<Step>& steps) {
    for (const auto& [keys, heard, heard_lately] : steps) {
      SCOPED_TRACE(keys);
      if (*keys != '\0') user_.Key(keys);
      ASSERT_NO_FATAL_FAILURE(Expect(is_late_ && heard_lately ? heard_lately : heard));
    }
  }

  const testing_tools::TemporaryFolder folder_;
  const ChangedVariable home_{"HOME", (folder_ / "").c_str()};
  const ChangedVariable runtime_{"XDG_RUNTIME_DIR", (folder_ / "").c_str()};
  const ChangedVariable address_{"DBUS_SESSION_BUS_ADDRESS",
                                 ("unix:path=" + (folder_ / "bus")).c_str()};
  const ChangedVariable server_{"SPEECHD_ADDRESS", ("unix_socket:" + (folder_ / "speech")).c_str()};
  const ChangedVariable settings_{"GSETTINGS_BACKEND", "memory"};
  const ChangedVariable language_{"LC_ALL", "C.UTF-8"};
  const bool is_late_ =
      std::atoi(OutputOf("orca --version 2>/dev/null | grep -o '[0-9]*'").c_str()) > 43;
  SpeechServer speech_{folder_ / "speech"};
  std::future<testing_tools::Ending> ending_;  // of a program that ends when its screen goes
  XSession user_{XSession::Manager::kOpenbox};
  std::unique_ptr<Process> bus_;
  std::unique_ptr<Process> orca_;
  std::string told_ = " ";
};

TEST_F(Orca, TellsEveryKindOfField) {
  Evaluate(
      {R"(TarvoPopUps ( "red¶green¶blue" ))", R"(TarvoSetCustomControls ( "2|3|4|1" ))",
       R"(TarvoSetCaption ( "Order" ))",
       R"(TarvoCustomDialog ( "4|Choose the colour|OK|Cancel|||Colour|Copy to me|Gift|Code" ))"});
  Walk({{"", "Order dialog Choose the colour Colour combo box red",
         "Order dialog Choose the colour Colour combo box red red"},
        {"Down", "List with 3 items green", "green"},
        {"Down", "blue"},
        {"Tab", "Copy to me check box not checked"},
        {"space", "checked"},
        {"space", "not checked"},
        {"Tab", "Gift not selected radio button"},
        {"space", "selected"},
        {"Tab", "Code password text"},
        {"s", "black circle", ""},
        {"BackSpace", "black circle", ""},
        {"Tab", "OK button"},
        {"Right", ""},
        {"Left", "Cancel button"}});
  user_.Key("space");
  EXPECT_EQ(Result(), "2|blue|0|1|");
}

TEST_F(Orca, TellsEveryRowAndHowManyThereAre) {
  Evaluate({R"(TarvoFillListBox ( "Ann¶New Delhi¶New York¶Paris" ))",
            R"(TarvoSetCaption ( "Towns" ))",
            R"(TarvoDoListBox ( "Choose your town|OK|No|||||0||1" ))"});
  Walk({{"", "Towns dialog Choose your town"},
        {"Down", "Towns List with 4 items Ann"},
        {"ctrl+Down", "New Delhi", "New Delhi not selected"},
        {"ctrl+space", "selected"},
        {"ctrl+space", "unselected"},
        {"shift+End", "Paris"},
        {"Tab", "OK button"}});
  user_.Key("Return");
  EXPECT_EQ(Result(), "1|New Delhi|New York|Paris");
}

TEST_F(Orca, TellsAnAlertOnceAndItsButtons) {
  Evaluate({R"(TarvoAlert ( "2|Delete record?|This cannot be undone.|Delete|Cancel" ))",
            R"(TarvoPreEnterText ( "Ann|Berlin" ))", R"(TarvoSetCaption ( "Names" ))",
            R"(TarvoDialog ( "2|Enter the name|OK|Cancel|||First name|London in the town|||" ))"});
  Walk({{"", "alert Delete record? This cannot be undone Delete button"},
        {"Tab", "Cancel button"},
        {"space", "Names dialog Enter the name Ann selected First name text Ann selected",
         "Names dialog Enter the name First name text Ann selected"},
        {"Tab", "Text unselected Berlin selected London in the town text Berlin selected",
         "London in the town text Berlin selected|Berlin selected London in the town Berlin "
         "selected"}});
  user_.Key("B Return");
  EXPECT_EQ(Result(), "1|Ann|B||");
}

}  // namespace
}  // namespace desktop_test
