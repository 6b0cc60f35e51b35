#include <cstdlib>
#include <new>

#include "platform/corefoundation/CFHost.h"
#include "platform/corefoundation/objects.h"

namespace {

CFIndex live_objects = 0;

// What is counted for `object`: a part lives and dies with its array.
CFObject* Counted(CFTypeRef object) {
  auto* header = static_cast<CFObject*>(const_cast<void*>(object));
  if (header->kind != CFObject::Kind::kPart) return header;
  return &corefoundation::ArrayOf(reinterpret_cast<CFString*>(header))->object;
}

void Delete(CFObject* object) {
  if (object->kind == CFObject::Kind::kBundle) {
    corefoundation::DeleteBundle(reinterpret_cast<CFBundle*>(object));
    return;
  }
  if (object->kind == CFObject::Kind::kArray) CFRelease(reinterpret_cast<CFArray*>(object)->parent);
  corefoundation::DeleteObject(object);
}

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

CFTypeRef CFRetain(CFTypeRef object) {
  if (object == nullptr) return nullptr;
  CFObject* counted = Counted(object);
  if (counted->kind != CFObject::Kind::kLiteral) ++counted->count;
  return object;
}

void CFRelease(CFTypeRef object) {
  if (object == nullptr) return;
  CFObject* counted = Counted(object);
  if (counted->kind == CFObject::Kind::kLiteral) return;
  if (--counted->count == 0) Delete(counted);
}

CFIndex CFGetLiveObjectCount() { return live_objects; }
