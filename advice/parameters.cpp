#include "advice/parameters.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>

namespace advice {
namespace {

constexpr std::string_view kDialog[] = {"the number of fields",
                                        "the message",
                                        "button 1",
                                        "button 2",
                                        "button 3",
                                        "button 4",
                                        "label of field 1",
                                        "label of field 2",
                                        "label of field 3",
                                        "label of field 4",
                                        "the number of the password field"};
constexpr std::string_view kListBox[] = {"the message",
                                         "button 1",
                                         "button 2",
                                         "button 3",
                                         "button 4",
                                         "not used",
                                         "a second click on a line chooses it",
                                         "button 1 waits for a click in the list",
                                         "not used",
                                         "several lines can be chosen"};
constexpr std::string_view kAlert[] = {"the kind",          "the message",
                                       "the explanation",   "the default button",
                                       "the cancel button", "the other button"};
constexpr std::string_view kKinds[] = {"the kind of field 1", "the kind of field 2",
                                       "the kind of field 3", "the kind of field 4"};
constexpr std::string_view kMenus[] = {"the menu of field 1", "the menu of field 2",
                                       "the menu of field 3", "the menu of field 4"};
constexpr std::string_view kPreEntered[] = {"what field 1 starts with", "what field 2 starts with",
                                            "what field 3 starts with", "what field 4 starts with"};
constexpr std::string_view kPosition[] = {"the left edge", "the top edge"};
constexpr std::string_view kFocus[] = {"the number of the field with the focus"};
constexpr std::string_view kEscape[] = {"Escape cancels"};
constexpr std::string_view kCaption[] = {"the caption"};
constexpr std::string_view kLines[] = {"the lines"};

constexpr Parameter kParameters[] = {
    {"TarvoDialog", false, kDialog, "#.........#"},
    {"TarvoCustomDialog", true, std::span(kDialog).first(10), "#........."},
    {"TarvoDoListBox", true, kListBox, "......??.?"},
    {"TarvoAlert", true, kAlert, "......"},
    {"TarvoSetCaption", true, kCaption, "."},
    {"TarvoSetCustomControls", true, kKinds, "####"},
    {"TarvoPopUps", false, kMenus, "...."},
    {"TarvoFillListBox", false, kLines, "."},
    {"TarvoPreEnterText", true, kPreEntered, "...."},
    {"TarvoPosition", true, kPosition, "##"},
    {"TarvoSetFocus", true, kFocus, "#"},
    {"TarvoAllowEscape", true, kEscape, "?"},
};

}  // namespace

const Parameter* FindParameter(std::string_view function) {
  const auto* const found =
      std::find_if(std::begin(kParameters), std::end(kParameters),
                   [&](const Parameter& parameter) { return parameter.function == function; });
  return found == std::end(kParameters) ? nullptr : found;
}

std::vector<std::string> SplitItems(std::string_view function, std::string_view parameter) {
  const Parameter* known = FindParameter(function);
  if (!known || known->items.size() < 2) return {std::string(parameter)};
  return Split(parameter, '|');
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

namespace {

std::string_view WithoutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size()));
  return text;
}

}  // namespace

bool HasNumber(std::string_view text) {
  text = WithoutBlanks(text);
  if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

int NumberOf(std::string_view text) {
  if (!HasNumber(text)) return 0;
  text = WithoutBlanks(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc()) return number;
  using Limits = std::numeric_limits<int>;
  return text.starts_with('-') ? Limits::min() : Limits::max();
}

std::size_t UnitsOf(std::string_view text) {
  std::size_t units = 0;
  for (const char sign : text) {
    const auto byte = static_cast<unsigned char>(sign);
    if ((byte & 0xC0U) != 0x80U) units += byte >= 0xF0U ? 2 : 1;
  }
  return units;
}

std::string Quoted(std::string text) {
  std::replace(text.begin(), text.end(), '\r', ' ');
  return "\"" + text + "\"";
}

}  // namespace advice
