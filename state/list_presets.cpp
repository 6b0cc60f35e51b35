#include <algorithm>

#include "host/external_function.h"
#include "host/text.h"
#include "state/dialog_state.h"
#include "state/presets.h"

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
CFArrayRef CreateItems(CFStringRef text) {
  const auto copy = Own(CFStringCreateCopy(kCFAllocatorDefault, text));
  return copy ? Split(copy.get(), CFSTR("\r")).release() : nullptr;
}

// Field `index` has no menu, though an item, the empty text.
void ClearMenu(std::size_t index) {
  StoreArray(*mypopupArrays[index], CreateItems(EmptyText()));
  *popupctrs[index] = 0;
}

void StoreMenu(std::size_t index, CFStringRef text) {
  const CFArrayRef items = CreateItems(IsMenu(text) ? text : EmptyText());
  StoreArray(*mypopupArrays[index], items);
  *popupctrs[index] = items == nullptr ? 0 : static_cast<std::int32_t>(CFArrayGetCount(items));
}

void PopUps(CFStringRef parameter, fmx::Text& answer) {
  const auto texts = Split(parameter, CFSTR("|"));
  if (!texts) return Answer(answer, kNoMemory);
  const std::int32_t menus = CountMenus(texts.get());
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    if (static_cast<std::int32_t>(i) < menus) {
      StoreMenu(i, ItemAt(texts.get(), static_cast<CFIndex>(i)));
    } else {
      ClearMenu(i);
    }
  }
  Answer(answer, menus);
}

// Room for a chosen line of any length is made here, where there is a way to say that there is
// none.
void FillListBox(CFStringRef parameter, fmx::Text& answer) {
  const auto room = 4 * static_cast<std::size_t>(CFStringGetLength(parameter));
  const CFArrayRef lines = CreateItems(parameter);
  if (lines == nullptr || !Grow(Field1, room)) {
    CFRelease(lines);
    return Answer(answer, kNoMemory);
  }
  StoreArray(myListArray, lines);
  glistlength = static_cast<std::int32_t>(CFArrayGetCount(lines));
  Answer(answer, glistlength);
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
