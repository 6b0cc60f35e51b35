#include "platform/corefoundation/objects.h"

#include <cstdlib>
#include <new>

#include "platform/corefoundation/CFHost.h"

namespace {

CFIndex live_objects = 0;

}  // namespace

namespace corefoundation {

void* NewObject(CFObject::Kind kind, std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) return nullptr;
  ++live_objects;
  return new (memory) CFObject{kind, 1};
}

void DeleteObject(void* object) {
  --live_objects;
  std::free(object);
}

}  // namespace corefoundation

CFIndex CFGetLiveObjectCount() { return live_objects; }
