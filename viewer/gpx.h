#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <zellap10/plotter/route.h>

namespace viewer {

using namespace zellap10::plotter;

struct LoadedGpx {
    std::vector<Waypoint> waypoints;  ///< of the first route
    std::size_t routes = 0;           ///< in the file; 0 if it is refused
    std::string reason;               ///< why there is no route, with the line number; else empty
};

/// Loads the first route of a GPX 1.1 file.
///
/// A file is refused as a unit: if it is larger than 64 MiB, no well-formed XML, not GPX 1.1, or if a
/// coordinate of a route is missing or out of range. A longitude of 180, which GPX writes as -180, is
/// accepted.
LoadedGpx load_gpx(const std::string& path);

/// Saves a route as a GPX 1.1 file.
///
/// Of a file of that name only the waypoints of the first route are replaced. All else in it is kept, also
/// what belongs to a waypoint that has not changed. It stays as it was if anything fails, and if load_gpx
/// refuses it.
///
/// @return  why it failed; empty on success
std::string save_gpx(const std::string& path, const std::vector<Waypoint>& waypoints);

}  // namespace viewer
