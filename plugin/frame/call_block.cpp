#include "plugin/frame/call_block.h"

FMX_ExternCallPtr gFMX_ExternCallPtr = nullptr;

CFBundleRef PluginBundle() {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the field holds an address
  return reinterpret_cast<CFBundleRef>(gFMX_ExternCallPtr->bundle);
}
