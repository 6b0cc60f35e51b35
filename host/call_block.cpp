#include "host/call_block.h"

FMX_ExternCallPtr gFMX_ExternCallPtr = nullptr;

CFBundleRef PluginBundle() {
  return reinterpret_cast<CFBundleRef>(gFMX_ExternCallPtr->bundle);  // NOLINT(performance-no-int-to-ptr)
}
