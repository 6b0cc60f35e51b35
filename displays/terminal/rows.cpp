#include "displays/terminal/rows.h"

#include <algorithm>

#include "displays/terminal/shown_text.h"

namespace terminal {
namespace {

constexpr auto kPause = std::chrono::milliseconds(1000);  // begins another text

}  // namespace

int RowAfterKey(const Key& key, int row, int count, int page) {
  const int last = count - 1;
  switch (key.kind) {
    case Key::Kind::kUp:
      return row < 0 ? last : std::max(row - 1, 0);
    case Key::Kind::kDown:
      return std::min(row + 1, last);
    case Key::Kind::kHome:
      return std::min(0, last);
    case Key::Kind::kEnd:
      return last;
    case Key::Kind::kPageUp:
      return std::min(std::max(row - page, 0), last);
    case Key::Kind::kPageDown:
      return std::min(std::max(row, 0) + page, last);
    default:
      return -1;
  }
}

int ScrollTo(int row, int top, int height, int count) {
  if (row >= 0) top = std::clamp(top, row - height + 1, row);
  return std::clamp(top, 0, std::max(count - height, 0));
}

bool TypeAhead::IsUnderWay() const {
  return !typed_.empty() && std::chrono::steady_clock::now() - last_ <= kPause;
}

bool TypeAhead::Continues(const Key& key) {
  if (key.kind != Key::Kind::kSign || key.control) typed_.clear();
  return key.IsSign(L' ') && IsUnderWay();
}

int TypeAhead::Find(const Key& key, const std::vector<std::string>& texts, int row) {
  if (key.kind != Key::Kind::kSign || key.control) return -1;
  if (!IsUnderWay()) typed_.clear();
  last_ = std::chrono::steady_clock::now();
  // The same sign again goes on to the next row that begins with it.
  const bool goes_on = typed_.empty() || typed_ == std::wstring(1, key.sign);
  if (typed_ != std::wstring(1, key.sign)) typed_ += key.sign;
  const int count = static_cast<int>(texts.size());
  const int start = std::max(row, goes_on ? row + 1 : 0);
  for (int i = 0; i < count; ++i) {
    const int candidate = (start + i) % count;
    if (StartsWith(texts[static_cast<std::size_t>(candidate)], typed_)) return candidate;
  }
  return -1;
}

}  // namespace terminal
