#pragma once

#include <optional>

#include <viewer/box.h>

namespace viewer {

/// What a receiver measures at one time.
struct Fix {
    std::optional<double> time;     ///< seconds since midnight, UTC
    Position position;              ///< WGS 84
    std::optional<double> speed;    ///< over the ground, knots
    std::optional<double> course;   ///< over the ground, DEGREES clockwise from true north
    std::optional<double> heading;  ///< DEGREES clockwise from true north
};

}  // namespace viewer
