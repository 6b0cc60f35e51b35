#include "plugin/dialogs/dialog_items.h"

#include <cstddef>

#include "plugin/frame/string_objects.h"
#include "plugin/state/dialog_state.h"
#include "plugin/windows/standard_window.h"

namespace {

// The positions of the items in the parameter.
enum Position : CFIndex { kKind, kMessage, kButtons, kLabels = 6, kPassword = 10 };

void StoreItems(const Family<CFStringRef>& members, CFArrayRef items, CFIndex first) {
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    StoreText(*members[i], ItemAt(items, first + static_cast<CFIndex>(i)));
  }
}

}  // namespace

bool StoreDialogItems(CFStringRef parameter) {
  const auto items = Split(parameter, CFSTR("|"));
  if (!items) return false;
  for (std::int32_t* chosen : theVals) *chosen = 1;
  StoreText(gdialogtext, ItemAt(items.get(), kMessage));
  StoreItems(gbuttontexts, items.get(), kButtons);
  StoreItems(gcontroltexts, items.get(), kLabels);
  StoreText(gpasswordfield, ItemAt(items.get(), kPassword));
  iFieldCount = ReadNumber(ItemAt(items.get(), kKind));
  iPasswordField = ReadNumber(ItemAt(items.get(), kPassword));
  return true;
}

void ShowDialog(std::int32_t fields) {
  constexpr decltype(&dialog0) kWindows[] = {dialog0, dialog1, dialog2, dialog3, dialog4};
  if (fields >= 0 && fields <= 4) kWindows[fields]();
}
