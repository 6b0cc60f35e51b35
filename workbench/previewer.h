#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "workbench/adviser.h"
#include "workbench/files.h"

namespace workbench {

// The texts of dialogs that do not fit on the screen, by the dialogs' descriptions.
using CutTexts = std::map<std::string, std::vector<std::string>>;

// Writes each call that showed a dialog, or that advice is about, as the JSON object that the
// preview's window reads, one a line.
class Previewer : public Adviser {
 public:
  // Nothing is measured here: what the window has found out is given.
  Previewer(const Options& options, const std::string& file, const CutTexts& cut_texts)
      : Adviser(options), file_(file), cut_texts_(cut_texts) {}

  void Called(const MadeCall& made) override;
  void End(bool all) override;

 protected:
  void Say(const advice::Finding& finding, const CallSource& source) override;
  std::vector<std::string> CutTextsOf(const display::Description& dialog) override;

 private:
  void Tell(const std::string& call, const std::optional<display::Description>& dialog);

  LineFile file_;
  const CutTexts& cut_texts_;
  display::Json advice_ = display::Json::array();  // about the call
  std::set<std::string> told_;                     // a loop shows a dialog again and again
};

}  // namespace workbench
