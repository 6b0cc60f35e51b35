#pragma once

// What FileMaker's values hold; for this layer alone.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/fmwrapper/FMWrapper.h"

namespace fmx {

// A few units are held in place, more in a block that the copies of a text share. No block is ever
// changed: a text that changes gets a new one.
class Text {
 public:
  Text() = default;
  Text(std::u16string_view units) { Set(units); }

  std::u16string_view Units() const { return {shared_ ? shared_.get() : in_place_.data(), size_}; }

  // `units` may be a part of this text.
  void Set(std::u16string_view units) {
    Set(units.size(), [units](char16_t* to) {
      std::char_traits<char16_t>::move(to, units.data(), units.size());
      return units.size();
    });
  }

  // Makes room for `most` units; `write` writes them and returns how many it wrote.
  template <class Write>
  void Set(std::size_t most, Write write) {
    std::shared_ptr<char16_t[]> block;
    if (most > in_place_.size()) block = std::make_shared_for_overwrite<char16_t[]>(most);
    size_ = write(block ? block.get() : in_place_.data());
    shared_ = std::move(block);
  }

 private:
  std::array<char16_t, 8> in_place_{};
  std::shared_ptr<char16_t[]> shared_;  // null if the units are in place
  std::size_t size_ = 0;
};

class FixPt {
 public:
  std::int32_t value;
  std::int32_t precision;
};

class QuadChar {
 public:
  std::string characters;
};

class Locale {
 public:
  int number;
};

// A number is held as its decimal text, so that it is a text already when it is asked for as one.
class Data {
 public:
  std::int32_t type = kFMX_TextType;
  Text text;
  Locale locale{0};
};

class DataVect {
 public:
  std::vector<Data> values;
};

class ExprEnv {};

}  // namespace fmx
