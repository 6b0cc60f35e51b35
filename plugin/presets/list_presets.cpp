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

constexpr CFIndex kLeastMenuLength = 2;  // a shorter text is no menu of its own

bool IsMenu(CFStringRef text) { return CFStringGetLength(text) >= kLeastMenuLength; }

// Empty texts before a menu count as menus, so that later menus keep their field numbers; before
// each further menu they count again.
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

// An array of the items of `text`, which holds nothing of the parameter; null where memory cannot
// be had.
CFOwner<CFArrayRef> CreateItems(CFStringRef text) {
  const auto copy = Owned(CFStringCreateCopy(kCFAllocatorDefault, text));
  return copy ? Split(copy.get(), CFSTR("\r")) : Owned(CFArrayRef{nullptr});
}

// A field beyond the last menu has no menu, though an item, the empty text.
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

// Room for a chosen line of any length is made here, where there is a way to say that there is
// none.
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
