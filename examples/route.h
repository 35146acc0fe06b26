#pragma once

#include <string>
#include <vector>

#include <zellap10/plotter/position.h>

/// Routes on the sample charts, all of them at sea.

struct Waypoint {
    const char* name = "";
    zellap10::plotter::Position position;  ///< in WGS 84
};

/// The route of a sample chart, by its name; empty for any other chart.
std::vector<Waypoint> sample_route(const std::string& chart_name);

/// A waypoint from an argument such as "50.1,-4.3", latitude first. Throws std::runtime_error for anything
/// else.
Waypoint waypoint_of(const std::string& argument);
