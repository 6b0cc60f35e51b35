#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/carbon/Carbon.h"
#include "platform/carbon/objects.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "platform/corefoundation/encoding.h"

namespace {

bool HasRow(const carbon::List& list, Cell cell) {
  return cell.v >= 0 && static_cast<std::size_t>(cell.v) < list.cells.size();
}

std::shared_ptr<carbon::Control> ControlOf(const std::shared_ptr<carbon::List>& list) {
  return list ? carbon::Find(list->control) : nullptr;
}

}  // namespace

void SetListSelectionFlags(ListHandle list, std::int8_t flags) {
  carbon::ApplyTo(carbon::Find(list),
                  [flags](carbon::List& object) { object.only_one = (flags & lOnlyOne) != 0; });
}

OSStatus LSetCell(const void* data, Size size, Cell cell, ListHandle list) {
  return carbon::ApplyTo(carbon::Find(list), [=](carbon::List& object) {
    if (!HasRow(object, cell)) return OSStatus{paramErr};
    object.cells[static_cast<std::size_t>(cell.v)].assign(static_cast<const char*>(data),
                                                          static_cast<std::size_t>(size));
    return OSStatus{noErr};
  });
}

void LGetCell(void* data, Size* size, Cell cell, ListHandle list) {
  const auto object = carbon::Find(list);
  if (!object || !HasRow(*object, cell)) {
    *size = 0;
    return;
  }
  const std::string& bytes = object->cells[static_cast<std::size_t>(cell.v)];
  const std::size_t cut = encoding::CutBetweenCharacters(bytes, static_cast<std::size_t>(*size),
                                                         encoding::SystemEncoding());
  std::copy_n(bytes.data(), cut, static_cast<char*>(data));
  *size = static_cast<Size>(cut);
}

Boolean LGetSelect(Boolean next, Cell* cell, ListHandle list) {
  const auto object = carbon::Find(list);
  if (!object || !HasRow(*object, *cell)) return 0;
  const auto row = object->selected.begin() + cell->v;
  const auto last = next ? object->selected.end() : row + 1;
  const auto found = std::find(row, last, true);
  if (found == last) return 0;
  *cell = {static_cast<std::int16_t>(found - object->selected.begin()), 0};
  return 1;
}

Cell LLastClick(ListHandle list) {
  const auto object = carbon::Find(list);
  return object ? object->last_click : Cell{-1, -1};
}

// A port is named by the window that draws in it.
CGrafPtr GetListPort(ListHandle list) {
  const auto control = ControlOf(carbon::Find(list));
  return control ? reinterpret_cast<CGrafPtr>(control->window) : nullptr;
}

void GetPortBounds(CGrafPtr port, Rect* bounds) {
  *bounds = {};
  Rect content;
  if (GetWindowBounds(reinterpret_cast<WindowRef>(port), kWindowContentRgn, &content) != noErr) {
    return;
  }
  bounds->bottom = static_cast<std::int16_t>(content.bottom - content.top);
  bounds->right = static_cast<std::int16_t>(content.right - content.left);
}
