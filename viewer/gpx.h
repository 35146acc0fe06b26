#pragma once

#include <optional>
#include <string>
#include <vector>

#include <viewer/waypoint.h>

namespace viewer {

struct GpxRoute {
    std::string name;  ///< UTF-8; may be empty
    std::vector<Waypoint> waypoints;
};

struct LoadedGpx {
    std::optional<std::vector<GpxRoute>> routes;  ///< absent if the file is refused
    std::string reason;                           ///< why, with the line number
};

/// Loads the routes of a GPX 1.1 file.
///
/// A file is refused as a unit: if it is larger than 64 MiB, no well-formed XML, not GPX 1.1, or if a
/// coordinate of a route is missing or out of range. A longitude of 180, which GPX writes as -180, is
/// accepted.
LoadedGpx load_gpx(const std::string& path);

/// Saves routes as a GPX 1.1 file.
///
/// Of a file of that name only the routes are replaced; all else in it is kept, also what belongs to a
/// waypoint that has not changed. It stays as it was if anything fails, and if load_gpx refuses it.
///
/// @return  why it failed; empty on success
std::string save_gpx(const std::string& path, const std::vector<GpxRoute>& routes);

}  // namespace viewer
