#include "platform/carbon/Carbon.h"

#include <gtest/gtest.h>

#include "platform/carbon/CarbonHost.h"
#include "tests/scripted_dialogs.h"

namespace {

constexpr Rect kBounds{10, 10, 30, 110};
constexpr OSType kCommand = FourCharCode("TEST");
constexpr EventTypeSpec kCommands{kEventClassCommand, kEventCommandProcess};

std::vector<HICommand> commands;
WindowRef running;

// Notes the command; TEST ends the dialog as a plug-in does, from within its own command.
OSStatus Handle(EventHandlerCallRef, EventRef event, void* disposes) {
  HICommand command{};
  GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                    &command);
  commands.push_back(command);
  if (command.command_id != kCommand) return eventNotHandledErr;
  QuitAppModalLoopForWindow(running);
  if (disposes == nullptr) return eventNotHandledErr;
  EventRef close = nullptr;
  CreateEvent(nullptr, kEventClassWindow, kEventWindowClose, GetCurrentEventTime(), 0, &close);
  SendEventToEventTarget(close, GetWindowEventTarget(running));
  ReleaseEvent(close);
  return eventNotHandledErr;
}

class Carbon : public testing::Test {
 protected:
  Carbon() {
    commands.clear();
    const Rect content{0, 0, 100, 200};
    CreateNewWindow(kMovableModalWindowClass, kWindowStandardHandlerAttribute, &content, &window_);
    running = window_;
    InstallEventHandler(GetWindowEventTarget(window_), NewEventHandlerUPP(Handle), 1, &kCommands,
                        this, &handler_);
  }

  ~Carbon() override {
    Close();
    EXPECT_EQ(carbon::LiveObjects(), at_start_);
    carbon::SetDisplay(nullptr);
  }

  void Close() {
    EventRef close = nullptr;
    CreateEvent(nullptr, kEventClassWindow, kEventWindowClose, 0, 0, &close);
    SendEventToEventTarget(close, GetWindowEventTarget(window_));
    ReleaseEvent(close);
  }

  ControlRef Popup(std::initializer_list<const char16_t*> items) {
    ControlRef popup = nullptr;
    CreatePopupButtonControl(window_, &kBounds, nullptr, -12345, 1, 0, teFlushLeft, 0, &popup);
    MenuRef menu = nullptr;
    CreateNewMenu(1, 0, &menu);
    for (const char16_t* item : items) {
      const CFStringRef text = CFStringCreateWithCharacters(
          nullptr, item, static_cast<CFIndex>(std::u16string_view(item).size()));
      AppendMenuItemTextWithCFString(menu, text, 0, 0, nullptr);
      CFRelease(text);
    }
    SetControlData(popup, 0, kControlPopupButtonMenuHandleTag, sizeof menu, &menu);
    ReleaseMenu(menu);
    return popup;
  }

  ControlRef Button(int number, OSType command) {
    ControlRef button = nullptr;
    CreatePushButtonControl(window_, &kBounds, CFSTR("Button"), &button);
    const ControlID id{0, display::ButtonId(number)};
    SetControlID(button, &id);
    SetControlCommandID(button, command);
    return button;
  }

  OSStatus Run(const std::string& answers) {
    dialogs_ = std::make_unique<ScriptedDialogs>(display::ParseAnswerText(answers));
    carbon::SetDisplay(dialogs_.get());
    return RunAppModalLoopForWindow(window_);
  }

  long at_start_ = carbon::LiveObjects();
  WindowRef window_ = nullptr;
  EventHandlerRef handler_ = nullptr;
  std::unique_ptr<ScriptedDialogs> dialogs_;
};

TEST_F(Carbon, LimitsTakeEachOtherAndTheValueAlong) {
  const ControlRef popup = Popup({u"a", u"b", u"c"});
  EXPECT_EQ(GetControlValue(popup), 1);
  SetControlMinimum(popup, 3);
  EXPECT_EQ(GetControlValue(popup), 3);
  SetControlMaximum(popup, 2);
  EXPECT_EQ(GetControlValue(popup), 2);
  SetControlValue(popup, 1);
  EXPECT_EQ(GetControlValue(popup), 2) << "the minimum went along";
  SetControlMinimum(popup, 5);
  EXPECT_EQ(GetControlValue(popup), 5) << "the maximum went along";
  SetControlMinimum(popup, 1);
  SetControlValue(popup, 9);
  EXPECT_EQ(GetControlValue(popup), 5);
}

TEST_F(Carbon, ReferencesThatAreGoneAreRefused) {
  const ControlRef button = Button(1, kCommand);
  Close();
  const ControlID id{0, 1};
  EXPECT_EQ(SetControlID(button, &id), paramErr);
  EXPECT_EQ(SetControlID(nullptr, &id), paramErr);
  EXPECT_EQ(RunAppModalLoopForWindow(window_), paramErr);
  EXPECT_EQ(AdvanceKeyboardFocus(window_), paramErr);
  EXPECT_EQ(RemoveEventHandler(handler_), paramErr);
  EXPECT_EQ(GetControlValue(button), 0);
  ControlRef orphan = button;
  EXPECT_EQ(CreatePushButtonControl(window_, &kBounds, CFSTR(""), &orphan), paramErr);
  EXPECT_EQ(orphan, nullptr);
}

