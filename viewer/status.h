#pragma once

#include <string>
#include <vector>

#include <viewer/scene.h>

namespace viewer {

constexpr int kBarHeight = 44;

/// What the bar at the window's lower edge says, two lines each.
struct Status {
    std::vector<std::string> pointer;  ///< the position under the pointer, and what it refers to
    std::vector<std::string> route;    ///< from the last waypoint to the pointer, and the whole route
    std::vector<std::string> chart;    ///< its name, its scale and the view
};

Status status_of(const Scene& scene);

/// Draws that bar, kBarHeight pixels of the window, and the scale bar above it.
void draw_status(Painter& painter, const Scene& scene);

/// Draws a text around a place, its long lines broken at blanks.
void draw_notice(Painter& painter, ScreenPixel middle, const std::vector<std::string>& lines,
                 const TextStyle& style);

}  // namespace viewer
