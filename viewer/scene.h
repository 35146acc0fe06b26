#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <viewer/box.h>
#include <viewer/theme.h>
#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/map_view.h>
#include <zellap10/plotter/viewport.h>

namespace viewer {

/// Where lines are drawn, and how positions (WGS 84) and pixels convert: on the map, on a printed sheet or on
/// one of its insets.
struct Scene {
    std::function<std::optional<ScreenPixel>(Position)> to_screen;
    std::function<std::optional<Position>(ScreenPixel)> to_position;
    double turn_pixels;  ///< around the earth; no line is as long as half of it
    Box box;             ///< the part of the window
    const Theme& theme;
};

Scene map_scene(const MapView& view, const Theme& theme);

/// @param box  the part of the window in which the georeference holds
Scene sheet_scene(const Georeference& georeference, const Viewport& viewport, const Box& box,
                  const Theme& theme);

/// The screen pixels of positions, in lines that break if a position has no pixel or on the far side of the
/// earth.
std::vector<std::vector<ScreenPixel>> lines_on_screen(const Scene& scene,
                                                      const std::vector<Position>& positions);

}  // namespace viewer
