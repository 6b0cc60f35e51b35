#pragma once

// Localised strings tables: `"key" = "value";` with comments as in C.

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace corefoundation {

using StringsTable = std::map<std::u16string, std::u16string, std::less<>>;

// What stands in a table file: UTF-8, or UTF-16 with a byte-order mark. Escapes are \" \\ \n \r \t
// \0 to \377 (octal) and \U with four hexadecimal digits; a key or value of letters and digits
// needs no quotes; of two entries with one key the first holds. Reading ends where the text is no
// table any more: the entries before that place hold.
StringsTable ParseStringsTable(std::string_view bytes);

}  // namespace corefoundation
