#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calculation/external_functions.h"
#include "calculation/source.h"
#include "displays/protocol/display_json.h"

namespace workbench {

// Where a call and the items of its parameter stand in a source.
class CallSource {
 public:
  // `parameter` is the call's. Without a source, or a place, nothing is known.
  CallSource(std::shared_ptr<const calculation::Source> source, const calculation::CallPlace& place,
             std::u16string_view parameter, bool has_items);

  // "name, line 3, column 5: what", then the line with the item underlined; `what` alone if nothing
  // is known.
  std::string Explain(int item, const std::string& what) const;

  // "name, line 3, column 5: what" of the call; `what` alone if nothing is known.
  std::string Named(const std::string& what) const;

  // None if nothing is known.
  std::optional<calculation::Source::Position> PositionOf(int item) const;

  // The object with "line" and "column", if they are known.
  display::Json At(int item, display::Json object) const;

  // Whether a comment near the call, in its line or above it up to an empty line, silences
  // `advice`: "no advice: NAME".
  bool Silences(std::string_view advice) const;

 private:
  // The item, from 1, if it stands in a literal; else, or if it is 0, the call.
  calculation::Span PlaceOf(int item) const;

  std::shared_ptr<const calculation::Source> source_;
  calculation::Span place_;
  std::vector<calculation::Span> items_;  // empty spans if they stand in no literal
};

}  // namespace workbench
