#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

// Reads choices from the fuzzer's bytes; zeros once they are used up.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : next_(data), left_(size) {}

  bool AtEnd() const { return left_ == 0; }

  std::uint8_t Take() {
    if (left_ == 0) return 0;
    --left_;
    return *next_++;
  }

  // A number from 0 to below `count`.
  int Below(int count) { return Take() % count; }

  // A text made of what matters to the plug-in, and now and then of anything.
  std::u16string Text() {
    static constexpr const char16_t* kPieces[] = {
        u"|",      u"\r", u"0",    u"1",      u"2",      u"3",           u"4",
        u"5",      u"-1", u"-2",   u"",       u" ",      u"a",           u"OK",
        u"Label",  u"é",  u"日本", u"😀",      u"||",     u"\n",          u"65",
        u"<b>&x;", u"%s", u"E|E",  u"\xD800", u"\xDC00", u"99999999999", u"||||||||||"};
    std::u16string text;
    for (int pieces = Below(24); pieces > 0; --pieces) {
      const std::uint8_t choice = Take();
      if (choice < 240) {
        text += kPieces[choice % std::size(kPieces)];
      } else if (choice < 252) {
        text += static_cast<char16_t>(Take() << 8 | Take());
      } else {
        text.append(static_cast<std::size_t>(Take()) * 16, static_cast<char16_t>(Take()));
      }
    }
    return text;
  }

 private:
  const std::uint8_t* next_;
  std::size_t left_;
};
