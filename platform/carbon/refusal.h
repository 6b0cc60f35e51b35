#pragma once

#include <optional>
#include <string>

namespace carbon {

// Why the user's action cannot be done in the dialog that is shown: one clause for the user, as
// display::Display::Reject takes it. Empty if the action was accepted.
using Refusal = std::optional<std::string>;

inline constexpr std::nullopt_t kAccepted = std::nullopt;

}  // namespace carbon
