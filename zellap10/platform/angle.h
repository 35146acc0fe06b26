#pragma once

/// The library's only pi, and the angle constants that follow from it. Not installed: a header that users
/// include needs none of them.

namespace zellap10::platform {

/// Pi with eleven decimals, on purpose: every angle of the library is made with this figure. The true value
/// is 3.14159265358979...; a straight angle made from this one lies 2.1e-13 rad past the true one.
constexpr double PI_11 = 3.14159265359;

constexpr double DEG_TO_RAD = PI_11 / 180.0;
constexpr double RAD_TO_DEG = 180.0 / PI_11;
constexpr double HALF_PI = PI_11 / 2.0;
constexpr double QUARTER_PI = PI_11 / 4.0;

static_assert(DEG_TO_RAD == 0.017453292519944444, "degrees to radians");
static_assert(RAD_TO_DEG == 57.29577951307855, "radians to degrees");
static_assert(HALF_PI == 1.570796326795, "a right angle in radians");
static_assert(QUARTER_PI == 0.7853981633975, "half a right angle in radians");

}  // namespace zellap10::platform
