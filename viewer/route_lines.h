#pragma once

#include <vector>

#include <viewer/camera.h>
#include <viewer/painter.h>
#include <viewer/theme.h>
#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/georeference.h>

namespace viewer {

/// Draws a route: rhumb lines, each with its course and distance, and numbered waypoints.
///
/// @param waypoints  in WGS 84
void draw_route(Painter& painter, const Camera& camera, const zellap10::plotter::Georeference& georeference,
                const std::vector<Position>& waypoints, const Theme& theme);

/// Draws the reference points of a record with their names.
void draw_points(Painter& painter, const Camera& camera, const CGEORec& record, const Theme& theme);

}  // namespace viewer
