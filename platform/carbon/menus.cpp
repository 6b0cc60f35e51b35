#include <cstdint>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/objects.h"
#include "platform/carbon/text_conversion.h"
#include "platform/corefoundation/CoreFoundation.h"

OSStatus CreateNewMenu(std::int16_t menu_id, std::uint32_t attributes, MenuRef* menu) {
  return carbon::AddTo(carbon::AllObjects().menus, carbon::Menu{menu_id, attributes, {}}, menu);
}

OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text,
                                        std::uint32_t /*attributes*/, OSType /*command*/,
                                        std::uint16_t* index) {
  return carbon::ApplyTo(carbon::AllObjects().menus.Find(menu), [=](carbon::Menu& object) {
    if (object.items.size() == kMenuItemLimit) return OSStatus{paramErr};
    object.items.push_back(carbon::ToUtf16(text));
    if (index != nullptr) *index = static_cast<std::uint16_t>(object.items.size());
    return OSStatus{noErr};
  });
}

void ReleaseMenu(MenuRef menu) { carbon::AllObjects().menus.Remove(menu); }
