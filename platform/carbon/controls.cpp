#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <optional>
#include <utility>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/display.h"
#include "platform/carbon/objects.h"
#include "platform/carbon/text_conversion.h"
#include "platform/corefoundation/CoreFoundation.h"

namespace carbon {
namespace {

using display::ControlKind;

OSStatus AddControl(WindowRef window, Control control, ControlRef* reference) {
  *reference = nullptr;
  return ApplyTo(Find(window), [&](Window& object) {
    control.window = window;
    return AddTo(AllObjects().controls, std::move(control), reference, object.controls);
  });
}

// A control of `kind` with `text`, which may be null.
OSStatus AddControl(WindowRef window, ControlKind kind, const Rect& bounds, CFStringRef text,
                    ControlRef* reference) try {
  Control control;
  control.kind = kind;
  control.bounds = bounds;
  if (text != nullptr) control.text = ToUtf16(text);
  return AddControl(window, std::move(control), reference);
} catch (const std::bad_alloc&) {
  *reference = nullptr;
  return memFullErr;
}

OSStatus AddToggle(WindowRef window, ControlKind kind, const Rect& bounds, CFStringRef title,
                   std::int32_t value, bool auto_toggle, ControlRef* reference) {
  const OSStatus status = AddControl(window, kind, bounds, title, reference);
  ApplyTo(Find(*reference), [=](Control& control) {
    control.value = std::clamp(value, control.minimum, control.maximum);
    control.auto_toggle = auto_toggle;
  });
  return status;
}

// The list is made first: without it there is no control.
OSStatus AddList(WindowRef window, const Rect& bounds, std::size_t rows, List list,
                 ControlRef* reference) try {
  *reference = nullptr;
  list.cells.resize(rows);
  list.selected.resize(rows);
  ListHandle handle = nullptr;
  OSStatus status = AddTo(AllObjects().lists, std::move(list), &handle);
  if (status != noErr) return status;
  status = AddControl(window, ControlKind::kList, bounds, nullptr, reference);
  if (status != noErr) {
    AllObjects().lists.Remove(handle);
    return status;
  }
  Find(handle)->control = *reference;
  Find(*reference)->list = handle;
  return noErr;
} catch (const std::bad_alloc&) {
  return memFullErr;
}

// Runs `operation` on a control, and notes that the display is to be told.
template <class Operation>
OSStatus Alter(ControlRef reference, Operation operation) {
  return ApplyTo(Find(reference), [&](Control& control) {
    control.changed = true;
    return operation(control);
  });
}

void SetLimits(Control& control, std::int32_t minimum, std::int32_t maximum) {
  control.minimum = minimum;
  control.maximum = maximum;
  control.value = std::clamp(control.value, minimum, maximum);
}

void SetMinimum(Control& control, std::int32_t minimum) {
  SetLimits(control, minimum, std::max(minimum, control.maximum));
}

void SetMaximum(Control& control, std::int32_t maximum) {
  SetLimits(control, std::min(control.minimum, maximum), maximum);
}

// What `data` of `size` bytes holds; none if the size is not that of a Value.
template <class Value>
std::optional<Value> Read(const void* data, Size size) {
  if (size != static_cast<Size>(sizeof(Value))) return std::nullopt;
  Value value;
  std::memcpy(&value, data, sizeof value);
  return value;
}

OSStatus AttachMenu(Control& control, MenuRef menu) {
  const auto object = AllObjects().menus.Find(menu);
  if (!object) return paramErr;
  control.menu = object;
  control.menu_ref = menu;
  SetMinimum(control, 1);
  SetMaximum(control, static_cast<std::int32_t>(object->items.size()));
  return noErr;
}

// The default mark is accepted and not stored: a display marks the window's default button.
OSStatus SetData(Control& control, OSType tag, Size size, const void* data) {
  if (const auto value = Read<std::uint16_t>(data, size); value && tag == kControlSizeTag) {
    control.size = *value;
  } else if (const auto text = Read<CFStringRef>(data, size);
             text && tag == kControlEditTextCFStringTag) {
    control.text = ToUtf16(*text);
  } else if (const auto menu = Read<MenuRef>(data, size);
             menu && tag == kControlPopupButtonMenuHandleTag) {
    return AttachMenu(control, *menu);
  } else if (tag != kControlPushButtonDefaultTag || size != sizeof(Boolean)) {
    return paramErr;
  }
  return noErr;
}

// Hands `value` out; the caller's room fits it.
template <class Value>
OSStatus HandOut(Value value, void* data, Size* actual_size) {
  std::memcpy(data, &value, sizeof value);
  if (actual_size != nullptr) *actual_size = sizeof value;
  return noErr;
}

// The caller, who is to release the text, gets none if the room is not as large as a reference.
OSStatus GetData(const Control& control, OSType tag, Size size, void* data, Size* actual_size) {
  static_assert(sizeof(ListHandle) == sizeof(CFStringRef));
  if (size != static_cast<Size>(sizeof(CFStringRef))) return paramErr;
  if (tag == kControlListBoxListHandleTag && control.list != nullptr) {
    return HandOut(control.list, data, actual_size);
  }
  if (tag != kControlEditTextCFStringTag || !control.text) return paramErr;
  const CFStringRef text = CFStringCreateWithCharacters(kCFAllocatorDefault, control.text->data(),
                                                        static_cast<CFIndex>(control.text->size()));
  return text == nullptr ? OSStatus{memFullErr} : HandOut(text, data, actual_size);
}

}  // namespace
}  // namespace carbon

