#pragma once

#include <viewer/box.h>
#include <viewer/camera.h>
#include <viewer/painter.h>
#include <viewer/theme.h>
#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/georeference.h>

namespace viewer {

/// Minutes of arc from a grid line to the next: the least of the steps in use that is not below this.
double grid_step(double minutes);

/// Draws the meridians and parallels of the chart's own datum, each with its text where it enters the box
/// from the left or from above.
void draw_grid(Painter& painter, const Camera& camera, const zellap10::plotter::Georeference& georeference,
               const Box& box, const Theme& theme);

}  // namespace viewer
