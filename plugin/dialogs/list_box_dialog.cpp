#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/dialogs/dialogs.h"
#include "plugin/frame/external_function.h"
#include "plugin/frame/string_objects.h"
#include "plugin/results/result_text.h"
#include "plugin/state/byte_buffer.h"
#include "plugin/state/dialog_state.h"
#include "plugin/windows/list_window.h"

namespace {

// The positions of the items in the parameter.
enum Position : CFIndex { kMessage, kButtons, kDoubleClick = 6, kRequired = 7, kMultiple = 9 };

std::uint8_t ReadFlag(CFArrayRef items, CFIndex position) {
  return ReadNumber(ItemAt(items, position)) >= 1 ? 1 : 0;
}

void StoreFlags(CFArrayRef items) {
  dblclick = ReadFlag(items, kDoubleClick);
  multiselect = ReadFlag(items, kMultiple);
  gdisabling = ReadFlag(items, kRequired);
}

std::array<CFStringRef, kFamilySize> ButtonTexts(CFArrayRef items) {
  std::array<CFStringRef, kFamilySize> texts{};
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    texts[i] = ItemAt(items, kButtons + static_cast<CFIndex>(i));
  }
  return texts;
}

// The command handler records the chosen lines while DoListBox is set.
void RunListBoxDialog(CFStringRef parameter, fmx::Text& result) {
  const auto items = Split(parameter, CFSTR("|"));
  if (!items) return SetResult(result, kNoMemory);
  StoreFlags(items.get());
  DoListBox = 1;
  RunListWindow(ItemAt(items.get(), kMessage), ButtonTexts(items.get()));
  DoListBox = 0;
  SetResult(result, ComposeListResult() ? TextOf(myreturntext) : kNoMemory);
}

}  // namespace

fmx::errcode Do_TarvoDoListBox(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                               const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, RunListBoxDialog);
}