using carbon::Alter;
using carbon::Find;
using display::ControlKind;

OSStatus CreateStaticTextControl(WindowRef window, const Rect* bounds, CFStringRef text,
                                 const ControlFontStyleRec* /*style*/, ControlRef* control) {
  return carbon::AddControl(window, ControlKind::kStatic, *bounds, text, control);
}

OSStatus CreatePushButtonControl(WindowRef window, const Rect* bounds, CFStringRef title,
                                 ControlRef* control) {
  return carbon::AddControl(window, ControlKind::kButton, *bounds, title, control);
}

OSStatus CreateEditUnicodeTextControl(WindowRef window, const Rect* bounds, CFStringRef text,
                                      Boolean is_password, const ControlFontStyleRec* /*style*/,
                                      ControlRef* control) {
  const auto kind = is_password ? ControlKind::kPassword : ControlKind::kEdit;
  return carbon::AddControl(window, kind, *bounds, text == nullptr ? CFSTR("") : text, control);
}

OSStatus CreateCheckBoxControl(WindowRef window, const Rect* bounds, CFStringRef title,
                               std::int32_t value, Boolean auto_toggle, ControlRef* control) {
  return carbon::AddToggle(window, ControlKind::kCheckBox, *bounds, title, value, auto_toggle != 0,
                           control);
}

OSStatus CreateRadioButtonControl(WindowRef window, const Rect* bounds, CFStringRef title,
                                  std::int32_t value, Boolean auto_toggle, ControlRef* control) {
  return carbon::AddToggle(window, ControlKind::kRadio, *bounds, title, value, auto_toggle != 0,
                           control);
}

OSStatus CreatePopupButtonControl(WindowRef window, const Rect* bounds, CFStringRef title,
                                  std::int16_t /*menu_id*/, Boolean variable_width,
                                  std::int16_t /*title_width*/,
                                  std::int16_t /*title_justification*/,
                                  std::uint8_t /*title_style*/, ControlRef* control) {
  const OSStatus status = carbon::AddControl(window, ControlKind::kPopup, *bounds, title, control);
  carbon::ApplyTo(Find(*control),
                  [=](carbon::Control& object) { object.variable_width = variable_width != 0; });
  return status;
}

OSStatus CreateListBoxControl(WindowRef window, const Rect* bounds, Boolean /*auto_size*/,
                              std::int16_t rows, std::int16_t /*columns*/,
                              Boolean /*horizontal_scroll*/, Boolean /*vertical_scroll*/,
                              std::int16_t cell_height, std::int16_t cell_width,
                              Boolean /*has_grow_space*/, std::int16_t /*definition*/,
                              ControlRef* control) {
  carbon::List list;
  list.cell_height = cell_height;
  list.cell_width = cell_width;
  return carbon::AddList(window, *bounds, static_cast<std::size_t>(rows), std::move(list), control);
}

OSStatus SetControlCommandID(ControlRef control, OSType command) {
  return Alter(control, [=](carbon::Control& object) { object.command = command; });
}

OSStatus SetControlID(ControlRef control, const ControlID* id) {
  return Alter(control, [=](carbon::Control& object) { object.id = id->id; });
}

OSStatus SetControlData(ControlRef control, std::int16_t /*part*/, OSType tag, Size size,
                        const void* data) {
  return Alter(control,
               [=](carbon::Control& object) { return carbon::SetData(object, tag, size, data); });
}

OSStatus GetControlData(ControlRef control, std::int16_t /*part*/, OSType tag, Size size,
                        void* data, Size* actual_size) {
  return carbon::ApplyTo(Find(control), [=](carbon::Control& object) {
    return carbon::GetData(object, tag, size, data, actual_size);
  });
}

OSStatus SetControlFontStyle(ControlRef control, const ControlFontStyleRec* style) {
  return Alter(control, [=](carbon::Control& object) {
    if ((style->flags & kControlUseThemeFontIDMask) != 0) object.font = style->font;
  });
}

std::int32_t GetControlValue(ControlRef control) {
  const auto object = Find(control);
  return object ? object->value : 0;
}

void SetControlValue(ControlRef control, std::int32_t value) {
  Alter(control, [=](carbon::Control& object) {
    object.value = std::clamp(value, object.minimum, object.maximum);
  });
}

void SetControlMinimum(ControlRef control, std::int32_t minimum) {
  Alter(control, [=](carbon::Control& object) { carbon::SetMinimum(object, minimum); });
}

void SetControlMaximum(ControlRef control, std::int32_t maximum) {
  Alter(control, [=](carbon::Control& object) { carbon::SetMaximum(object, maximum); });
}

OSStatus EnableControl(ControlRef control) {
  return Alter(control, [](carbon::Control& object) { object.enabled = true; });
}

OSStatus DisableControl(ControlRef control) {
  return Alter(control, [](carbon::Control& object) { object.enabled = false; });
}

void HideControl(ControlRef control) {
  Alter(control, [](carbon::Control& object) { object.visible = false; });
}
