#pragma once

#include <viewer/painter.h>
#include <viewer/scene.h>

namespace viewer {

/// Minutes of arc between grid lines: the least of the usual steps that is not below this.
double grid_step(double minutes);

/// Draws meridians and parallels, each with a label where it enters the scene from the left or from above.
void draw_grid(Painter& painter, const Scene& scene);

}  // namespace viewer
