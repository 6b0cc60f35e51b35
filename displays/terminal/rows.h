#pragma once

// What a list and a menu share: going through rows by keys.

#include <chrono>
#include <string>
#include <vector>

#include "displays/terminal/event.h"

namespace terminal {

// The row (from 0) that a movement key leads to from `row`, which is -1 if there is none yet; -1
// for any other key.
int RowAfterKey(const Key& key, int row, int count, int page);

// The first of `height` rows that are shown, so that `row` is one of them.
int ScrollTo(int row, int top, int height, int count);

// Finds a row by the beginning of its text, typed in one go.
class TypeAhead {
 public:
  // The row that the sign leads to from `row`, or -1.
  int Find(const Key& key, const std::vector<std::string>& texts, int row);

  // Whether the key is a blank of the text that is being typed, and thus acts no other way. Any
  // other key that is no sign ends the text.
  bool Continues(const Key& key);

 private:
  bool IsUnderWay() const;

  std::wstring typed_;
  std::chrono::steady_clock::time_point last_;
};

}  // namespace terminal
