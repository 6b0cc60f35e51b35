#pragma once

#include <cstring>

#include "platform/fmwrapper/FMHost.h"
#include "plugin/state/dialog_state.h"

// What is wrong with the dialog state between two calls; nullptr if it is whole, as it must be
// whatever the calls were, what the user did, and what failed.
inline const char* BrokenState() {
  if (gWindowRef != nullptr) return "a window is left";
  if (gButtonHandlerRef != nullptr) return "a handler is left";
  if (DoListBox != 0) return "list mode is left on";
  if (fmx::host::LiveValues() != 0) return "FileMaker values are left";
  for (const auto& family : {gbuttontexts, gcontroltexts, gPreEnters}) {
    for (CFStringRef* text : family) {
      if (*text == nullptr) return "a text is null";
    }
  }
  for (const ByteBuffer* result : {&Field1, &Field2, &Field3, &Field4, &FieldLC, &myreturntext}) {
    if (result->bytes == nullptr) return "a result is null";
    if (std::memchr(result->bytes, 0, result->capacity) == nullptr) return "a result has no end";
  }
  if (std::strchr("1234E0", FieldLC.bytes[0]) == nullptr) return "an unknown way to end";
  const auto is_as_long = [](CFArrayRef texts, auto count) {
    return count == 0 || (texts != nullptr && count == CFArrayGetCount(texts));
  };
  for (std::size_t i = 0; i < kFamilySize; ++i) {
    if (!is_as_long(*mypopupArrays[i], *popupctrs[i])) return "a menu is not as long as it says";
  }
  if (!is_as_long(myListArray, glistlength)) return "the list is not as long as it says";
  return nullptr;
}