TEST_F(Carbon, AWindowMayGoInsideItsOwnCommand) {
  Button(1, kCommand);
  EXPECT_EQ(Run("press 1"), noErr);
  EXPECT_EQ(carbon::LiveObjects(), at_start_);
  EXPECT_EQ(dialogs_->closed, 1);
}

TEST_F(Carbon, TheLoopEndsWithoutAnAnswerWhereThereIsNone) {
  Button(1, FourCharCode("ELSE"));
  EXPECT_EQ(Run("press 1"), eventLoopQuitErr);
  EXPECT_EQ(commands.size(), 1U);
  Rect bounds;
  EXPECT_EQ(GetWindowBounds(window_, kWindowContentRgn, &bounds), noErr) << "the window is kept";
}

TEST_F(Carbon, CommandsCarryTheMenuChoiceAlone) {
  const ControlRef popup = Popup({u"a", u"b"});
  const ControlID field{0, display::FieldId(1)};
  SetControlID(popup, &field);
  SetControlCommandID(popup, FourCharCode("MENU"));
  SetControlMaximum(popup, 1);
  Button(1, kCommand);
  EXPECT_EQ(Run("choose 1 2; press 1"), noErr);
  ASSERT_EQ(commands.size(), 2U);
  EXPECT_NE(commands[0].menu, nullptr);
  EXPECT_EQ(commands[0].menu_index, 2) << "the limits say what is shown, not what can be chosen";
  EXPECT_EQ(commands[1].menu, nullptr);
  EXPECT_EQ(commands[1].menu_index, 0);
}

TEST_F(Carbon, ButtonsThatAreDisabledOrHiddenDoNothing) {
  DisableControl(Button(1, kCommand));
  HideControl(Button(2, kCommand));
  Button(3, FourCharCode("ELSE"));
  EXPECT_EQ(Run("press 1; press 2; return; escape; press 3"), eventLoopQuitErr);
  EXPECT_EQ(commands.size(), 1U);
}

TEST_F(Carbon, DataIsTakenAndGivenByTagAndSize) {
  const ControlRef button = Button(1, kCommand);
  const std::uint8_t byte = 1;
  EXPECT_EQ(SetControlData(button, 0, kControlSizeTag, sizeof byte, &byte), paramErr);
  EXPECT_EQ(SetControlData(button, 0, FourCharCode("none"), sizeof byte, &byte), paramErr);
  const MenuRef gone = nullptr;
  EXPECT_EQ(SetControlData(button, 0, kControlPopupButtonMenuHandleTag, sizeof gone, &gone),
            paramErr);
  ListHandle list = nullptr;
  EXPECT_EQ(GetControlData(button, 0, kControlListBoxListHandleTag, sizeof list, &list, nullptr),
            paramErr);
}

TEST_F(Carbon, ListsHoldBytesAndGiveTheSelection) {
  ControlRef control = nullptr;
  CreateListBoxControl(window_, &kBounds, 0, 30, 1, 0, 1, 16, 100, 0, kListDefStandardText,
                       &control);
  ListHandle list = nullptr;
  Size size = 0;
  EXPECT_EQ(GetControlData(control, 0, kControlListBoxListHandleTag, sizeof list, &list, &size),
            noErr);
  EXPECT_EQ(LSetCell("abc", 3, {29, 0}, list), noErr);
  EXPECT_EQ(LSetCell("abc", 3, {30, 0}, list), paramErr);
  EXPECT_EQ(LSetCell("abc", 3, {-1, 0}, list), paramErr);
  char bytes[2];
  size = sizeof bytes;
  LGetCell(bytes, &size, {29, 0}, list);
  EXPECT_EQ(std::string(bytes, static_cast<std::size_t>(size)), "ab");
  LGetCell(bytes, &size, {30, 0}, list);
  EXPECT_EQ(size, 0);
  EXPECT_EQ(LLastClick(list), (Cell{-1, -1}));
  Run("row 4; row+ 9");
  Cell cell{0, 0};
  EXPECT_FALSE(LGetSelect(0, &cell, list));
  EXPECT_TRUE(LGetSelect(1, &cell, list));
  EXPECT_EQ(cell.v, 3);
  cell.v = 4;
  EXPECT_TRUE(LGetSelect(1, &cell, list));
  EXPECT_EQ(cell.v, 8);
  cell.v = 9;
  EXPECT_FALSE(LGetSelect(1, &cell, list));
  EXPECT_EQ(LLastClick(list).v, 8);
}

}  // namespace
