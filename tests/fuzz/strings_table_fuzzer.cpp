#include "platform/corefoundation/strings_table.h"

#include <cstdint>
#include <string_view>

// A strings table from any bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corefoundation::ParseStringsTable({reinterpret_cast<const char*>(data), size});
  return 0;
}
