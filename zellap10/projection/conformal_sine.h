#pragma once

#include <algorithm>
#include <limits>

namespace zellap10::projection {

/// The sine of HALF_PI - 2 atan(t), for t from 0 to infinity: the cosine of b = 2 atan(t) and, as HALF_PI
/// lies past the true right angle, that much of sin b. Absolutely within some last places of 1.
inline double sine_of_rest(double t) {
    constexpr double kPastRightAngle = 1.0341e-13;
    const double u = std::min(t, std::numeric_limits<double>::max());
    return (2.0 + 2.0 * kPastRightAngle * u) / (1.0 + u * u) - 1.0;
}

}  // namespace zellap10::projection
