#include "platform/carbon/Carbon.h"

#include <gtest/gtest.h>

#include "platform/carbon/CarbonHost.h"
#include "tests/support/changed_variable.h"
#include "tests/support/scripted_dialogs.h"

namespace {

constexpr Rect kBounds{10, 10, 30, 110};
constexpr OSType kCommand = FourCharCode("TEST");
constexpr OSType kGone = FourCharCode("GONE");
constexpr EventTypeSpec kCommands{kEventClassCommand, kEventCommandProcess};

std::vector<HICommand> commands;
WindowRef running;

void Close(WindowRef window) {
  EventRef close = nullptr;
  CreateEvent(nullptr, kEventClassWindow, kEventWindowClose, GetCurrentEventTime(), 0, &close);
  SendEventToEventTarget(close, GetWindowEventTarget(window));
  ReleaseEvent(close);
}

// Notes the command. TEST ends the dialog as a plug-in does, from within its own command; GONE
// closes the window alone.
OSStatus Handle(EventHandlerCallRef, EventRef event, void*) {
  HICommand command{};
  GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                    &command);
  commands.push_back(command);
  if (command.command_id == kCommand) QuitAppModalLoopForWindow(running);
  if (command.command_id == kCommand || command.command_id == kGone) Close(running);
  return eventNotHandledErr;
}

class Carbon : public testing::Test {
 protected:
  Carbon() {
    commands.clear();
    const Rect content{40, 0, 140, 200};
    CreateNewWindow(kMovableModalWindowClass, kWindowStandardHandlerAttribute, &content, &window_);
    running = window_;
    InstallEventHandler(GetWindowEventTarget(window_), NewEventHandlerUPP(Handle), 1, &kCommands,
                        nullptr, &handler_);
  }

  ~Carbon() override {
    Close(window_);
    EXPECT_EQ(carbon::LiveObjects(), at_start_);
    carbon::SetDisplay(nullptr);
  }

  ControlRef Popup(std::initializer_list<const char16_t*> items) {
    ControlRef popup = nullptr;
    CreatePopupButtonControl(window_, &kBounds, nullptr, -12345, 1, 0, teFlushLeft, 0, &popup);
    MenuRef menu = nullptr;
    CreateNewMenu(1, 0, &menu);
    std::uint16_t index = 0;
    for (const char16_t* item : items) {
      const CFStringRef text = CFStringCreateWithCharacters(
          nullptr, item, static_cast<CFIndex>(std::u16string_view(item).size()));
      AppendMenuItemTextWithCFString(menu, text, 0, 0, &index);
      CFRelease(text);
    }
    EXPECT_EQ(index, items.size());
    SetControlData(popup, 0, kControlPopupButtonMenuHandleTag, sizeof menu, &menu);
    ReleaseMenu(menu);
    return popup;
  }

  static ControlRef Identify(ControlRef control, int number, OSType command) {
    const ControlID id{0, number};
    SetControlID(control, &id);
    SetControlCommandID(control, command);
    return control;
  }

  ControlRef Button(int number, OSType command) {
    ControlRef button = nullptr;
    CreatePushButtonControl(window_, &kBounds, CFSTR("Button"), &button);
    return Identify(button, control_id::Button(number), command);
  }

