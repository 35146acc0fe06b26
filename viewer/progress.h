#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <viewer/waypoint.h>
#include <zellap10/plotter/nmea.h>

namespace viewer {

/// From the ship to a waypoint.
struct Progress {
    std::optional<double> bearing;      ///< DEGREES; none at the waypoint
    double distance = 0.0;              ///< nautical miles
    std::optional<double> cross_track;  ///< nautical miles, positive right of the leg; none without a leg
    std::optional<double> time;         ///< seconds at the speed made good towards the waypoint
};

/// The progress to a waypoint of a route. The leg that leads to it starts at the waypoint before it.
///
/// @param next  an index of the route
/// @return      no time if the ship does not come closer; without a course its speed counts as made good
Progress progress_to(const Fix& fix, const std::vector<Waypoint>& route, std::size_t next);

/// The waypoint after those that the ship has passed. A waypoint is passed within 0.05 NM, and beyond the
/// perpendicular to its leg within 1 NM. The last one stays the next one.
///
/// @param next  an index of the route
std::size_t advance_waypoint(Position at, const std::vector<Waypoint>& route, std::size_t next);

}  // namespace viewer
