#pragma once

#include <optional>
#include <string>
#include <vector>

#include <viewer/camera.h>
#include <viewer/chart.h>
#include <viewer/painter.h>
#include <viewer/theme.h>

namespace viewer {

/// What is drawn over the tiles.
struct Scene {
    ScreenSize window;     ///< the chart's part of it and the bar below
    const Camera& camera;  ///< on the chart's part
    const Chart& chart;
    const std::vector<Position>& route;  ///< waypoints in WGS 84
    std::optional<ScreenPixel> pointer;
    const Theme& theme;
    std::string place;  ///< of the chart in the list, such as "chart 2 of 5"
    bool grid = false;
    bool points = false;
};

}  // namespace viewer
