#include <cstddef>
#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/dialogs/dialog_items.h"
#include "plugin/dialogs/dialogs.h"
#include "plugin/frame/external_function.h"
#include "plugin/results/result_text.h"
#include "plugin/state/byte_buffer.h"
#include "plugin/state/dialog_state.h"

namespace {

constexpr std::int32_t kPopUpMode = 5;

// Every field is an edit text, but for the password field.
void SetEditStyles() {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    *iControlStyles[i] = iPasswordField == NumberOf(i) ? kPasswordText : kEditText;
  }
}

// In pop-up mode every field is a menu but for the one that the password field's number names: a
// password field or, if the number is negative, a plain edit field.
void SetPopUpStyles() {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    *iControlStyles[i] = iPasswordField == NumberOf(i)    ? kPasswordText
                         : iPasswordField == -NumberOf(i) ? kEditText
                                                          : kPopUpMenu;
  }
}

std::int32_t CountMenus() {
  std::int32_t menus = 0;
  for (const std::int32_t* items : popupctrs) menus += *items > 0 ? 1 : 0;
  return menus;
}

// Whether the menus that are defined are those of the first `count` fields.
bool AreFirst(std::int32_t count) {
  for (std::int32_t i = 0; i < count; ++i) {
    if (*popupctrs[static_cast<std::size_t>(i)] <= 0) return false;
  }
  return true;
}

// If there is a field without a menu before one with a menu, no window is shown.
void ShowPopUpDialog(std::int32_t menus) {
  if (!AreFirst(menus)) return;
  SetPopUpStyles();
  iFieldCount = menus;
  ShowDialog(menus);
}

void ClearOneShotPresets() {
  iFieldCount = 0;
  StoreEmptyTexts(gPreEnters);
  kCanEscape = 0;
  ForgetPosition();
}

void RunDialog(CFStringRef parameter, fmx::Text& result) {
  if (!StoreDialogItems(parameter)) return SetResult(result, kNoMemory);
  SetEditStyles();
  if (iFieldCount == kPopUpMode) {
    const std::int32_t menus = CountMenus();
    if (menus == 0) return SetResult(result, kNoPopUpMenu);
    ShowPopUpDialog(menus);
  } else {
    ShowDialog(iFieldCount);
  }
  ClearOneShotPresets();
  SetResult(result, ComposeDialogResult() ? TextOf(myreturntext) : kNoMemory);
}

}  // namespace

fmx::errcode Do_TarvoDialog(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                            const fmx::DataVect& parameters, fmx::Data& result) {
  return RunUnbounded(parameters, result, RunDialog);
}
