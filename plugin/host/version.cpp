#include "plugin/host/version.h"

#include <cstdint>

#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/frame/external_function.h"

namespace {

constexpr std::int32_t kVersion = 220;

}  // namespace

fmx::errcode Do_TarvoDialogVersion(std::int16_t /*function_id*/,
                                   const fmx::ExprEnv& /*environment*/,
                                   const fmx::DataVect& /*parameters*/, fmx::Data& result) {
  return ReturnNumber(result, kVersion);
}
