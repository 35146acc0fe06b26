#pragma once

/// @file
///
/// A ship on its route.

#include <cstddef>
#include <optional>
#include <vector>

#include <zellap10/plotter/nmea.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/route.h>

namespace zellap10::plotter {

/// From a ship to a waypoint.
struct Progress {
    std::optional<double> bearing;      ///< DEGREES clockwise from north, 0 to 360; empty at the waypoint
    double distance = 0.0;              ///< nautical miles
    std::optional<double> cross_track;  ///< nautical miles, positive right of the leg; empty without a leg
    std::optional<double> time;         ///< seconds at the speed made good towards the waypoint
};

/// The progress of a ship to a waypoint. The leg to it starts at the waypoint before it.
///
/// @param fix    the ship
/// @param route  waypoints in WGS 84, in the order of sailing
/// @param next   index of the waypoint, below the number of waypoints
/// @return       without a time if the ship does not come closer or has no speed. Without a course its speed
///               counts as made good
[[nodiscard]] Progress progress_to(const Fix& fix, const std::vector<Waypoint>& route, std::size_t next);

/// The first waypoint from `next` on that the ship has not passed. A ship passes a waypoint within 0.05
/// nautical miles of it, and past the perpendicular to its leg within 1 nautical mile.
///
/// @param at     the ship, in WGS 84
/// @param route  as in progress_to
/// @param next   index of the waypoint to which the ship sails
/// @return       an index; the last waypoint is never passed, and an index past it is returned as it is
[[nodiscard]] std::size_t advance_waypoint(Position at, const std::vector<Waypoint>& route, std::size_t next);

}  // namespace zellap10::plotter
