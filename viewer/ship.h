#pragma once

#include <string>
#include <vector>

#include <viewer/painter.h>
#include <viewer/scene.h>
#include <zellap10/plotter/route.h>
#include <zellap10/plotter/track.h>

namespace viewer {

/// Position, speed and course of the ship and the way to a waypoint, in lines of text. A lost fix is named
/// first.
///
/// @param next  the waypoint; past the end of the route there is none
std::vector<std::string> ship_lines(const Track& track, const std::vector<Waypoint>& route, std::size_t next,
                                    Track::Clock::time_point now);

/// Draws where the ship has been, at a cost that grows with what is visible.
void draw_track(Painter& painter, const Scene& scene, const std::vector<Track::Point>& points);

/// Draws the ship and the line of the next six minutes; a lost one is crossed out.
void draw_ship(Painter& painter, const Scene& scene, const Fix& fix, bool lost);

}  // namespace viewer
