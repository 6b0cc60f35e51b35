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

// The presets for Escape and position stay in force; the pre-entered texts only if there is no
// memory for the result.
void RunCustomDialog(CFStringRef parameter, fmx::Text& result) {
  if (!StoreDialogItems(parameter)) return SetResult(result, kNoMemory);
  ShowDialog(iFieldCount);
  iFieldCount = 0;
  if (!ComposeDialogResult()) return SetResult(result, kNoMemory);
  SetResult(result, TextOf(myreturntext));
  StoreEmptyTexts(gPreEnters);
}

}  // namespace

fmx::errcode Do_TarvoCustomDialog(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                                  const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, RunCustomDialog);
}
