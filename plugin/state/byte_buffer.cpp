#include "plugin/state/byte_buffer.h"

#include <cstdlib>

namespace {

// If memory runs out, the old block stays.
bool Resize(ByteBuffer& buffer, std::size_t size) {
  auto* bytes = static_cast<char*>(std::realloc(buffer.bytes, size));
  if (bytes == nullptr) return false;
  if (buffer.bytes == nullptr) bytes[0] = '\0';
  buffer = {bytes, size};
  return true;
}

}  // namespace

bool ResizeEmptied(ByteBuffer& buffer, std::size_t size) {
  Empty(buffer);
  return Resize(buffer, size);
}

bool Grow(ByteBuffer& buffer, std::size_t size) {
  return size <= buffer.capacity || Resize(buffer, size);
}

void Empty(ByteBuffer& buffer) {
  if (buffer.bytes != nullptr) buffer.bytes[0] = '\0';
}
