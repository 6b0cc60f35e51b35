#pragma once

#include "workbench/adviser.h"

namespace workbench {

// Prints what the items of each call mean, and then what looks wrong: on standard error, or as
// JSON, an object for each, one a line.
class Explainer : public Adviser {
 public:
  explicit Explainer(const Options& options) : Adviser(options), json_(options.json) {}

  void Called(const MadeCall& made) override;

 protected:
  void Say(const advice::Finding& finding, const CallSource& source) override;

 private:
  bool json_;
};

}  // namespace workbench
