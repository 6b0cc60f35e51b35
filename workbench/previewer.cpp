#include "workbench/previewer.h"

#include <utility>

#include "displays/protocol/display_json.h"
#include "displays/scripted/dialog_name.h"

namespace workbench {

using display::Json;

void Previewer::Called(const MadeCall& made) {
  Adviser::Called(made);
  const auto position = last().PositionOf(0);
  Tell(made.call.function + (position ? ", line " + std::to_string(position->line) : ""),
       made.call.dialog);
}

void Previewer::End(bool all) {
  Adviser::End(all);
  Tell("After the last dialog", std::nullopt);
}

void Previewer::Tell(const std::string& call, const std::optional<display::Description>& dialog) {
  Json line = {{"call", call},
               {"name", dialog ? display::NameOf(*dialog) : ""},
               {"dialog", dialog ? display::ToJson(*dialog) : Json(nullptr)}};
  const bool is_new = dialog && told_.insert(display::ToText(line)).second;
  if (!is_new && advice_.empty()) return;
  line["advice"] = std::exchange(advice_, Json::array());
  file_.Write(display::ToText(line));
}

void Previewer::Say(const advice::Finding& finding, const CallSource& source) {
  advice_.push_back(FindingAsJson(finding, source));
}

std::vector<std::string> Previewer::CutTextsOf(const display::Description& dialog) {
  const auto known = cut_texts_.find(display::FormatDescription(dialog));
  return known == cut_texts_.end() ? std::vector<std::string>() : known->second;
}

}  // namespace workbench
