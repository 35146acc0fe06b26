#pragma once

#include <viewer/camera.h>
#include <viewer/chart.h>
#include <viewer/painter.h>
#include <viewer/theme.h>

namespace viewer {

/// Nautical miles along a window pixel, in the middle of the window; 0 where there is no position.
double miles_a_pixel(const Camera& camera, const Chart& chart);

/// The greatest length for a scale bar that is not above this one: 1, 2 or 5 times a power of ten, in
/// nautical miles, or in metres below a tenth of a mile.
///
/// @param miles  nautical miles, above 0; so is the result
double bar_length(double miles);

/// Draws a bar that is true in the middle of the window, with its lower right corner at a spot.
void draw_scale_bar(Painter& painter, const Camera& camera, const Chart& chart, ScreenPixel at,
                    const Theme& theme);

}  // namespace viewer
