#include "workbench/adviser.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "advice/parameters.h"
#include "calculation/unicode.h"
#include "displays/protocol/display_json.h"
#include "workbench/cut_texts.h"
#include "workbench/failure.h"
#include "workbench/output.h"
#include "workbench/pattern.h"

namespace workbench {
namespace {

bool IsAny(const std::string& pattern) {
  const auto all = advice::AllAdvice();
  return std::any_of(all.begin(), all.end(), [&](const advice::Advice& advice) {
    return Matches(std::string(advice.name), pattern);
  });
}

std::string Message(const advice::Finding& finding, const CallSource& source) {
  return source.Explain(finding.item, finding.sentence + ": " + std::string(finding.reason) + " [" +
                                          std::string(finding.advice) + "]");
}

}  // namespace

Adviser::Adviser(const Options& options)
    : only_(options.only),
      except_(options.except),
      // To start the display for it would hold up sessions in which nobody asked.
      measures_((options.advise || options.command == "explain") && IsChosen("text-cut")) {
  std::vector<std::string> patterns = except_;
  patterns.insert(patterns.end(), only_.begin(), only_.end());
  for (const std::string& pattern : patterns) {
    if (!IsAny(pattern)) throw Failure(Status::kUsage, "no advice matches \"" + pattern + "\"");
  }
}

void Adviser::Called(const MadeCall& made) {
  Note(made);
  Advise(made);
}

void Adviser::Note(const MadeCall& made) {
  const advice::Parameter* parameter = advice::FindParameter(made.call.function);
  calls_.push_back(std::make_shared<const CallSource>(source_, made.place,
                                                      calculation::ToUtf16(made.call.parameter),
                                                      parameter && parameter->items.size() > 1));
}

void Adviser::Advise(const MadeCall& made) {
  advice::Call call = made.call;
  if (measures_ && call.dialog) call.cut = CutTextsOf(*call.dialog);
  SayAll(advice::AdviseOn(call, presets_));
  presets_ = advice::After(std::move(presets_), call);
}

void Adviser::End(bool all) { SayAll(advice::AdviseAtEnd(presets_, all)); }

void Adviser::SayAll(const std::vector<advice::Finding>& findings) {
  for (const advice::Finding& finding : findings) {
    const CallSource& source = *calls_[finding.call];
    if (!IsChosen(finding.advice) || source.Silences(finding.advice)) continue;
    const std::string message = Message(finding, source);
    if (said_.insert(message).second) Say(finding, source);
  }
}

void Adviser::Say(const advice::Finding& finding, const CallSource& source) {
  Warn(Message(finding, source));
}

std::vector<std::string> Adviser::CutTextsOf(const display::Description& dialog) {
  const auto [known, is_new] = measured_.try_emplace(display::FormatDescription(dialog));
  if (is_new) known->second = FindCutTexts(dialog);
  return known->second;
}

display::Json FindingAsJson(const advice::Finding& finding, const CallSource& source) {
  return source.At(finding.item, {{"advice", finding.advice},
                                  {"item", finding.item},
                                  {"sentence", finding.sentence},
                                  {"reason", finding.reason}});
}

bool Adviser::IsChosen(std::string_view name) const {
  const std::string text(name);
  return (only_.empty() || MatchesAny(text, only_)) && !MatchesAny(text, except_);
}

}  // namespace workbench
