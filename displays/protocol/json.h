#pragma once

// nlohmann's JSON with keys in the order in which they are written. The class is compiled in
// json.cpp alone, since it takes long: without this, each file that uses it would compile it for
// itself.

#include <nlohmann/json.hpp>

extern template class nlohmann::basic_json<nlohmann::ordered_map>;
