// The table of all advice: a function for each, which looks at one call and what was preset for it.

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>
#include <string>
#include <variant>

#include "advice/advice.h"
#include "advice/parameters.h"
#include "platform/carbon/control_ids.h"

namespace advice {
namespace {

using display::Control;
using display::ControlKind;
using Remarks = std::vector<Remark>;

constexpr int kFirstButton = 3;  // items of a standard or custom dialog
constexpr int kFirstLabel = 7;
constexpr int kPasswordItem = 11;
constexpr int kMostFields = control_id::kMost;
constexpr std::size_t kRows = 30;
constexpr std::size_t kMostCellBytes = 2048;

bool IsIn(const std::string& text, std::initializer_list<std::string_view> words) {
  std::string lower = text;
  for (char& sign : lower) sign = static_cast<char>(std::tolower(static_cast<unsigned char>(sign)));
  return std::find(words.begin(), words.end(), lower) != words.end();
}

bool IsOn(const std::string& text) { return !text.empty() && text != "0"; }

const std::string& ItemOf(const std::vector<std::string>& items, int number) {
  static const std::string kNone;
  const auto at = static_cast<std::size_t>(number) - 1;
  return at < items.size() ? items[at] : kNone;
}

const std::string& Item(const Situation& situation, int number) {
  return ItemOf(situation.items, number);
}

bool HasFields(const Call& call) {
  return call.function == "TarvoDialog" || call.function == "TarvoCustomDialog";
}

const display::Window* WindowOf(const Situation& situation) {
  const auto& dialog = situation.call.dialog;
  return dialog ? std::get_if<display::Window>(&*dialog) : nullptr;
}

// A standard or custom dialog that was shown.
bool ShowsFields(const Situation& situation) {
  return HasFields(situation.call) && WindowOf(situation);
}

int Fields(const Situation& situation) { return FieldCount(situation.call, situation.items); }

// The input of a field; null if it has none.
const Control* InputOf(const Situation& situation, int field) {
  return FindControl(situation.call, control_id::Field(field));
}

bool IsPopUp(const Control* input) { return input && input->kind == ControlKind::kPopup; }

const std::string& Label(const Situation& situation, int field) {
  return Item(situation, kFirstLabel - 1 + field);
}

// The texts of the buttons that the user sees, the default one first, each with its item.
std::vector<std::pair<std::string, int>> Buttons(const Situation& situation) {
  std::vector<std::pair<std::string, int>> buttons;
  if (!situation.call.dialog) return buttons;
  if (const auto* alert = std::get_if<display::Alert>(&*situation.call.dialog)) {
    int item = 4;
    for (const auto& text : {alert->default_button, alert->cancel_button, alert->other_button}) {
      if (text && !text->empty()) buttons.emplace_back(*text, item);
      ++item;
    }
    return buttons;
  }
  const int first = situation.call.function == "TarvoDoListBox" ? 2 : kFirstButton;
  for (int number = 1; number <= control_id::kMost; ++number) {
    const Control* button = FindControl(situation.call, control_id::Button(number));
    if (button && button->visible && button->text && !button->text->empty()) {
      buttons.emplace_back(*button->text, first - 1 + number);
    }
  }
  return buttons;
}

bool HasNoLabel(const Situation& situation) {
  for (int field = 1; field <= Fields(situation); ++field) {
    if (!Label(situation, field).empty()) return false;
  }
  return true;
}

// Without any label, a third button is likely to be one. With one field, the message may be its
// label.
bool LabelsAreButtons(const Situation& situation) {
  if (!ShowsFields(situation) || Fields(situation) == 0 || !HasNoLabel(situation)) return false;
  const std::string& third = Item(situation, kFirstButton + 2);
  const std::string& fourth = Item(situation, kFirstButton + 3);
  if (third.empty() && fourth.empty()) return false;
  return Fields(situation) > 1 || Item(situation, 2).empty() || third.ends_with(':') ||
         fourth.ends_with(':');
}

bool ButtonsAreLabels(const Situation& situation) {
  if (!ShowsFields(situation)) return false;
  for (int item = kFirstButton; item < kFirstLabel; ++item) {
    if (!Item(situation, item).empty()) return false;
  }
  for (int field = 1; field <= kMostFields; ++field) {
    const std::string& label = Label(situation, field);
    if (field > Fields(situation) ? !label.empty() : IsIn(label, {"ok", "cancel"})) return true;
  }
  return false;
}

Remarks LabelsAsButtons(const Situation& situation) {
  if (!LabelsAreButtons(situation)) return {};
  const int item = kFirstButton + (Item(situation, kFirstButton + 2).empty() ? 3 : 2);
  return {{Quoted(Item(situation, item)) + " is a button, and no field has a label", item}};
}

Remarks ButtonsAsLabels(const Situation& situation) {
  if (!ButtonsAreLabels(situation)) return {};
  for (int field = kMostFields; field >= 1; --field) {
    const std::string& label = Label(situation, field);
    if (label.empty()) continue;
    return {{Quoted(label) + " is the label of field " + std::to_string(field) +
                 ", and no button has a text",
             kFirstLabel - 1 + field}};
  }
  return {};
}

Remarks FieldWithoutLabel(const Situation& situation) {
  if (!ShowsFields(situation) || LabelsAreButtons(situation)) return {};
  Remarks remarks;
  const bool message_says_it = Fields(situation) == 1 && !Item(situation, 2).empty();
  for (int field = 1; field <= Fields(situation) && !message_says_it; ++field) {
    if (!Label(situation, field).empty() || !InputOf(situation, field)) continue;
    remarks.push_back(
        {"field " + std::to_string(field) + " has no label", kFirstLabel - 1 + field});
  }
  return remarks;
}

Remarks LabelWithoutField(const Situation& situation) {
  if (!ShowsFields(situation) || ButtonsAreLabels(situation)) return {};
  Remarks remarks;
  for (int field = Fields(situation) + 1; field <= kMostFields; ++field) {
    if (Label(situation, field).empty()) continue;
    remarks.push_back({Quoted(Label(situation, field)) + " is the label of field " +
                           std::to_string(field) + ", which the dialog does not have",
                       kFirstLabel - 1 + field});
  }
  return remarks;
}

// The first item behind those that are read, if one of them says something; else 0.
int FirstSurplus(const Situation& situation) {
  const Parameter* parameter = FindParameter(situation.call.function);
  if (!parameter || parameter->function == "TarvoSetCaption" ||
      parameter->function == "TarvoFillListBox") {
    return 0;
  }
  const std::vector<std::string> items = Split(situation.call.parameter, '|');
  for (std::size_t i = parameter->items.size(); i < items.size(); ++i) {
    if (IsOn(items[i])) return static_cast<int>(i) + 1;
  }
  return 0;
}

// Data whose "|" divides a text that was meant to be one item.
bool DividesAnItem(const Situation& situation, std::pair<std::size_t, std::size_t> data) {
  const std::string& parameter = situation.call.parameter;
  const std::string text = parameter.substr(data.first, data.second - data.first);
  if (text.find('|') == std::string::npos) return false;
  const bool joins_before =
      data.first > 0 && parameter[data.first - 1] != '|' && !text.starts_with('|');
  const bool joins_behind =
      data.second < parameter.size() && parameter[data.second] != '|' && !text.ends_with('|');
  return joins_before || joins_behind || text.find(" |") != std::string::npos ||
         text.find("| ") != std::string::npos || FirstSurplus(situation) > 0;
}

Remarks BarInData(const Situation& situation) {
  const Parameter* parameter = FindParameter(situation.call.function);
  if (!parameter || parameter->items.size() < 2) return {};
  for (const auto& data : situation.call.data) {
    if (!DividesAnItem(situation, data)) continue;
    const std::string before = situation.call.parameter.substr(0, data.first);
    const std::string text = situation.call.parameter.substr(data.first, data.second - data.first);
    return {{Quoted(text) + " comes from data and holds a |",
             static_cast<int>(std::count(before.begin(), before.end(), '|')) + 1}};
  }
  return {};
}

Remarks SurplusItems(const Situation& situation) {
  const int first = FirstSurplus(situation);
  if (first == 0 || !BarInData(situation).empty()) return {};
  const auto items = Split(situation.call.parameter, '|');
  return {{situation.call.function + " does not read item " + std::to_string(first) + ", " +
               Quoted(items[static_cast<std::size_t>(first) - 1]),
           first}};
}

Remarks TextForNumber(const Situation& situation) {
  const Parameter* parameter = FindParameter(situation.call.function);
  if (!parameter) return {};
  Remarks remarks;
  for (std::size_t i = 0; i < parameter->items.size(); ++i) {
    const auto number = static_cast<int>(i) + 1;
    const std::string& text = Item(situation, number);
    if (parameter->numbers[i] == '.' || text.empty() || HasNumber(text)) continue;
    if (parameter->numbers[i] == '?' && IsIn(text, {"no", "off", "false"})) continue;
    remarks.push_back(
        {Quoted(text) + " is read as the number 0: " + std::string(parameter->items[i]), number});
  }
  return remarks;
}

Remarks NoSuchCount(const Situation& situation) {
  if (!HasFields(situation.call) || !HasNumber(situation.items.front())) return {};
  const int most = situation.call.function == "TarvoDialog" ? 5 : kMostFields;
  const int count = NumberOf(situation.items.front());
  if (count >= 0 && count <= most) return {};
  return {{situation.call.function + " shows nothing for " + std::to_string(count) + " fields", 1}};
}

Remarks NoSuchKind(const Situation& situation) {
  Remarks remarks;
  if (situation.call.function == "TarvoAlert") {
    const std::string& kind = situation.items.front();
    if (kind.empty() || kind == "0" || kind == "1" || kind == "2" || kind == "3") return {};
    return {{Quoted(kind) + " is no kind of alert", 1}};
  }
  if (situation.call.function != "TarvoSetCustomControls") return {};
  for (int field = 1; field <= kMostFields; ++field) {
    const int kind = NumberOf(Item(situation, field));
    if (kind >= 0 && kind <= 4) continue;
    remarks.push_back({"there is no kind " + std::to_string(kind) + " of field", field});
  }
  return remarks;
}

Remarks NoSuchPasswordField(const Situation& situation) {
  if (!ShowsFields(situation) || situation.call.function != "TarvoDialog") return {};
  const int number = NumberOf(Item(situation, kPasswordItem));
  const bool has_popups = NumberOf(situation.items.front()) == 5;
  const int least = has_popups ? -Fields(situation) : 0;
  if (number >= least && number <= Fields(situation)) return {};
  return {{"field " + std::to_string(number) + " is to be the password field, and the dialog has " +
               std::to_string(Fields(situation)),
           kPasswordItem}};
}

Remarks NoSuchFocusField(const Situation& situation) {
  const Preset* focus = Find(situation.presets, "TarvoSetFocus");
  if (!focus || focus->used || !ShowsFields(situation) || Fields(situation) == 0) return {};
  const int number = NumberOf(focus->items.front());
  if (number <= Fields(situation)) return {};
  return {{"field " + std::to_string(number) + " is to have the focus, and the dialog has " +
               std::to_string(Fields(situation)),
           1, "TarvoSetFocus"}};
}

// A remark for each pre-entered text that `wrong` says something about, given the field's input,
// which may be null.
template <class Wrong>
Remarks OfPreEntered(const Situation& situation, Wrong wrong) {
  const Preset* texts = Find(situation.presets, "TarvoPreEnterText");
  if (!texts || !ShowsFields(situation)) return {};
  Remarks remarks;
  for (int field = 1; field <= kMostFields; ++field) {
    const std::string& text = ItemOf(texts->items, field);
    const Control* input = field <= Fields(situation) ? InputOf(situation, field) : nullptr;
    if (text.empty()) continue;
    const std::string what = wrong(text, field, input);
    if (!what.empty()) remarks.push_back({Quoted(text) + what, field, "TarvoPreEnterText"});
  }
  return remarks;
}

Remarks TextForNoField(const Situation& situation) {
  return OfPreEntered(situation, [](const std::string& text, int field, const Control* input) {
    return !input && IsOn(text) ? " is pre-entered for field " + std::to_string(field) +
                                      ", which the dialog does not have"
                                : std::string();
  });
}

Remarks TextNotInMenu(const Situation& situation) {
  return OfPreEntered(situation, [](const std::string& text, int field, const Control* input) {
    if (!IsPopUp(input) || input->items->empty()) return std::string();
    const auto& items = *input->items;
    if (std::find(items.begin(), items.end(), text) != items.end()) return std::string();
    return " is no item of the menu of field " + std::to_string(field);
  });
}

Remarks TextForPassword(const Situation& situation) {
  return OfPreEntered(situation, [](const std::string&, int field, const Control* input) {
    return input && input->kind == ControlKind::kPassword
               ? " is pre-entered for the password field " + std::to_string(field)
               : std::string();
  });
}

Remarks TextForSwitch(const Situation& situation) {
  return OfPreEntered(situation, [](const std::string& text, int field, const Control* input) {
    const bool is_switch =
        input && (input->kind == ControlKind::kCheckBox || input->kind == ControlKind::kRadio);
    return is_switch && text != "1" && !IsIn(text, {"0", "no", "off", "false"})
               ? " does not switch on field " + std::to_string(field)
               : std::string();
  });
}

Remarks MenuMissing(const Situation& situation) {
  if (situation.call.function == "TarvoDialog" && situation.call.result == "$$001$$") {
    return {{"the dialog is to have pop-up menus, and TarvoPopUps has defined none", 1}};
  }
  Remarks remarks;
  for (int field = 1; field <= Fields(situation); ++field) {
    const Control* input = InputOf(situation, field);
    if (IsPopUp(input) && input->items->empty()) {
      remarks.push_back({"the pop-up of field " + std::to_string(field) + " has no menu"});
    }
  }
  return remarks;
}

Remarks MenuGap(const Situation& situation) {
  Remarks remarks;
  for (int field = 1; field <= Fields(situation); ++field) {
    const Control* input = InputOf(situation, field);
    if (!IsPopUp(input) || input->items->empty()) continue;
    const Preset* menus = Find(situation.presets, "TarvoPopUps");
    if (!menus || !ItemOf(menus->items, field).empty()) continue;
    const auto& items = *input->items;
    if (std::all_of(items.begin(), items.end(), [](const auto& item) { return item.empty(); })) {
      remarks.push_back(
          {"the menu of field " + std::to_string(field) + " is empty", field, "TarvoPopUps"});
    }
  }
  return remarks;
}

Remarks MenuLost(const Situation& situation) {
  const Preset* menus = Find(situation.presets, "TarvoPopUps");
  if (!menus || !HasFields(situation.call)) return {};
  const bool has_popups = situation.call.function == "TarvoDialog"
                              ? NumberOf(situation.items.front()) == 5
                              : ShowsFields(situation);
  Remarks remarks;
  for (int field = 1; field <= kMostFields && has_popups; ++field) {
    const std::string& menu = ItemOf(menus->items, field);
    const bool is_shown = UnitsOf(menu) >= 2 && field <= static_cast<int>(MenuCount(menus->items));
    if (menu.empty() || is_shown) continue;
    if (situation.call.function == "TarvoCustomDialog" && !IsPopUp(InputOf(situation, field))) {
      continue;
    }
    remarks.push_back({"the menu " + Quoted(menu) + " is not offered", field, "TarvoPopUps"});
  }
  return remarks;
}

Remarks OfRows(const Situation& situation, Remarks (*look)(const std::vector<std::string>& rows)) {
  const Preset* list = Find(situation.presets, "TarvoFillListBox");
  if (situation.call.function != "TarvoDoListBox" || !list) return {};
  return look(Split(list->items.front(), '\r'));
}

Remarks RowsBeyondTheLast(const Situation& situation) {
  return OfRows(situation, [](const std::vector<std::string>& rows) -> Remarks {
    const auto ends = std::find_if(rows.rbegin(), rows.rend(),
                                   [](const std::string& row) { return !row.empty(); });
    if (rows.rend() - ends <= static_cast<std::ptrdiff_t>(kRows)) return {};
    return {{"the list has " + std::to_string(rows.size()) + " lines, and " + Quoted(rows[kRows]) +
                 " is the first that is not shown",
             0, "TarvoFillListBox"}};
  });
}

Remarks RowTooLong(const Situation& situation) {
  return OfRows(situation, [](const std::vector<std::string>& rows) {
    Remarks remarks;
    for (std::size_t i = 0; i < std::min(rows.size(), kRows); ++i) {
      if (rows[i].size() <= kMostCellBytes) continue;
      remarks.push_back({"line " + std::to_string(i + 1) + " of the list has " +
                             std::to_string(rows[i].size()) + " bytes",
                         0, "TarvoFillListBox"});
    }
    return remarks;
  });
}

Remarks ListMissing(const Situation& situation) {
  if (situation.call.function != "TarvoDoListBox" || Find(situation.presets, "TarvoFillListBox")) {
    return {};
  }
  return {{"the list has no lines"}};
}

Remarks ParameterTooLong(const Situation& situation) {
  const Parameter* parameter = FindParameter(situation.call.function);
  const std::size_t units = UnitsOf(situation.call.parameter);
  if (!parameter || !parameter->has_limit || units <= kMostUnits) return {};
  return {{"the parameter of " + situation.call.function + " has " + std::to_string(units) +
           " characters"}};
}

Remarks TextCut(const Situation& situation) {
  Remarks remarks;
  for (const std::string& text : situation.call.cut) {
    const auto item = std::find(situation.items.begin(), situation.items.end(), text);
    remarks.push_back(
        {Quoted(text) + " is cut on the screen",
         item == situation.items.end() ? 0 : static_cast<int>(item - situation.items.begin()) + 1});
  }
  return remarks;
}

Remarks SameButtons(const Situation& situation) {
  Remarks remarks;
  const auto buttons = Buttons(situation);
  for (auto button = buttons.begin(); button != buttons.end(); ++button) {
    if (std::any_of(buttons.begin(), button,
                    [&](const auto& other) { return other.first == button->first; })) {
      remarks.push_back({"two buttons say " + Quoted(button->first), button->second});
    }
  }
  return remarks;
}

std::string FirstWord(const std::string& text) { return text.substr(0, text.find(' ')); }

bool Destroys(const std::string& button) {
  return IsIn(FirstWord(button),
              {"delete", "erase", "remove", "discard", "destroy", "overwrite", "löschen",
               "entfernen", "verwerfen", "supprimer", "effacer", "eliminar", "borrar", "削除"});
}

bool IsCancel(const std::string& button) {
  return IsIn(button, {"cancel", "abbrechen", "annuler", "cancelar", "キャンセル"});
}

bool EscapeCancels(const Situation& situation) {
  const Control* cancel = FindControl(situation.call, control_id::kCancel);
  return cancel && cancel->visible;
}

Remarks NoWayBack(const Situation& situation) {
  const auto buttons = Buttons(situation);
  if (buttons.empty() || EscapeCancels(situation)) return {};
  const bool all_destroy = std::all_of(buttons.begin(), buttons.end(),
                                       [](const auto& button) { return Destroys(button.first); });
  if (!all_destroy) return {};
  return {{Quoted(buttons.front().first) + " is the default, and nothing cancels",
           buttons.front().second}};
}

Remarks EscapeForbidden(const Situation& situation) {
  if (!ShowsFields(situation) || Fields(situation) > 0 || EscapeCancels(situation)) return {};
  for (const auto& [text, item] : Buttons(situation)) {
    if (IsCancel(text)) return {{"Escape does not do what " + Quoted(text) + " does", item}};
  }
  return {};
}

constexpr Advice kAdvice[] = {
    {"labels-as-buttons", "Labels stand where buttons do",
     "items 3 to 6 are buttons; the labels begin with item 7",
     R"(TarvoDialog ( "2|Enter the name|OK|Cancel|First|Last" ))", LabelsAsButtons},
    {"buttons-as-labels", "Buttons stand where labels do",
     "items 7 to 10 are labels; the buttons begin with item 3",
     R"(TarvoDialog ( "0|Save the changes?|||||Save|Discard" ))", ButtonsAsLabels},
    {"field-without-label", "A field has no label",
     "the user cannot know what belongs in it; of one field alone the message may say it",
     R"(TarvoDialog ( "2|Enter the name|OK|Cancel|||First" ))", FieldWithoutLabel},
    {"label-without-field", "A label has no field", "it is not shown",
     R"(TarvoDialog ( "1|Enter the name|OK|Cancel|||First|Last" ))", LabelWithoutField},
    {"surplus-items", "There are more items than are read", "the rest is ignored",
     R"(TarvoDialog ( "1|Enter the name|OK|Cancel|||Name|||||Title" ))", SurplusItems},
    {"bar-in-data", "A text that comes from data holds a |",
     "it divides the text, and all items behind it move; Substitute ( text ; \"|\" ; \"/\" ) "
     "removes it",
     R"(Let ( name = "Smith|Sons" ; TarvoDialog ( "1|Where does " & name & " live?|OK" ) ))",
     BarInData},
    {"text-for-number", "A text stands where a number is read",
     "a text that does not begin with a number counts as 0", R"(TarvoDialog ( "Your name?|OK" ))",
     TextForNumber},
    {"no-such-count", "A dialog is to have more fields than there can be",
     "no dialog is shown, and the result of the last one comes back",
     R"(TarvoCustomDialog ( "5|Enter the address|OK" ))", NoSuchCount},
    {"no-such-kind", "A kind is none",
     "a field of another kind than 0 to 4 has only its label; an alert of another kind than 0 to 3 "
     "is plain",
     R"(TarvoAlert ( "stop|The disk is full.||OK" ))", NoSuchKind},
    {"no-such-password-field", "The password field is none of the dialog's",
     "what the user types can be read by others",
     R"(TarvoDialog ( "2|Please log in.|Log in|Cancel|||Name|Password|||3" ))",
     NoSuchPasswordField},
    {"no-such-focus-field", "The focus is to be in a field that the dialog does not have",
     "no field has the focus, unless the dialog has only one",
     R"(TarvoSetFocus ( "3" )
TarvoDialog ( "2|Enter the name|OK|Cancel|||First|Last" ))",
     NoSuchFocusField},
    {"text-for-no-field", "A text is pre-entered for a field that the dialog does not have",
     "it is not shown",
     R"(TarvoPreEnterText ( "Ann|Lee" )
TarvoDialog ( "1|What is your name?|OK" ))",
     TextForNoField},
    {"text-not-in-menu", "A pre-entered text is no item of its menu",
     "the menu shows its first item; a text must be written exactly as in the menu",
     R"(TarvoPopUps ( "Small¶Medium¶Large" )
TarvoPreEnterText ( "large" )
TarvoDialog ( "5|Which size?|OK|Cancel|||Size" ))",
     TextNotInMenu},
    {"text-for-password", "A text is pre-entered for a password field",
     "a password field always starts empty",
     R"(TarvoPreEnterText ( "secret" )
TarvoDialog ( "1|Your password?|OK||||||||1" ))",
     TextForPassword},
    {"text-for-switch", "A pre-entered text switches nothing on",
     "a check box or radio button starts on for 1 alone",
     R"(TarvoSetCustomControls ( "3" )
TarvoPreEnterText ( "yes" )
TarvoCustomDialog ( "1|How shall it go out?|Send||||Urgent" ))",
     TextForSwitch},
    {"menu-missing", "A pop-up has no menu",
     "TarvoPopUps defines the menus, each at the place of its field",
     R"(TarvoDialog ( "5|Which size?|OK|Cancel|||Size" ))", MenuMissing},
    {"menu-gap", "A pop-up has an empty menu",
     "an empty text before a menu is a menu of one empty item",
     R"(TarvoPopUps ( "|Red¶Blue" )
TarvoDialog ( "5|Which shirt?|OK|Cancel|||Size|Colour" ))",
     MenuGap},
    {"menu-lost", "A menu is not offered",
     "a menu of a single character is none, and because of it a later one may not be counted",
     R"(TarvoPopUps ( "Small¶Large|X|Red¶Blue" )
TarvoDialog ( "5|Which shirt?|OK|Cancel|||Size|Cut" ))",
     MenuLost},
    {"rows-beyond-the-last", "A list has more lines than are shown",
     "the list box shows the first 30 lines",
     R"(TarvoFillListBox ( Substitute ( 10^40 ; "0" ; "Apple¶" ) )
TarvoDoListBox ( "Which apple?|OK|Cancel" ))",
     RowsBeyondTheLast},
    {"row-too-long", "A line of a list is too long", "only its first 2,048 bytes come back",
     R"(TarvoFillListBox ( Substitute ( 10^350 ; "0" ; "Apples" ) )
TarvoDoListBox ( "Which apples?|OK|Cancel" ))",
     RowTooLong},
    {"list-missing", "A list box has no lines", "TarvoFillListBox supplies them",
     R"(TarvoDoListBox ( "Which apple?|OK|Cancel" ))", ListMissing},
    {"parameter-too-long", "A parameter is too long for its function",
     "it takes 1,024 characters at most, and returns $$002$$",
     R"(TarvoSetCaption ( Substitute ( 10^300 ; "0" ; "long" ) ))", ParameterTooLong},
    {"text-cut", "A text is cut on the screen", "it is longer than its place",
     R"(TarvoDialog ( "0|Ready?|A button with far too long a text" ))", TextCut},
    {"same-buttons", "Two buttons have one text",
     "the user cannot tell them apart; an empty button 1 says OK",
     R"(TarvoDialog ( "0|Ready?||OK" ))", SameButtons},
    {"no-way-back", "The default button destroys, and nothing cancels",
     "Return presses it; a button that cancels, or Escape, leaves a way out",
     R"(TarvoDialog ( "0|All orders will be deleted.|Delete" ))", NoWayBack},
    {"escape-forbidden", "Escape does not cancel a message that has Cancel",
     "a dialog without fields is like an alert, where Escape cancels; TarvoAllowEscape ( 1 ) "
     "allows it for the next dialog, and the result is E then",
     R"(TarvoDialog ( "0|Send the order?|Send|Cancel" ))", EscapeForbidden},
    {"preset-unused", "A preset is never used",
     "it serves another kind of dialog, or comes behind the last one",
     R"(TarvoDialog ( "1|What is your name?|OK" )
TarvoPreEnterText ( "Ann" ))",
     nullptr},
};

}  // namespace

std::span<const Advice> AllAdvice() { return kAdvice; }

}  // namespace advice
