#include "workbench/check/report.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

#include "displays/protocol/display_json.h"

namespace workbench::check {
namespace {

constexpr std::array kVerdicts{"passed", "failed", "crashed", "timed out", "skipped"};

bool IsFailure(Verdict verdict) {
  return verdict != Verdict::kPassed && verdict != Verdict::kSkipped;
}

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char sign) { return sign == '\n' || sign == '\r'; }, ' ');
  return text;
}

// Each line behind a bar.
std::string Barred(std::string_view text) {
  std::string quoted;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    quoted += "           | " + std::string(text.substr(0, end)) + "\n";
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return quoted;
}

// As the value of an attribute or the content of an element. XML has no control characters.
std::string Xml(std::string_view text) {
  std::string xml;
  for (const char sign : text) {
    switch (sign) {
      case '<':
        xml += "&lt;";
        break;
      case '>':
        xml += "&gt;";
        break;
      case '&':
        xml += "&amp;";
        break;
      case '"':
        xml += "&quot;";
        break;
      default:
        xml += static_cast<unsigned char>(sign) < 0x20 && sign != '\n' && sign != '\t' ? '?' : sign;
    }
  }
  return xml;
}

std::string Seconds(double seconds) {
  std::array<char, 32> text;
  std::snprintf(text.data(), text.size(), "%.3f", seconds);
  return text.data();
}

std::string XmlOf(const std::string& bundle, const std::string& check, const Result& result) {
  std::string xml = "    <testcase classname=\"" + Xml(bundle) + "\" name=\"" + Xml(check) +
                    "\" time=\"" + Seconds(result.seconds) + "\">";
  const std::string message = " message=\"" + Xml(OneLine(result.message)) + "\"/>";
  if (result.verdict == Verdict::kSkipped) xml += "<skipped" + message;
  if (result.verdict == Verdict::kFailed) xml += "<failure" + message;
  if (result.verdict == Verdict::kCrashed || result.verdict == Verdict::kTimedOut) {
    xml += std::string("<error type=\"") + Name(result.verdict) + "\"" + message;
  }
  if (!result.errors.empty()) xml += "<system-err>" + Xml(result.errors) + "</system-err>";
  return xml + "</testcase>\n";
}

}  // namespace

const char* Name(Verdict verdict) { return kVerdicts.at(static_cast<std::size_t>(verdict)); }

void Report::Begin(const std::string& bundle, bool is_one_of_several) {
  bundle_ = bundle;
  tells_bundle_ = is_one_of_several;
  if (tells_bundle_ && !json_) print_(bundle + ":\n");
}

void Report::Add(const std::string& check, const Result& result) {
  ++counts_.at(static_cast<std::size_t>(result.verdict));
  entries_.push_back({bundle_, check, result});
  if (failed_only_ && !IsFailure(result.verdict)) return;
  json_ ? PrintJson(check, result) : PrintLine(check, result);
  first_ = false;
}

void Report::End() {
  if (json_) return print_(first_ ? "[]\n" : "\n]\n");
  print_(std::to_string(Count(Verdict::kPassed)) + " passed, " + std::to_string(Failed()) +
         " failed\n");
}

int Report::Failed() const {
  return Count(Verdict::kFailed) + Count(Verdict::kCrashed) + Count(Verdict::kTimedOut);
}

void Report::PrintLine(const std::string& check, const Result& result) const {
  std::string line = Name(result.verdict);
  line.resize(sizeof "timed out" + 1, ' ');
  line += check;
  if (!result.message.empty()) line += ": " + result.message;
  print_(OneLine(line) + "\n" + Barred(result.errors));
}

// One entry a line.
void Report::PrintJson(const std::string& check, const Result& result) {
  display::Json entry;
  if (tells_bundle_) entry["bundle"] = bundle_;
  entry[kind_] = check;
  entry["result"] = Name(result.verdict);
  entry["message"] = result.message;
  entry["seconds"] = result.seconds;
  entry["errors"] = result.errors;
  print_((first_ ? "[\n" : ",\n") + display::ToText(entry));
}

std::string Report::AsJUnit() const {
  std::string cases;
  double seconds = 0;
  for (const auto& [bundle, check, result] : entries_) {
    cases += XmlOf(bundle, check, result);
    seconds += result.seconds;
  }
  const std::string counts = R"( tests=")" + std::to_string(entries_.size()) + R"(" failures=")" +
                             std::to_string(Count(Verdict::kFailed)) + R"(" errors=")" +
                             std::to_string(Count(Verdict::kCrashed) + Count(Verdict::kTimedOut)) +
                             R"(" skipped=")" + std::to_string(Count(Verdict::kSkipped)) +
                             R"(" time=")" + Seconds(seconds) + "\">\n";
  return R"(<?xml version="1.0" encoding="UTF-8"?>)" + std::string("\n<testsuites>\n") +
         "  <testsuite name=\"tarvo " + kind_ + "\"" + counts + cases +
         "  </testsuite>\n</testsuites>\n";
}

}  // namespace workbench::check
