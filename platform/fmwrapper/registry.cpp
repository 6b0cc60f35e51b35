#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include "platform/fmwrapper/FMHost.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "platform/fmwrapper/values.h"

namespace {

constexpr fmx::errcode kTaken = 1;
constexpr fmx::errcode kNoSuchFunction = 2;

std::vector<fmx::host::Function>& Registry() {
  static std::vector<fmx::host::Function> functions;
  return functions;
}

auto FindFunction(const fmx::QuadChar& plugin_id, std::int16_t function_id) {
  return std::find_if(Registry().begin(), Registry().end(), [&](const auto& function) {
    return function.plugin_id == plugin_id.characters && function.id == function_id;
  });
}

}  // namespace

fmx::errcode FM_ExprEnv_RegisterExternalFunction(
    const fmx::QuadChar& plugin_id, std::int16_t function_id, const fmx::Text& name,
    const fmx::Text& prototype, std::int16_t minimum_arguments, std::int16_t maximum_arguments,
    std::uint32_t flags, fmx::ExternalFunction function, fmx::Error& error) try {
  if (FindFunction(plugin_id, function_id) != Registry().end()) return kTaken;
  Registry().push_back({plugin_id.characters, function_id, std::u16string(name.Units()),
                        std::u16string(prototype.Units()), minimum_arguments, maximum_arguments,
                        flags, function});
  return 0;
} catch (const std::bad_alloc&) {
  error.code = 1;
  return 0;
}

fmx::errcode FM_ExprEnv_UnRegisterExternalFunction(const fmx::QuadChar& plugin_id,
                                                   std::int16_t function_id,
                                                   fmx::Error& /*error*/) {
  const auto found = FindFunction(plugin_id, function_id);
  if (found == Registry().end()) return kNoSuchFunction;
  Registry().erase(found);
  return 0;
}

namespace fmx::host {

const std::vector<Function>& Functions() { return Registry(); }

Outcome Evaluate(const Function& function, const std::vector<Value>& parameters) {
  DataVect vector;
  for (const Value& value : parameters) {
    vector.values.push_back({value.type, {value.text}, {value.locale}});
  }
  Data result;
  const errcode error = function.function(function.id, ExprEnv(), vector, result);
  return {error, {result.type, std::u16string(result.text.Units()), result.locale.number}};
}

}  // namespace fmx::host
