#pragma once

#include <cstdint>
#include <limits>

namespace zellap10::platform {

/// The number without its fraction, as a 32-bit int: limited to its range, and 0 for NaN.
inline std::int32_t whole_number(double number) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (number >= Limits::max()) return Limits::max();
    if (number <= Limits::min()) return Limits::min();
    return number == number ? static_cast<std::int32_t>(number) : 0;
}

}  // namespace zellap10::platform
