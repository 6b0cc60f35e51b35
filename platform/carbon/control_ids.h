#pragma once

// The ids of a dialog's controls: by them the displays know what a control is to the user, and
// which label belongs to which field. Numbers count from 1, as users count buttons and fields.

#include <cstdint>

namespace control_id {

inline constexpr std::int32_t kMessage = 1;
inline constexpr std::int32_t kList = 1;
inline constexpr std::int32_t kCancel = 999;  // the control that stands for Escape

inline constexpr std::int32_t kMost = 4;  // buttons, and fields, in a window

constexpr bool IsNumber(std::int32_t number) { return number >= 1 && number <= kMost; }

constexpr std::int32_t Button(std::int32_t number) { return 199 + number; }
constexpr std::int32_t Label(std::int32_t number) { return 202 + 2 * number; }
constexpr std::int32_t Field(std::int32_t number) { return 203 + 2 * number; }

// The inverses, for a control that is known to be a button or a field.
constexpr std::int32_t ButtonNumber(std::int32_t id) { return id - Button(0); }
constexpr std::int32_t FieldNumber(std::int32_t id) { return (id - Field(0)) / 2; }

}  // namespace control_id
