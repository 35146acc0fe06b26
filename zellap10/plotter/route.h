#pragma once

/// @file
///
/// Routes: waypoints joined by rhumb lines, with the library's course and distance.
///
/// All positions are in the same datum, which may be any. Longitudes may be in any turn. A leg goes the short
/// way around the earth, also across the 180th meridian. If both ways are half a turn, it may go either. NaN
/// and infinity propagate to the results. At a pole, course and distance are calculated from the meridional
/// parts, which are 102765.6 at the north pole and minus infinity at the south pole.

#include <optional>
#include <string>
#include <vector>

#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// A named position of a route.
struct Waypoint {
    Position position;  ///< WGS 84
    std::string name;   ///< UTF-8; may be empty
};

/// From a waypoint to the next.
struct Leg {
    std::optional<double> course;  ///< DEGREES clockwise from north, 0 to 360; empty for a leg without length
    double distance = 0.0;         ///< nautical miles of 60 to the degree of latitude
};

/// The legs of a route.
struct Route {
    std::vector<Leg> legs;  ///< one fewer than the waypoints
    double distance = 0.0;  ///< sum over the legs
};

/// The leg from one position to another.
[[nodiscard]] Leg leg_between(Position from, Position to);

/// The legs of a route; none for fewer than two waypoints.
///
/// @param waypoints  in the order of sailing
[[nodiscard]] Route route_over(const std::vector<Position>& waypoints);

/// The time for a distance.
///
/// @param distance  nautical miles
/// @param speed     knots
/// @return          seconds; empty unless the speed is above 0 and both are finite
[[nodiscard]] std::optional<double> time_to_go(double distance, double speed);

/// How far a position is off a leg.
///
/// @param from, to  the ends of the leg. The rhumb line goes on past them
/// @param at        the position
/// @return          nautical miles along the perpendicular to the rhumb line, positive right of it; empty for
///                  a leg without length, and if a position is at a pole or not finite
[[nodiscard]] std::optional<double> cross_track_distance(Position from, Position to, Position at);

/// Positions along the rhumb line of a leg, for drawing: on most charts it is not straight.
///
/// The first is `from`. The last is at the place of `to`, but its longitude may be in another turn:
/// longitudes continue from that of `from`, past 180 if the leg crosses that meridian. So they never jump by
/// a turn.
///
/// @param from, to  the ends of the leg
/// @param pieces    how many pieces of equal length; below 1 counts as 1
/// @return          one more position than pieces; only the two ends if a position is not finite or at the
///                  south pole
[[nodiscard]] std::vector<Position> rhumb_line(Position from, Position to, int pieces);

}  // namespace zellap10::plotter
