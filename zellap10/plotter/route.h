#pragma once

#include <vector>

#include <zellap10/plotter/position.h>

/// @file
///
/// Routes: waypoints with a rhumb line from each to the next, by the library's course and distance.
///
/// Positions are in one datum, whichever it is. Their longitudes may be in any turn; a leg goes the short way
/// about the earth, across the 180th meridian too, and half a turn either way.

namespace zellap10::plotter {

/// From a waypoint to the next.
struct Leg {
    double course = 0.0;    ///< DEGREES clockwise from north, from 0 up to 360; NaN for a leg without length
    double distance = 0.0;  ///< nautical miles of 60 to the degree of latitude
    double time = 0.0;      ///< seconds; infinite at a speed that is not above 0, 0 for a leg without length
};

/// A whole route.
struct Route {
    std::vector<Leg> legs;  ///< one fewer than the waypoints
    double distance = 0.0;  ///< of all legs
    double time = 0.0;      ///< of all legs
};

/// The leg from one position to another.
///
/// NaN and infinity are handed on. At a pole course and distance are those of meridional parts, which end at
/// 102765.6 in the north and do not end in the south.
///
/// @param from, to  where it begins and ends
/// @param speed     knots
Leg leg_between(const Position& from, const Position& to, double speed);

/// The legs of a route and their sums; none for fewer than two waypoints.
///
/// @param waypoints  in the order of sailing
/// @param speed      knots
Route route_over(const std::vector<Position>& waypoints, double speed);

/// Positions along the rhumb line of a leg, for drawing: on most charts it is no straight line.
///
/// The first is `from` and the last lies where `to` does. The longitudes run on from that of `from`, past 180
/// where the leg crosses that meridian, so that no two neighbours are a turn apart.
///
/// @param from, to  where the leg begins and ends
/// @param pieces    of equal length, that many and one positions are given; below 1 counts as 1
/// @return          the positions; only the two ends where a position is not finite or at the south pole,
///                  and what lies between has no number
std::vector<Position> rhumb_line(const Position& from, const Position& to, int pieces);

}  // namespace zellap10::plotter
