#pragma once

#include <viewer/painter.h>
#include <viewer/scene.h>

namespace viewer {

/// The greatest length for a scale bar that is not above this one: 1, 2 or 5 times a power of ten, in
/// nautical miles, or in metres below a tenth of a mile.
///
/// @param miles  nautical miles, above 0; so is the result
double bar_length(double miles);

/// Draws a bar that is true in the middle of the scene, with its lower right corner at a place.
void draw_scale_bar(Painter& painter, const Scene& scene, ScreenPixel at);

}  // namespace viewer