  ListHandle List(ControlRef* control) {
    CreateListBoxControl(window_, &kBounds, 0, 30, 1, 0, 1, 16, 100, 0, kListDefStandardText,
                         control);
    ListHandle list = nullptr;
    Size size = 0;
    EXPECT_EQ(GetControlData(*control, 0, kControlListBoxListHandleTag, sizeof list, &list, &size),
              noErr);
    EXPECT_EQ(size, static_cast<Size>(sizeof list));
    return list;
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
  ControlRef control = nullptr;
  const ListHandle list = List(&control);
  EXPECT_NE(GetListPort(list), nullptr);
  Close(window_);
  Cell cell{0, 0};
  Size size = 1;
  LGetCell(nullptr, &size, cell, list);
  EXPECT_EQ(size, 0);
  EXPECT_FALSE(LGetSelect(1, &cell, list));
  EXPECT_EQ(LLastClick(list).v, -1);
  EXPECT_EQ(LLastClick(list).h, -1);
  EXPECT_EQ(GetListPort(list), nullptr);
  Rect port = kBounds;
  GetPortBounds(GetListPort(list), &port);
  EXPECT_EQ(port.right, 0);
  DisposeWindow(window_);
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
  EXPECT_EQ(CreateListBoxControl(window_, &kBounds, 0, 30, 1, 0, 1, 16, 100, 0, 0, &orphan),
            paramErr);
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
  Button(2, kGone);
  display::ScriptedDisplay bare(display::ParseAnswerText("tab; press 2"));
  carbon::SetDisplay(&bare);
  EXPECT_EQ(RunAppModalLoopForWindow(window_), eventLoopQuitErr) << "nothing is left to ask";
  EXPECT_FALSE(bare.failure());
}

TEST_F(Carbon, ADialogThatCannotBeShownHasNoAnswer) {
  class NoScreen : public display::ScriptedDisplay {
   public:
    using ScriptedDisplay::ScriptedDisplay;
    bool Open(const display::Description&) override { return false; }
  } none(std::vector<display::Answer>{});
  const testing_tools::ChangedVariable display("DISPLAY", "");
  const testing_tools::ChangedVariable compositor("WAYLAND_DISPLAY", "none");
  for (display::Display* shown :
       {static_cast<display::Display*>(&none), &carbon::DefaultDisplay()}) {
    carbon::SetDisplay(shown == &none ? shown : nullptr);
    EXPECT_EQ(RunAppModalLoopForWindow(window_), eventLoopQuitErr);
    const AlertStdCFStringAlertParamRec parameters{};
    DialogRef alert = nullptr;
    CreateStandardAlert(0, CFSTR("m"), CFSTR("e"), &parameters, &alert);
    std::int16_t item = 1;
    EXPECT_EQ(RunStandardAlert(alert, nullptr, &item), eventLoopQuitErr);
    EXPECT_EQ(item, 0);
    item = 1;
    EXPECT_EQ(RunStandardAlert(alert, nullptr, &item), paramErr) << "an alert runs once";
    EXPECT_EQ(item, 0);
  }
}

TEST_F(Carbon, AlertsHaveWhatTheyAreGiven) {
  AlertStdCFStringAlertParamRec all{};
  all.default_text = all.cancel_text = all.other_text = CFSTR("Button");
  AlertStdCFStringAlertParamRec swapped = all;
  swapped.movable = swapped.help_button = 1;
  swapped.flags = 5;
  swapped.default_button = 3;
  swapped.cancel_button = 1;
  AlertStdCFStringAlertParamRec two = all;
  two.cancel_text = nullptr;
  const struct {
    const AlertStdCFStringAlertParamRec& parameters;
    const char* answers;
    int pressed;
  } rows[] = {{all, "return", 1},        {all, "escape", 2},           {swapped, "return", 3},
              {swapped, "close", 1},     {two, "escape; press 3", 3},  {two, "tab; press 3", 3},
              {two, "close; return", 1}, {all, "tab; tab; press 2", 2}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.answers);
    DialogRef alert = nullptr;
    EXPECT_EQ(CreateStandardAlert(0, CFSTR("m"), CFSTR("e"), &row.parameters, &alert), noErr);
    dialogs_ = std::make_unique<ScriptedDialogs>(display::ParseAnswerText(row.answers));
    carbon::SetDisplay(dialogs_.get());
    std::int16_t item = 0;
    EXPECT_EQ(RunStandardAlert(alert, nullptr, &item), noErr);
    EXPECT_EQ(item, row.pressed);
    const bool given = &row.parameters == &swapped;
    EXPECT_EQ(dialogs_->opened[0].at("movable"), given);
    EXPECT_EQ(dialogs_->opened[0].at("helpButton"), given);
    EXPECT_EQ(dialogs_->opened[0].at("flags"), given ? 5 : 0);
  }
}

