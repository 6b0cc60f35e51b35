#pragma once

// Localised strings tables: `"key" = "value";` with comments as in C.

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace corefoundation {

using StringsTable = std::map<std::u16string, std::u16string, std::less<>>;

// The entries of a table file in UTF-8, or in UTF-16 with a byte-order mark. Escapes are \" \\ \n
// \r \t, \0 to \377 (octal) and \U with four hexadecimal digits. A key or value of letters and
// digits needs no quotes. If two entries have one key, the first holds. If the text stops being a
// table, the entries up to that place hold.
StringsTable ParseStringsTable(std::string_view bytes);

}  // namespace corefoundation
