#include "workbench/explainer.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <utility>

#include "advice/explain.h"
#include "calculation/unicode.h"
#include "workbench/output.h"

namespace workbench {
namespace {

using display::Json;

std::size_t WidthOf(const std::string& text) {
  return calculation::DisplayWidth(calculation::ToUtf16(text));
}

std::string Padded(const std::string& text, std::size_t width) {
  return text + std::string(std::max(width, WidthOf(text)) - WidthOf(text), ' ');
}

std::string Quoted(std::string text) {
  if (text.empty()) return "";
  std::replace(text.begin(), text.end(), '\r', ' ');
  return "\"" + text + "\"";
}

// The call, a line for each item (number, meaning, text, effect), and the presets.
std::string AsTable(const std::string& function, const CallSource& source,
                    const std::vector<advice::ExplainedItem>& items,
                    const std::vector<std::string>& presets) {
  std::size_t meanings = 0;
  std::size_t texts = 0;
  for (const auto& item : items) {
    meanings = std::max(meanings, WidthOf(item.meaning));
    texts = std::max(texts, std::min<std::size_t>(WidthOf(Quoted(item.text)), 40));
  }
  std::string table = source.Named(function) + "\n";
  for (const auto& item : items) {
    std::string line = "  " + std::string(item.number < 10 ? " " : "") +
                       std::to_string(item.number) + "  " + Padded(item.meaning, meanings) + "  " +
                       Padded(Quoted(item.text), texts) + "  " + item.effect;
    line.erase(line.find_last_not_of(' ') + 1);
    table += line + "\n";
  }
  for (const std::string& preset : presets) table += "      " + preset + "\n";
  return table;
}

std::string AsJson(const std::string& function, const CallSource& source,
                   const std::vector<advice::ExplainedItem>& items,
                   const std::vector<std::string>& presets) {
  Json call = Json::object();
  call["function"] = function;
  call = source.At(0, std::move(call));
  call["items"] = Json::array();
  for (const auto& item : items) {
    call["items"].push_back(source.At(item.number, {{"item", item.number},
                                                    {"meaning", item.meaning},
                                                    {"text", item.text},
                                                    {"effect", item.effect}}));
  }
  call["presets"] = presets;
  return ToLine(call) + "\n";
}

}  // namespace

void Explainer::Called(const MadeCall& made) {
  const auto items = advice::Explain(made.call);
  const auto presets = advice::ExplainPresets(made.call, this->presets());
  Note(made);
  if (!items.empty() && json_) {
    PrintJson(AsJson(made.call.function, last(), items, presets));
  } else if (!items.empty()) {
    Print(AsTable(made.call.function, last(), items, presets));
  }
  Advise(made);
}

void Explainer::Say(const advice::Finding& finding, const CallSource& source) {
  if (!json_) return Adviser::Say(finding, source);
  PrintJson(ToLine(FindingAsJson(finding, source)) + "\n");
}

}  // namespace workbench
