#pragma once

#include <zellap10/platform/palette.h>

namespace zellap10::chart {

/// Squared Euclidean distance of two colours on 8-bit values, 0 to 195075.
inline int distance(const PALETTEENTRY& a, const PALETTEENTRY& b) {
    const int red = a.peRed - b.peRed;
    const int green = a.peGreen - b.peGreen;
    const int blue = a.peBlue - b.peBlue;
    return red * red + green * green + blue * blue;
}

}  // namespace zellap10::chart
