#include "plugin/host/localised_strings.h"

#include "plugin/frame/call_block.h"
#include "plugin/frame/string_objects.h"

namespace {

// FileMaker asks for the options string by the number 131.
std::uint32_t TableNumber(std::uint32_t number) { return number == 131 ? 1 : number; }

// Copies a string if it leaves room for a terminator and one unit more.
std::int32_t CopyIfItFits(CFStringRef text, UniChar* buffer, std::int32_t size) {
  const CFIndex length = CFStringGetLength(text);
  if (length >= size - 1) return 0;
  CFStringGetCharacters(text, {0, length}, buffer);
  buffer[length] = 0;
  return static_cast<std::int32_t>(length);
}

// Removes everything from the first "(" on. A text without one stays whole.
void CutAtParenthesis(fmx::Text& text) {
  fmx::TextAutoPtr parenthesis(fmx::Call<FM_Text_Constructor1>());
  fmx::Call<FM_Text_Assign>(*parenthesis, "(", 0);
  const std::uint32_t position = fmx::Call<FM_Text_Find>(text, *parenthesis, 0U);
  const std::uint32_t size = fmx::Call<FM_Text_GetSize>(text);
  if (position < size) fmx::Call<FM_Text_DeleteText>(text, position, size - position);
  fmx::Call<FM_Text_Delete>(parenthesis.release());
}

}  // namespace

std::int32_t Sub_OSXLoadString(std::uint32_t number, UniChar* buffer, std::int32_t size) {
  if (buffer == nullptr || size <= 1) return 0;
  const auto key =
      Owned(CFStringCreateWithFormat(kCFAllocatorDefault, nullptr, CFSTR("Quenlix %d"), number));
  if (!key) return 0;
  const auto text =
      Owned(CFBundleCopyLocalizedString(PluginBundle(), key.get(), key.get(), CFSTR("Quenlix")));
  if (!text || text.get() == key.get()) return 0;
  return CopyIfItFits(text.get(), buffer, size);
}

std::int32_t Do_GetString(std::uint32_t number, std::uint32_t /*language*/, std::int32_t size,
                          UniChar* buffer) {
  return Sub_OSXLoadString(TableNumber(number), buffer, size);
}

void Do_GetString(std::uint32_t number, fmx::TextAutoPtr& text, bool cut) {
  constexpr std::int32_t kSize = 1024;
  UniChar units[kSize];
  units[0] = 0;
  Sub_OSXLoadString(TableNumber(number), units, kSize);
  fmx::Call<FM_Text_AssignUnicode>(*text, units);
  if (cut) CutAtParenthesis(*text);
}
