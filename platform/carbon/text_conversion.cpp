#include "platform/carbon/text_conversion.h"

#include <cstddef>

namespace carbon {

std::u16string ToUtf16(CFStringRef string) {
  if (string == nullptr) return {};
  std::u16string text(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
  CFStringGetCharacters(string, {0, CFStringGetLength(string)}, text.data());
  return text;
}

}  // namespace carbon
