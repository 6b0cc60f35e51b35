#include "platform/carbon/objects.h"

#include "platform/carbon/CarbonHost.h"

namespace carbon {

Objects& AllObjects() {
  static auto& objects = *new Objects;
  return objects;
}

void Dispose(WindowRef window) {
  const auto object = Find(window);
  if (!object) return;
  for (const ControlRef control : object->controls) {
    AllObjects().lists.Remove(Find(control)->list);
    AllObjects().controls.Remove(control);
  }
  for (const EventHandlerRef handler : object->handlers) AllObjects().handlers.Remove(handler);
  AllObjects().windows.Remove(window);
}

long LiveObjects() {
  const Objects& all = AllObjects();
  return static_cast<long>(all.windows.Size() + all.controls.Size() + all.menus.Size() +
                           all.lists.Size() + all.handlers.Size() + all.events.Size() +
                           all.alerts.Size());
}

}  // namespace carbon