TEST_F(Carbon, WindowsKeepTheirSizeWhereverTheyGo) {
  class SecondScreen : public display::ScriptedDisplay {
   public:
    using ScriptedDisplay::ScriptedDisplay;
    Rect MainScreen() override { return {100, 200, 700, 1000}; }
  } screen(std::vector<display::Answer>{});
  carbon::SetDisplay(&screen);
  const Rect content{40, 30, 140, 230};
  WindowRef window = nullptr;
  CreateNewWindow(kMovableModalWindowClass, 0, &content, &window);
  Rect bounds{};
  const auto expect = [&](int top, int left) {
    GetWindowBounds(window, kWindowContentRgn, &bounds);
    EXPECT_EQ(bounds.top, top);
    EXPECT_EQ(bounds.left, left);
    EXPECT_EQ(bounds.bottom, top + 100);
    EXPECT_EQ(bounds.right, left + 200);
  };
  expect(40, 30);
  RepositionWindow(window, nullptr, kWindowCenterOnMainScreen);
  expect(350, 500);
  MoveWindow(window, 7, 9, 1);
  expect(9, 7);
  DisposeWindow(window);
}

TEST_F(Carbon, EventsGoToWhoeverHandlesThem) {
  constexpr std::uint32_t kOther = 99;
  constexpr EventTypeSpec kKept[] = {{kEventClassCommand, kOther},
                                     {kEventClassWindow, kEventWindowClose}};
  const EventTargetRef target = GetWindowEventTarget(window_);
  const auto keep = [](EventHandlerCallRef, EventRef, void*) { return OSStatus{noErr}; };
  EventHandlerRef keeper = nullptr;
  InstallEventHandler(target, keep, 2, kKept, nullptr, &keeper);
  Close(window_);
  Button(1, FourCharCode("ELSE"));
  Run("press 1");
  EXPECT_EQ(commands.size(), 1U) << "the window was kept, and its first handler is asked too";
  EXPECT_EQ(RemoveEventHandler(keeper), noErr);
  EventRef event = nullptr;
  for (const OSType event_class : {kEventClassCommand, kEventClassWindow}) {
    CreateEvent(nullptr, event_class, kOther, 0, 0, &event);
    EXPECT_EQ(SendEventToEventTarget(event, target), eventNotHandledErr);
    ReleaseEvent(event);
  }
  EXPECT_EQ(SendEventToEventTarget(event, target), paramErr);
  WindowRef plain = nullptr;
  CreateNewWindow(kMovableModalWindowClass, 0, &kBounds, &plain);
  Close(plain);
  Rect bounds;
  EXPECT_EQ(GetWindowBounds(plain, kWindowContentRgn, &bounds), noErr) << "it has no such handler";
  DisposeWindow(plain);
}

TEST_F(Carbon, EventParametersHaveNameTypeAndSize) {
  EventRef event = nullptr;
  CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event);
  SetEventParameter(event, kCommand, kGone, 4, "four");
  char bytes[3] = "--";
  OSType type = 0;
  Size size = 0;
  EXPECT_EQ(GetEventParameter(event, kGone, kGone, &type, 2, &size, bytes), paramErr);
  EXPECT_EQ(GetEventParameter(event, kCommand, kCommand, &type, 2, &size, bytes), paramErr);
  EXPECT_EQ(GetEventParameter(event, kCommand, kGone, &type, 2, &size, bytes), noErr);
  EXPECT_STREQ(bytes, "fo");
  EXPECT_EQ(type, kGone);
  EXPECT_EQ(size, 4);
  ReleaseEvent(event);
}

