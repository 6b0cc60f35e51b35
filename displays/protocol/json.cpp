#include "displays/protocol/json.h"

template class nlohmann::basic_json<nlohmann::ordered_map>;
