#pragma once

// Texts are UTF-8 inside the program. From outside they come in UTF-8 too, or else in the code set
// of the user's locale, in which they go out again.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

// Nothing if the bytes are neither.
std::optional<std::string> FromUser(std::string_view bytes);

// The same; throws Failure (usage) that names the byte. `source` is what the message calls the
// text.
std::string FromUser(std::string_view bytes, const std::string& source);

// "?" stands for what the code set lacks. What is not UTF-8, as the name of a file may be, stays.
std::string ForUser(std::string_view utf8);

}  // namespace workbench
