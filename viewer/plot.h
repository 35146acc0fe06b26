#pragma once

#include <viewer/scene.h>

namespace viewer {

/// Draws grid, reference points and route: by the chart's record, and within its insets by theirs.
void draw_plot(Painter& painter, const Scene& scene);

}  // namespace viewer