TEST_F(Carbon, SaysWhatADialogDoesNotHave) {
  ControlRef control = nullptr;
  CreateStaticTextControl(window_, &kBounds, nullptr, nullptr, &control);
  CreateStaticTextControl(window_, &kBounds, CFSTR(""), nullptr, &control);
  CreateStaticTextControl(window_, &kBounds, CFSTR("message"), nullptr, &control);
  Identify(control, control_id::Button(1), kCommand);
  ControlRef box = nullptr;
  CreateCheckBoxControl(window_, &kBounds, nullptr, 0, 0, &box);
  Identify(box, control_id::Field(1), kCommand);
  AdvanceKeyboardFocus(window_);
  Identify(Popup({u"a"}), control_id::Field(2), kCommand);
  List(&control);
  struct {
    const char* action;
    const char* reason;
  } rows[] = {{"type x", "no edit field has the focus"},
              {"enter 1 x", "there is no edit or password field 1"},
              {"click 2", "there is no check box or radio button in field 2"},
              {"click 4", "there is no check box or radio button in field 4"},
              {"choose 2 0", "there is no item 0 in the menu of field 2"},
              {"row 0", "there is no list row 0"},
              {"press 1", "there is no button 1"}};
  for (const auto& row : rows) {
    Run(row.action);
    EXPECT_EQ(dialogs_->failure()->reason, "\"" + std::string(row.action) + "\": " + row.reason);
    EXPECT_EQ(dialogs_->failure()->caption, "message");
  }
  Run("click 1");
  EXPECT_EQ(GetControlValue(box), 0) << "this box is not one that toggles itself";
  EXPECT_EQ(commands.size(), 1U);
}

TEST_F(Carbon, EveryChangeIsShown) {
  ControlRef controls[5]{};
  CreateEditUnicodeTextControl(window_, &kBounds, CFSTR(""), 0, nullptr, &controls[0]);
  Identify(controls[0], control_id::Field(1), kGone + 1);
  controls[1] = Identify(Popup({u"a", u"b"}), control_id::Field(2), kGone + 1);
  CreateCheckBoxControl(window_, &kBounds, CFSTR("Box"), 1, 1, &controls[2]);
  Identify(controls[2], control_id::Field(3), kGone + 1);
  EXPECT_EQ(GetControlValue(controls[2]), 1);
  CreatePopupButtonControl(window_, &kBounds, nullptr, -12345, 1, 0, teFlushLeft, 0, &controls[3]);
  Identify(controls[3], control_id::Field(4), kGone + 1);
  const ListHandle list = List(&controls[4]);
  SetThemeWindowBackground(window_, 7, 0);
  Run("enter 1 x; tab; type y; choose 2 2; click 3; row 4");
  std::vector<std::size_t> changed;
  for (const auto& [index, control] : dialogs_->changes) changed.push_back(index);
  // The focus goes from nowhere to the text.
  EXPECT_EQ(changed, (std::vector<std::size_t>{0, 0, 0, 1, 2, 4}));
  for (const HICommand& command : commands) EXPECT_EQ(command.attributes, 0U);
  EXPECT_EQ(LLastClick(list).h, 0);
  const auto& shown = dialogs_->opened[0];
  EXPECT_EQ(shown.at("class"), 4);
  EXPECT_EQ(shown.at("background"), 7);
  EXPECT_EQ(shown.at("controls")[1].at("menu").at("variableWidth"), true);
  Run("choose 4 1");
  EXPECT_EQ(dialogs_->failure()->reason,
            "\"choose 4 1\": there is no item 1 in the menu of field 4");
}

TEST_F(Carbon, TabStopsAtNothingWhereThereIsNothing) {
  Run("tab");
  EXPECT_EQ(dialogs_->failure()->reason, "there is no answer left");
}

TEST_F(Carbon, CommandsCarryTheMenuChoiceAlone) {
  const ControlRef popup = Popup({u"a", u"b"});
  const ControlID field{0, control_id::Field(1)};
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
  EXPECT_EQ(Run("tab; press 1; press 2; return; escape; press 3"), eventLoopQuitErr);
  EXPECT_EQ(commands.size(), 1U);
  ASSERT_EQ(dialogs_->changes.size(), 1U);
  EXPECT_EQ(dialogs_->changes[0].first, 2U) << "and have no focus";
}

