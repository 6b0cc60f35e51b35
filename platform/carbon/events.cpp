#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <string>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/objects.h"
#include "platform/corefoundation/CoreFoundation.h"

namespace carbon {
namespace {

// A window is its own event target.
WindowRef WindowOf(EventTargetRef target) { return reinterpret_cast<WindowRef>(target); }

bool Handles(const Handler& handler, const Event& event) {
  return std::any_of(handler.types.begin(), handler.types.end(), [&](const EventTypeSpec& type) {
    return type.event_class == event.event_class && type.event_kind == event.event_kind;
  });
}

// A handler may remove itself or its window. Both are held while it runs, and the next handler is
// looked up only then. No memory is needed, so that a window can be closed when there is none.
OSStatus SendToHandlers(const Window& window, const Event& event, EventRef reference) {
  for (std::size_t i = window.handlers.size(); i-- > 0;) {
    const auto held = AllObjects().handlers.Find(window.handlers[i]);
    if (!held || !Handles(*held, event)) continue;
    const OSStatus status = held->handler(nullptr, reference, held->user_data);
    if (status != eventNotHandledErr) return status;
  }
  return eventNotHandledErr;
}

OSStatus SendToStandardHandler(WindowRef window, const Event& event) {
  const auto object = Find(window);
  if (!object || !object->standard_handler || event.event_class != kEventClassWindow ||
      event.event_kind != kEventWindowClose) {
    return eventNotHandledErr;
  }
  Dispose(window);
  return noErr;
}

}  // namespace
}  // namespace carbon

using carbon::AllObjects;
using carbon::ApplyTo;

EventHandlerUPP NewEventHandlerUPP(EventHandlerProc handler) { return handler; }

EventTargetRef GetWindowEventTarget(WindowRef window) {
  return reinterpret_cast<EventTargetRef>(window);
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, std::size_t count,
                             const EventTypeSpec* types, void* user_data,
                             EventHandlerRef* registration) {
  *registration = nullptr;
  return ApplyTo(carbon::Find(carbon::WindowOf(target)), [=](carbon::Window& window) {
    return carbon::AddTo(AllObjects().handlers,
                         carbon::Handler{handler, {types, types + count}, user_data}, registration,
                         window.handlers);
  });
}

OSStatus RemoveEventHandler(EventHandlerRef registration) {
  if (!AllObjects().handlers.Find(registration)) return paramErr;
  AllObjects().handlers.Remove(registration);
  return noErr;
}

EventTime GetCurrentEventTime() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

OSStatus CreateEvent(CFAllocatorRef /*allocator*/, OSType event_class, std::uint32_t event_kind,
                     EventTime /*time*/, std::uint32_t /*attributes*/, EventRef* event) {
  return carbon::AddTo(AllObjects().events, carbon::Event{event_class, event_kind, {}}, event);
}

OSStatus SetEventParameter(EventRef event, OSType name, OSType type, Size size, const void* data) {
  return ApplyTo(AllObjects().events.Find(event), [=](carbon::Event& object) {
    object.parameters.push_back(
        {name, type, std::string(static_cast<const char*>(data), static_cast<std::size_t>(size))});
  });
}

OSStatus GetEventParameter(EventRef event, OSType name, OSType type, OSType* actual_type, Size size,
                           Size* actual_size, void* data) {
  return ApplyTo(AllObjects().events.Find(event), [=](carbon::Event& object) {
    for (const auto& parameter : object.parameters) {
      if (parameter.name != name || parameter.type != type) continue;
      const auto held = static_cast<Size>(parameter.data.size());
      std::memcpy(data, parameter.data.data(), static_cast<std::size_t>(std::min(size, held)));
      if (actual_type != nullptr) *actual_type = parameter.type;
      if (actual_size != nullptr) *actual_size = held;
      return OSStatus{noErr};
    }
    return OSStatus{paramErr};
  });
}

OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target) {
  const auto held_event = AllObjects().events.Find(event);
  const WindowRef window = carbon::WindowOf(target);
  return ApplyTo(carbon::Find(window), [&](carbon::Window& object) {
    if (!held_event) return OSStatus{paramErr};
    const OSStatus status = carbon::SendToHandlers(object, *held_event, event);
    if (status != eventNotHandledErr) return status;
    return carbon::SendToStandardHandler(window, *held_event);
  });
}

void ReleaseEvent(EventRef event) { AllObjects().events.Remove(event); }
