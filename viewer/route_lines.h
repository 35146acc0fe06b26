#pragma once

#include <optional>
#include <vector>

#include <viewer/painter.h>
#include <viewer/scene.h>
#include <zellap10/plotter/route.h>

namespace viewer {

/// Pixels of the screen around a waypoint or a leg that count as it.
constexpr double kReach = 9;

/// Draws a route: rhumb lines, each with its course and distance, and numbered waypoints.
///
/// @param target  the waypoint to which the ship sails, drawn with a second ring
void draw_route(Painter& painter, const Scene& scene, const std::vector<Waypoint>& waypoints,
                std::optional<std::size_t> target);

/// The waypoint at a pixel, and the leg.
std::optional<std::size_t> waypoint_at(const Scene& scene, const std::vector<Waypoint>& waypoints,
                                       ScreenPixel pixel, double reach);
std::optional<std::size_t> leg_at(const Scene& scene, const std::vector<Waypoint>& waypoints,
                                  ScreenPixel pixel, double reach);

}  // namespace viewer
