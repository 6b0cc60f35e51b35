#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/frame/external_function.h"
#include "plugin/frame/string_objects.h"
#include "plugin/presets/presets.h"
#include "plugin/state/byte_buffer.h"
#include "plugin/state/dialog_state.h"

namespace {

constexpr CFIndex kLeastMenuLength = 2;  // a text of one code unit is no menu

bool IsMenu(CFStringRef text) { return CFStringGetLength(text) >= kLeastMenuLength; }

// How many of the first fields have a menu. Each menu counts as one, and with it all empty texts
// before it, so that a menu behind a gap reaches its field. A gap before several menus is thus
// counted several times, but the sum never passes the number of texts.
std::int32_t CountMenus(CFArrayRef texts) {
  const CFIndex most = std::min<CFIndex>(CFArrayGetCount(texts), kFamilySize);
  CFIndex tally = 0;
  CFIndex empty_before = 0;
  for (CFIndex i = 0; i < most; ++i) {
    if (IsMenu(ItemAt(texts, i))) tally += 1 + empty_before;
    if (IsEmpty(ItemAt(texts, i))) ++empty_before;
  }
  return static_cast<std::int32_t>(std::min(tally, most));
}

// The items of `text`, which keep nothing of the parameter in memory; null if memory runs out.
CFOwner<CFArrayRef> CreateItems(CFStringRef text) {
  const auto copy = Owned(CFStringCreateCopy(kCFAllocatorDefault, text));
  return copy ? Split(copy.get(), CFSTR("\r")) : Owned(CFArrayRef{nullptr});
}

// The items of field `index` (from 0). A field without a menu has one, the empty text.
CFOwner<CFArrayRef> CreateMenu(CFArrayRef texts, CFIndex index, std::int32_t menus) {
  const CFStringRef text = ItemAt(texts, index);
  return CreateItems(index < menus && IsMenu(text) ? text : EmptyText());
}

// All four menus are made before the first is stored: either all are replaced or none is.
void PopUps(CFStringRef parameter, fmx::Text& result) {
  const auto texts = Split(parameter, CFSTR("|"));
  if (!texts) return SetResult(result, kNoMemory);
  const std::int32_t menus = CountMenus(texts.get());
  const auto create = [&](CFIndex index) { return CreateMenu(texts.get(), index, menus); };
  CFOwner<CFArrayRef> created[] = {create(0), create(1), create(2), create(3)};
  if (!std::ranges::all_of(created, [](const auto& items) { return items != nullptr; })) {
    return SetResult(result, kNoMemory);
  }
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    const bool has_menu = static_cast<std::int32_t>(i) < menus;
    *popupctrs[i] = has_menu ? static_cast<std::int32_t>(CFArrayGetCount(created[i].get())) : 0;
    StoreArray(*mypopupArrays[i], created[i].release());
  }
  SetResult(result, menus);
}

// Makes room in Field1 for any line that the user may choose. Without memory for it the function
// can still say so; the dialog could not.
void FillListBox(CFStringRef parameter, fmx::Text& result) {
  const auto room = 4 * static_cast<std::size_t>(CFStringGetLength(parameter));
  auto lines = CreateItems(parameter);
  if (!lines || !Grow(Field1, room)) return SetResult(result, kNoMemory);
  glistlength = static_cast<std::int32_t>(CFArrayGetCount(lines.get()));
  StoreArray(myListArray, lines.release());
  SetResult(result, glistlength);
}

}  // namespace

fmx::errcode Do_TarvoPopUps(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                            const fmx::DataVect& parameters, fmx::Data& result) {
  return RunUnbounded(parameters, result, PopUps);
}

fmx::errcode Do_TarvoFillListBox(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                                 const fmx::DataVect& parameters, fmx::Data& result) {
  return RunUnbounded(parameters, result, FillListBox);
}
