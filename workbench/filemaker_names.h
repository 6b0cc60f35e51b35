#pragma once

#include <string_view>

namespace workbench {

// What FileMaker has, under whatever case it is written. A function of Get's is "Get ( NAME )".
bool IsFileMakerFunction(std::string_view name);
bool IsFileMakerStep(std::string_view name);

}  // namespace workbench
