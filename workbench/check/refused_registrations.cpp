#include "workbench/check/refused_registrations.h"

#include <dlfcn.h>

#include "platform/fmwrapper/FMWrapper.h"

namespace workbench::check {

std::vector<std::int16_t>& RefusedRegistrations() {
  static std::vector<std::int16_t> refused;
  return refused;
}

}  // namespace workbench::check

// This function of the program takes precedence over the interface's: plug-ins call this one, which
// hands the call on.
fmx::errcode FM_ExprEnv_RegisterExternalFunction(
    const fmx::QuadChar& plugin_id, std::int16_t function_id, const fmx::Text& name,
    const fmx::Text& prototype, std::int16_t minimum_arguments, std::int16_t maximum_arguments,
    std::uint32_t flags, fmx::ExternalFunction function, fmx::Error& error) {
  using Register = decltype(&FM_ExprEnv_RegisterExternalFunction);
  static const auto next =
      reinterpret_cast<Register>(dlsym(RTLD_NEXT, "FM_ExprEnv_RegisterExternalFunction"));
  const fmx::errcode error_code = next(plugin_id, function_id, name, prototype, minimum_arguments,
                                       maximum_arguments, flags, function, error);
  if (error_code != 0) workbench::check::RefusedRegistrations().push_back(function_id);
  return error_code;
}
