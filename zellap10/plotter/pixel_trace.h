#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <zellap10/plotter/position.h>
#include <zellap10/plotter/vector.h>

namespace zellap10::plotter {

/// Gives the pixel of a longitude and latitude, perhaps with the help of a pixel near it.
using PixelOf = std::function<std::optional<Vector>(Vector position, std::optional<Vector> hint)>;

/// The polygon of corners on the raster. Long edges are divided until they follow those between longitudes
/// and latitudes to 0.25 pixel. Corners without a pixel are left out.
std::vector<ChartPixel> trace_pixels(const std::vector<Vector>& corners, const PixelOf& pixel_of);

}  // namespace zellap10::plotter
