#pragma once

#include <functional>
#include <vector>

#include <zellap10/plotter/position.h>
#include <zellap10/plotter/vector.h>

namespace zellap10::plotter {

/// The polygon of corners on the raster. Long edges are divided until they follow those between longitudes
/// and latitudes to 0.25 pixel. Corners without a pixel are left out.
///
/// @param corners     longitudes and latitudes
/// @param pixel_of    returns their pixels; not finite if there is none
/// @param pixel_near  the same, with a pixel near the result as second argument
std::vector<ChartPixel> trace_pixels(const std::vector<Vector>& corners,
                                     const std::function<Vector(Vector)>& pixel_of,
                                     const std::function<Vector(Vector, Vector)>& pixel_near);

}  // namespace zellap10::plotter
