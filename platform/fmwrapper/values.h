#pragma once

// What FileMaker's values hold; for this layer alone.

#include <string>
#include <vector>

#include "platform/fmwrapper/FMWrapper.h"

namespace fmx {

class Text {
 public:
  std::u16string units;
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
