#include <cstddef>
#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/frame/external_function.h"
#include "plugin/frame/string_objects.h"
#include "plugin/presets/presets.h"
#include "plugin/state/dialog_state.h"

namespace {

void SetCaption(CFStringRef parameter, fmx::Text& result) {
  StoreText(gWindowTitle, parameter);
  SetResult(result, gWindowTitle);
}

void PreEnterText(CFStringRef parameter, fmx::Text& result) {
  const auto items = Split(parameter, CFSTR("|"));
  if (!items) return SetResult(result, kNoMemory);
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    StoreText(*gPreEnters[i], ItemAt(items.get(), static_cast<CFIndex>(i)));
  }
  SetResult(result, parameter);
}

}  // namespace

fmx::errcode Do_TarvoSetCaption(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                                const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, SetCaption);
}

fmx::errcode Do_TarvoPreEnterText(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                                  const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, PreEnterText);
}
