#include "advice/advice.h"

#include <utility>

#include "advice/parameters.h"

namespace advice {
namespace {

bool Persists(std::string_view function) {
  return function == "TarvoSetCaption" || function == "TarvoSetCustomControls" ||
         function == "TarvoPopUps" || function == "TarvoFillListBox";
}

// To forbid Escape changes nothing.
bool SaysNothing(const std::string& function, const Preset& preset) {
  return function == "TarvoAllowEscape" && NumberOf(preset.items.front()) < 1;
}

Finding Unused(const std::string& function, const Preset& preset, const std::string& fate) {
  // The last of the table.
  const Advice& advice = AllAdvice().back();
  return {advice.name, "what " + function + " set " + fate, advice.reason, preset.call, 0};
}

std::vector<Finding> AdviseOnLost(const Presets& presets) {
  std::vector<Finding> findings;
  for (const auto& [function, preset] : presets.lost) {
    if (SaysNothing(function, preset) || function == "TarvoSetCaption") continue;
    findings.push_back(Unused(function, preset, "was gone before a dialog used it"));
  }
  return findings;
}

}  // namespace

std::vector<Finding> AdviseOn(const Call& call, const Presets& before) {
  const Situation situation{call, before, SplitItems(call.function, call.parameter)};
  std::vector<Finding> findings;
  for (const Advice& advice : AllAdvice()) {
    if (!advice.look) continue;
    for (Remark& remark : advice.look(situation)) {
      const Preset* preset = Find(before, remark.preset);
      findings.push_back({advice.name, std::move(remark.sentence), advice.reason,
                          preset ? preset->call : before.calls, remark.item});
    }
  }
  if (ShowsDialog(call.function)) {
    for (Finding& finding : AdviseOnLost(before)) findings.push_back(std::move(finding));
  }
  return findings;
}

std::vector<Finding> AdviseAtEnd(const Presets& presets, bool all) {
  if (!presets.had_dialog) return {};
  std::vector<Finding> findings = AdviseOnLost(presets);
  for (const auto& [function, preset] : presets.set) {
    if (preset.used || SaysNothing(function, preset) || (Persists(function) && !all)) continue;
    findings.push_back(Unused(function, preset, "was used by no dialog"));
  }
  return findings;
}

std::vector<Finding> Advise(std::span<const Call> calls) {
  std::vector<Finding> findings;
  Presets presets;
  for (const Call& call : calls) {
    for (Finding& finding : AdviseOn(call, presets)) findings.push_back(std::move(finding));
    presets = After(std::move(presets), call);
  }
  for (Finding& finding : AdviseAtEnd(presets, true)) findings.push_back(std::move(finding));
  return findings;
}

}  // namespace advice