TEST_F(Carbon, DataIsTakenAndGivenByTagAndSize) {
  const ControlRef button = Button(1, kCommand);
  const std::uint8_t byte = 1;
  EXPECT_EQ(SetControlData(button, 0, kControlSizeTag, sizeof byte, &byte), paramErr);
  EXPECT_EQ(SetControlData(button, 0, FourCharCode("none"), sizeof byte, &byte), paramErr);
  EXPECT_EQ(SetControlData(button, 0, kControlPushButtonDefaultTag, 0, &byte), paramErr);
  const MenuRef gone = nullptr;
  EXPECT_EQ(SetControlData(button, 0, kControlPopupButtonMenuHandleTag, sizeof gone, &gone),
            paramErr);
  ListHandle list = nullptr;
  EXPECT_EQ(GetControlData(button, 0, kControlListBoxListHandleTag, sizeof list, &list, nullptr),
            paramErr);
  for (const Size size : {1, 2, 8}) {
    EXPECT_EQ(SetControlData(button, 0, FourCharCode("none"), size, "unused!"), paramErr);
  }
  EXPECT_EQ(SetControlData(button, 0, kControlPopupButtonMenuHandleTag, 1, "unused!"), paramErr);
  ControlRef control = Popup({});
  EXPECT_EQ(GetControlData(control, 0, kControlEditTextCFStringTag, sizeof list, &list, nullptr),
            paramErr);
  List(&control);
  EXPECT_EQ(GetControlData(control, 0, kControlListBoxListHandleTag, 1, &list, nullptr), paramErr);
  CreateEditUnicodeTextControl(window_, &kBounds, CFSTR("text"), 0, nullptr, &control);
  const ControlFontStyleRec style{};
  SetControlFontStyle(control, &style);
  Run("");
  const auto& edit = dialogs_->opened[0].at("controls").back();
  EXPECT_EQ(edit.at("text"), "text");
  EXPECT_EQ(edit.at("font"), nullptr) << "a style without a font changes none";
}

TEST_F(Carbon, ListsHoldBytesAndGiveTheSelection) {
  ControlRef control = nullptr;
  const ListHandle list = List(&control);
  EXPECT_EQ(LSetCell("abc", 3, {29, 0}, list), noErr);
  EXPECT_EQ(LSetCell("abc", 3, {30, 0}, list), paramErr);
  EXPECT_EQ(LSetCell("abc", 3, {-1, 0}, list), paramErr);
  char bytes[2];
  Size size = sizeof bytes;
  LGetCell(bytes, &size, {29, 0}, list);
  EXPECT_EQ(std::string(bytes, static_cast<std::size_t>(size)), "ab");
  LGetCell(bytes, &size, {30, 0}, list);
  EXPECT_EQ(size, 0);
  EXPECT_EQ(LLastClick(list).v, -1);
  SetListSelectionFlags(list, 0);
  Run("row 4; row+ 9");
  Cell cell{2, 0};
  EXPECT_FALSE(LGetSelect(0, &cell, list));
  EXPECT_EQ(LGetSelect(1, &cell, list), 1);
  EXPECT_EQ(cell.v, 3);
  EXPECT_EQ(cell.h, 0);
  EXPECT_TRUE(LGetSelect(0, &cell, list));
  cell.v = 4;
  EXPECT_TRUE(LGetSelect(1, &cell, list));
  EXPECT_EQ(cell.v, 8);
  cell.v = 9;
  EXPECT_FALSE(LGetSelect(1, &cell, list));
  EXPECT_EQ(LLastClick(list).v, 8);
  Rect port{};
  GetPortBounds(GetListPort(list), &port);
  EXPECT_EQ(port.bottom, 100);
  Point pointer{};
  GetMouse(&pointer);
  EXPECT_EQ(pointer.v, 50) << "the list's top";
  Run("row 2; row+ 5; row- 7");
  const display::Control& shown = dialogs_->changes.back().second;
  EXPECT_EQ(shown.selected, (std::vector<int>{5, 6, 7})) << "from where it was toggled";
  EXPECT_TRUE(shown.multiple);
  EXPECT_EQ(shown.cell->height, 16);
  EXPECT_EQ(shown.cell->width, 100);
  Run("row 1");
  EXPECT_EQ(dialogs_->changes.back().second.selected, (std::vector<int>{1}));
}

}  // namespace
