#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/carbon/CarbonHost.h"
#include "platform/corefoundation/CFHost.h"
#include "platform/fmwrapper/FMHost.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/check/answering_display.h"
#include "workbench/check/checks.h"
#include "workbench/check/isolation.h"
#include "workbench/check/plugin_under_check.h"

namespace workbench::check {
namespace {

using fmx::host::Function;
using fmx::host::Outcome;
using fmx::host::Value;

// Any locale but the one that a result has before it is written.
constexpr int kLocale = 7;

struct Parameter {
  const char* name;
  Value value;
};

// For a function that reads a field count or a number, that first, and then one long text.
std::u16string Units(std::size_t count) {
  std::u16string text = u"1|" + std::u16string(count, u'x');
  text.resize(count);
  return text;
}

Parameter TextParameter(const char* name, std::u16string text) {
  return {name, {kFMX_TextType, std::move(text), kLocale}};
}

std::vector<Parameter> Parameters() {
  using namespace std::string_literals;
  return {TextParameter("empty", u""),
          TextParameter("1-unit", Units(1)),
          TextParameter("1024-units", Units(1024)),
          TextParameter("1025-units", Units(1025)),
          TextParameter("100000-units", Units(100000)),
          TextParameter("zero-characters", u"\0|1\0a|\0\r\0"s),
          TextParameter("lone-surrogates", u"\xDC00|a\xD800|\xD800\r\xDFFF"),
          TextParameter("bars", std::u16string(20, u'|')),
          TextParameter("returns", std::u16string(40, u'\r')),
          TextParameter("items", u"2|One\rTwo|Three\rFour|OK|Cancel|Other|1|1|1|1|1|1"),
          TextParameter("numbers", u"4|-1|99999999999999999999|-99999999999999999999|0x10|+2|1e9"),
          {"number", {kFMX_NumberType, u"-220.5", kLocale}}};
}

// As many parameters as the function must have, at least one.
std::vector<Value> Arguments(const Function& function, const Value& value) {
  const auto count = static_cast<std::size_t>(std::max<int>(function.minimum_arguments, 1));
  std::vector<Value> arguments(count, value);
  return arguments;
}

void ExpectSound(const Outcome& outcome) {
  ExpectEqual("the error code", 0, outcome.error);
  const Value& result = outcome.result;
  if (result.type == kFMX_NumberType) return;
  ExpectEqual("the type of the result, if it is no number,", kFMX_TextType, result.type);
  ExpectEqual("the locale of the text", kLocale, result.locale);
}

// What is alive in the layers. A plug-in may hold on to what it was given, but not to more of it
// after each call.
struct Alive {
  std::intmax_t values = fmx::host::LiveValues();
  std::intmax_t dialogs = carbon::LiveObjects();
  std::intmax_t strings = CFGetLiveObjectCount();
};

void ExpectNoMoreThan(const Alive& before) {
  const Alive now;
  Expect(now.dialogs <= before.dialogs,
         "expected no dialog left open, got one more after a second call");
  Expect(now.strings <= before.strings,
         "expected string objects to be released, got more after a second call");
}

void CheckCall(const Bundle& bundle, std::size_t index, const Value& value) {
  Plugin plugin(bundle);
  plugin.Start();
  const Function& function = fmx::host::Functions().at(index);
  if (function.maximum_arguments < 1) throw NotApplicable("the function takes no parameter");
  const std::vector<Value> arguments = Arguments(function, value);
  const std::intmax_t values = fmx::host::LiveValues();
  ExpectSound(fmx::host::Evaluate(function, arguments));
  ExpectEqual("the number of values left after the call", values, fmx::host::LiveValues());
  ExpectEqual("the number of dialogs that button 1 does not end", 0, plugin.display().unanswered());
  const Alive after_first;
  ExpectSound(fmx::host::Evaluate(function, arguments));
  ExpectNoMoreThan(after_first);
}

}  // namespace

Outcome Call(const Function& function, std::u16string text) {
  return fmx::host::Evaluate(function,
                             Arguments(function, {kFMX_TextType, std::move(text), kLocale}));
}

std::vector<Check> CallChecks(const std::vector<std::string>& names) {
  std::vector<Check> checks;
  for (std::size_t index = 0; index < names.size(); ++index) {
    for (const auto& [name, value] : Parameters()) {
      checks.push_back({names[index] + "/" + name, [index, value = value](const Bundle& bundle) {
                          CheckCall(bundle, index, value);
                        }});
    }
  }
  return checks;
}

}  // namespace workbench::check
