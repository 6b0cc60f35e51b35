#include "platform/corefoundation/CoreFoundation.h"
#include "platform/corefoundation/bundle.h"
#include "platform/corefoundation/objects.h"

namespace {

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
