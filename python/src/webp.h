#pragma once

#include <cstddef>
#include <string>

#include <zellap10/plotter/colours.h>

namespace zellap10::python {

/// A lossless WebP file, or an empty text if every pixel is 0.
///
/// @param pixels  the upper left pixel
/// @param stride  pixels from a row to the next
std::string encode_webp(const plotter::Argb* pixels, int width, int height, std::size_t stride);

}  // namespace zellap10::python
