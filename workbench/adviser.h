#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "advice/advice.h"
#include "displays/protocol/display_json.h"
#include "workbench/call_sources.h"
#include "workbench/options.h"
#include "workbench/plugin_functions.h"

namespace workbench {

// Says on standard error what looks wrong with the dialogs of a run, as soon as they were shown.
class Adviser : public CallListener {
 public:
  // Throws Failure (usage) if the options name an advice that there is not.
  explicit Adviser(const Options& options);

  // What is evaluated from now on.
  void Read(const calculation::Source& source) {
    source_ = std::make_shared<const calculation::Source>(source);
  }

  void Called(const MadeCall& made) override;

  // Says what can be said only when no dialog follows. `all`: every step of the run was run.
  virtual void End(bool all);

  // How much was said.
  std::size_t count() const { return said_.size(); }

 protected:
  // The two halves of Called: takes note of where the call stands, and gives the advice.
  void Note(const MadeCall& made);
  void Advise(const MadeCall& made);

  // Says it, of a call that stands there.
  virtual void Say(const advice::Finding& finding, const CallSource& source);

  // Of a dialog, what does not fit on the screen.
  virtual std::vector<std::string> CutTextsOf(const display::Description& dialog);

  const advice::Presets& presets() const { return presets_; }

  // Where the call that was made last stands.
  const CallSource& last() const { return *calls_.back(); }

 private:
  void SayAll(const std::vector<advice::Finding>& findings);
  bool IsChosen(std::string_view name) const;

  std::vector<std::string> only_;
  std::vector<std::string> except_;
  std::shared_ptr<const calculation::Source> source_;
  advice::Presets presets_;
  std::vector<std::shared_ptr<const CallSource>> calls_;
  bool measures_;                                             // whether texts fit
  std::map<std::string, std::vector<std::string>> measured_;  // by description
  std::set<std::string> said_;  // loops go round: nothing is said twice
};

// A piece of advice on a call that stands there, with its place if that is known.
display::Json FindingAsJson(const advice::Finding& finding, const CallSource& source);

}  // namespace workbench
