#pragma once

// What Carbon's objects hold, and how references find them; for this layer alone.

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/display.h"

namespace carbon {

struct Menu {
  std::int16_t id = 0;
  std::uint32_t attributes = 0;
  std::vector<std::u16string> items;
};

struct List {
  ControlRef control = nullptr;
  std::vector<std::string> cells;  // bytes in the system encoding, one a row
  std::vector<bool> selected;
  std::int16_t cell_height = 0;
  std::int16_t cell_width = 0;
  bool only_one = false;
  int anchor = -1;  // the row from which a Shift click selects
  Cell last_click{-1, -1};
};

struct Control {
  WindowRef window = nullptr;
  display::ControlKind kind = display::ControlKind::kStatic;
  Rect bounds;
  std::optional<std::u16string> text;  // title or content
  OSType command = 0;
  std::int32_t id = 0;
  std::int32_t value = 0;
  std::int32_t minimum = 0;
  std::int32_t maximum = 1;
  bool auto_toggle = false;
  bool visible = true;
  bool enabled = true;
  std::optional<int> size;
  std::optional<int> font;
  std::shared_ptr<Menu> menu;
  MenuRef menu_ref = nullptr;
  bool variable_width = false;
  ListHandle list = nullptr;
  bool changed = false;  // since the display was last told
};

struct Handler {
  EventHandlerProc handler = nullptr;
  std::vector<EventTypeSpec> types;
  void* user_data = nullptr;
};

struct Window {
  std::u16string title;
  Rect content;
  std::uint32_t window_class = 0;
  std::optional<std::int16_t> background;
  bool centred = false;  // on the main screen, which is asked for when it is first needed
  bool standard_handler = false;
  std::vector<ControlRef> controls;       // in order of creation
  std::vector<EventHandlerRef> handlers;  // in order of installation
  ControlRef focus = nullptr;
  ControlRef default_button = nullptr;
  ControlRef cancel_button = nullptr;
  bool quit = false;  // its modal loop has been told to end
};

struct Event {
  OSType event_class = 0;
  std::uint32_t event_kind = 0;
  struct Parameter {
    OSType name;
    OSType type;
    std::string data;
  };
  std::vector<Parameter> parameters;
};

// The objects of one kind. A reference is a number that is used once, so one whose object is gone
// finds nothing. Whoever works on an object holds it: it may be removed meanwhile.
template <class Reference, class Object>
class Table {
 public:
  Reference Add(std::shared_ptr<Object> object) {
    const std::uintptr_t number = next_;
    objects_.emplace(number, std::move(object));
    ++next_;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a reference is never followed
    return reinterpret_cast<Reference>(number);
  }

  std::shared_ptr<Object> Find(Reference reference) const {
    const auto found = objects_.find(reinterpret_cast<std::uintptr_t>(reference));
    return found == objects_.end() ? nullptr : found->second;
  }

  void Remove(Reference reference) { objects_.erase(reinterpret_cast<std::uintptr_t>(reference)); }

  std::size_t Size() const { return objects_.size(); }

 private:
  std::unordered_map<std::uintptr_t, std::shared_ptr<Object>> objects_;
  std::uintptr_t next_ = 1;
};

struct Objects {
  Table<WindowRef, Window> windows;
  Table<ControlRef, Control> controls;
  Table<MenuRef, Menu> menus;
  Table<ListHandle, List> lists;
  Table<EventHandlerRef, Handler> handlers;
  Table<EventRef, Event> events;
  Table<DialogRef, display::Alert> alerts;
};

// The one instance. It is never destroyed: what is left at exit belongs to the process.
Objects& AllObjects();

inline std::shared_ptr<Window> Find(WindowRef window) { return AllObjects().windows.Find(window); }
inline std::shared_ptr<Control> Find(ControlRef control) {
  return AllObjects().controls.Find(control);
}
inline std::shared_ptr<List> Find(ListHandle list) { return AllObjects().lists.Find(list); }

// Runs `operation` on an object. Returns paramErr if the object is gone, memFullErr if memory runs
// out, otherwise what `operation` returns, or noErr if that is nothing.
template <class Object, class Operation>
OSStatus ApplyTo(const std::shared_ptr<Object>& object, Operation operation) {
  if (!object) return paramErr;
  try {
    if constexpr (std::is_void_v<decltype(operation(*object))>) {
      operation(*object);
      return noErr;
    } else {
      return operation(*object);
    }
  } catch (const std::bad_alloc&) {
    return memFullErr;
  }
}

// Adds a new object and hands out its reference; null and memFullErr if memory runs out.
template <class Reference, class Object>
OSStatus AddTo(Table<Reference, Object>& table, Object object, Reference* reference) {
  *reference = nullptr;
  try {
    *reference = table.Add(std::make_shared<Object>(std::move(object)));
    return noErr;
  } catch (const std::bad_alloc&) {
    return memFullErr;
  }
}

// The same, and appends the reference to `list`, whose place is made first: if memory runs out, the
// list is as it was.
template <class Reference, class Object>
OSStatus AddTo(Table<Reference, Object>& table, Object object, Reference* reference,
               std::vector<Reference>& list) {
  list.push_back(nullptr);
  const OSStatus status = AddTo(table, std::move(object), reference);
  list.back() = *reference;
  if (status != noErr) list.pop_back();
  return status;
}

// Removes a window with its controls, lists and handlers.
void Dispose(WindowRef window);

}  // namespace carbon
