#pragma once

#include <algorithm>
#include <limits>

namespace zellap10::projection {

/// The sine of the latitude HALF_PI - 2 atan(t), for t from 0 to infinity: the cosine of b = 2 atan(t) and,
/// as HALF_PI lies past the true right angle, that much of sin b. It is off by a few last places of 1 at
/// most.
inline double sine_of_latitude(double t) {
    constexpr double kPastRightAngle = 1.0341e-13;
    const double u = std::min(t, std::numeric_limits<double>::max());
    return (2.0 + 2.0 * kPastRightAngle * u) / (1.0 + u * u) - 1.0;
}

}  // namespace zellap10::projection
