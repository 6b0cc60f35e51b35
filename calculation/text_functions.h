#pragma once

#include "calculation/evaluator.h"

// The functions of the language that work on texts. Characters are UTF-16 code units, counted from
// 1, as they are where a plug-in's parameters are measured.

namespace calculation {

Value CharFunction(const Arguments& arguments);
Value CodeFunction(const Arguments& arguments);
Value ExactFunction(const Arguments& arguments);
Value LeftFunction(const Arguments& arguments);
Value LengthFunction(const Arguments& arguments);
Value LowerFunction(const Arguments& arguments);
Value MiddleFunction(const Arguments& arguments);
Value PatternCountFunction(const Arguments& arguments);
Value PositionFunction(const Arguments& arguments);
Value QuoteFunction(const Arguments& arguments);
Value ReplaceFunction(const Arguments& arguments);
Value RightFunction(const Arguments& arguments);
Value SubstituteFunction(const Arguments& arguments);
Value TrimFunction(const Arguments& arguments);
Value UpperFunction(const Arguments& arguments);

}  // namespace calculation
