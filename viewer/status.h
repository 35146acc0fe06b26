#pragma once

#include <optional>
#include <string>
#include <vector>

#include <viewer/painter.h>
#include <viewer/scene.h>
#include <zellap10/plotter/route.h>

namespace viewer {

constexpr int kBarHeight = 44;  ///< times the scale of the screen

/// What the bar at the lower edge shows, two lines each.
struct Status {
    std::vector<std::string> pointer;  ///< the position under the pointer and the chart there
    std::vector<std::string> route;    ///< from the last waypoint to the pointer, and the complete route
    std::vector<std::string> view;     ///< which direction is up, and the modes that are on
};

/// Draws that bar on the lower kBarHeight pixels of the window.
void draw_status(Painter& painter, ScreenSize window, const Status& status, const Theme& theme);

/// Course and distance from the last waypoint to the pointer, and the length of the route.
std::vector<std::string> route_lines(const std::vector<Waypoint>& waypoints, std::optional<Position> pointer);

/// "1/3.2 of its size" or "enlarged 2.5 times".
///
/// @param reduction  chart pixels per screen pixel, above 0
std::string size_text(double reduction);

/// A path shortened from the left, so that the name of the file remains.
std::string short_path(const std::string& path);

/// Breaks a text into lines at blanks, and otherwise between characters. The middle of a long text is left
/// out.
std::vector<std::string> wrapped(const std::string& text);

/// Draws texts around a place, long ones in several lines.
void draw_notice(Painter& painter, ScreenPixel middle, const std::vector<std::string>& texts,
                 const TextStyle& style);

}  // namespace viewer
