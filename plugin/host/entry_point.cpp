#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "plugin/frame/call_block.h"
#include "plugin/host/lifecycle.h"
#include "plugin/host/localised_strings.h"

namespace {

// A return value as the call block's result: sign-extended to the whole field.
std::uintptr_t ResultField(std::int32_t value) {
  return static_cast<std::uintptr_t>(std::intptr_t{value});
}

}  // namespace

// What FileMaker calls with every message. Messages that the plug-in does not know leave the call
// block as it is.
extern "C" __attribute__((visibility("default"))) void FMExternCallProc(FMX_ExternCallPtr call) {
  gFMX_ExternCallPtr = call;
  switch (call->message) {
    case kFMXT_Init:
      call->result = ResultField(Do_HostInit(call->version));
      break;
    case kFMXT_Shutdown:
      Do_HostShutdown();
      break;
    case kFMXT_GetString:
      Do_GetString(call->string, call->language, call->size,
                   reinterpret_cast<UniChar*>(call->result));  // NOLINT(performance-no-int-to-ptr)
      break;
    default:
      break;
  }
}
