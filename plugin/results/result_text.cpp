#include "plugin/results/result_text.h"

#include <cstring>
#include <span>

#include "plugin/state/byte_buffer.h"
#include "plugin/state/dialog_state.h"

namespace {

// Composes FieldLC and `fields`. `slack` is room for the separators and the terminator, in bytes.
bool Compose(std::span<ByteBuffer* const> fields, std::size_t slack) {
  std::size_t length = std::strlen(TextOf(FieldLC));
  for (const ByteBuffer* field : fields) length += std::strlen(TextOf(*field));
  if (!ResizeEmptied(myreturntext, 4 * (length + slack))) return false;
  char* end = stpcpy(myreturntext.bytes, TextOf(FieldLC));
  if (TextOf(FieldLC)[0] == 'E') return true;
  for (const ByteBuffer* field : fields) end = stpcpy(stpcpy(end, "|"), TextOf(*field));
  return true;
}

}  // namespace

bool ComposeDialogResult() { return Compose(Fields, 10); }

bool ComposeListResult() { return Compose(std::span(Fields).first(1), 4); }
