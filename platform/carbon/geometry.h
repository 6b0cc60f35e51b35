#pragma once

#include <cstdint>

// Pixels, signed 16-bit, the vertical axis growing downward. The order of the members is the order
// in which rectangles and points are written everywhere in this system.
struct Rect {
  std::int16_t top = 0;
  std::int16_t left = 0;
  std::int16_t bottom = 0;
  std::int16_t right = 0;

  bool operator==(const Rect&) const = default;
};

struct Point {
  std::int16_t v;
  std::int16_t h;

  bool operator==(const Point&) const = default;
};
