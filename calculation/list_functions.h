#pragma once

#include "calculation/evaluator.h"

// The functions of the language that work on lists: texts whose lines are values. A carriage return
// behind the last value makes no further one.

namespace calculation {

Value GetValueFunction(const Arguments& arguments);
Value LeftValuesFunction(const Arguments& arguments);
Value ListFunction(const Arguments& arguments);
Value MiddleValuesFunction(const Arguments& arguments);
Value RightValuesFunction(const Arguments& arguments);
Value ValueCountFunction(const Arguments& arguments);

}  // namespace calculation
