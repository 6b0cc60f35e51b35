#include <cstddef>
#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/frame/external_function.h"
#include "plugin/frame/string_objects.h"
#include "plugin/presets/presets.h"
#include "plugin/state/dialog_state.h"

namespace {

constexpr CFIndex kCoordinateLimit = 255;

// Sets a coordinate to item `index`, if there is one. False if the item is too long for a
// coordinate.
bool ReadCoordinate(CFArrayRef items, CFIndex index, std::int32_t& coordinate) {
  if (index >= CFArrayGetCount(items)) return true;
  const auto item = static_cast<CFStringRef>(CFArrayGetValueAtIndex(items, index));
  if (CFStringGetLength(item) > kCoordinateLimit) return false;
  coordinate = ReadNumber(item);
  return true;
}

// A position takes force if neither coordinate is negative. If one is in force already, it stays
// so, with the new coordinates.
void Position(CFStringRef parameter, fmx::Text& result) {
  const auto items = Split(parameter, CFSTR("|"));
  if (!items) return SetResult(result, kNoMemory);
  if (!ReadCoordinate(items.get(), 0, gXpos) || !ReadCoordinate(items.get(), 1, gYpos)) {
    return SetResult(result, kBadParameter);
  }
  if (gXpos >= 0 && gYpos >= 0) gUsePosition = 1;
  SetResult(result, "0");
}

void SetFocus(CFStringRef parameter, fmx::Text& result) {
  iFocusField = ReadNumber(parameter);
  SetResult(result, parameter);
}

void AllowEscape(CFStringRef parameter, fmx::Text& result) {
  kCanEscape = ReadNumber(parameter) > 0 ? 1 : 0;
  SetResult(result, kCanEscape ? "1" : "0");
}

// A field that the parameter does not mention becomes an edit text.
void SetCustomControls(CFStringRef parameter, fmx::Text& result) {
  const auto items = Split(parameter, CFSTR("|"));
  if (!items) return SetResult(result, kNoMemory);
  const auto count = static_cast<std::size_t>(CFArrayGetCount(items.get()));
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    const auto index = static_cast<CFIndex>(i);
    *iControlStyles[i] = i < count ? ReadNumber(ItemAt(items.get(), index)) : kEditText;
  }
  SetResult(result, parameter);
}

}  // namespace

fmx::errcode Do_TarvoPosition(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                              const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, Position);
}

fmx::errcode Do_TarvoSetFocus(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                              const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, SetFocus);
}

fmx::errcode Do_TarvoAllowEscape(std::int16_t /*function_id*/, const fmx::ExprEnv& /*environment*/,
                                 const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, AllowEscape);
}

fmx::errcode Do_TarvoSetCustomControls(std::int16_t /*function_id*/,
                                       const fmx::ExprEnv& /*environment*/,
                                       const fmx::DataVect& parameters, fmx::Data& result) {
  return RunBounded(parameters, result, SetCustomControls);
}
