#pragma once

#include <cstddef>

// A heap block that holds a zero-terminated byte string in the system encoding. It is resized,
// never freed; its capacity stands beside it, since some buffers grow and never shrink.
struct ByteBuffer {
  char* bytes;  // null until the first resize
  std::size_t capacity;
};

// The text of a buffer; the empty text if it has no block yet.
inline const char* TextOf(const ByteBuffer& buffer) {
  return buffer.bytes == nullptr ? "" : buffer.bytes;
}

// Makes the capacity `size` bytes (at least 1) and the text empty. If memory runs out: false, the
// text is empty and the block as large as it was.
bool ResizeEmptied(ByteBuffer& buffer, std::size_t size);

// Makes the capacity at least `size` bytes and keeps the text. If memory runs out: false, and
// nothing changes.
bool Grow(ByteBuffer& buffer, std::size_t size);

void Empty(ByteBuffer& buffer);
