#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/check/isolation.h"

namespace workbench::check {

const char* Name(Verdict verdict);

// Results as they are printed, as lines or as JSON, and how many of them there are.
class Report {
 public:
  // `kind`: what is reported on, "check" or "test".
  Report(bool json, bool failed_only, std::function<void(std::string_view)> print,
         std::string kind = "check")
      : json_(json), failed_only_(failed_only), print_(std::move(print)), kind_(std::move(kind)) {}

  // The results that follow are this bundle's, which is told if there are several.
  void Begin(const std::string& bundle, bool is_one_of_several);
  void Add(const std::string& check, const Result& result);
  void End();

  int Failed() const;

  // All that was added, as JUnit's XML.
  std::string AsJUnit() const;

 private:
  struct Entry {
    std::string bundle;
    std::string check;
    Result result;
  };

  int Count(Verdict verdict) const { return counts_.at(static_cast<std::size_t>(verdict)); }
  void PrintLine(const std::string& check, const Result& result) const;
  void PrintJson(const std::string& check, const Result& result);

  bool json_;
  bool failed_only_;
  std::function<void(std::string_view)> print_;
  std::string kind_;
  std::string bundle_;
  bool tells_bundle_ = false;
  bool first_ = true;
  std::vector<Entry> entries_;
  std::array<int, 5> counts_{};
};

}  // namespace workbench::check
