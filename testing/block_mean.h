#pragma once

#include <algorithm>
#include <cstdint>

#include <gtest/gtest.h>

#include <zellap10/plotter/colours.h>

/// The mean colour of a square block of chart pixels, or of the part of it that is on the chart, pixel by
/// pixel.
inline zellap10::plotter::Argb mean_of_block(CZellap& chart, const zellap10::plotter::ColourTable& colours,
                                             std::int64_t column, std::int64_t row, int side,
                                             zellap10::plotter::Argb outside = 0) {
    const CSize size = chart.GetDocumentSize();
    const std::int64_t left = column * side;
    const std::int64_t top = row * side;
    if (left < 0 || top < 0 || left >= size.cx || top >= size.cy) return outside;
    unsigned sums[3] = {};
    unsigned count = 0;
    for (auto y = static_cast<int>(top); y < std::min<std::int64_t>(top + side, size.cy); ++y) {
        for (auto x = static_cast<int>(left); x < std::min<std::int64_t>(left + side, size.cx);
             ++x, ++count) {
            unsigned char index = 0;
            EXPECT_EQ(chart.getMultiLines(y, 1, x, 1, &index), 1);
            for (unsigned part = 0; part < 3; ++part)
                sums[part] += colours[index] >> 8 * part & 0xFF;
        }
    }
    zellap10::plotter::Argb mean = 0xFF000000;
    for (unsigned part = 0; part < 3; ++part)
        mean |= (sums[part] + count / 2) / count << 8 * part;
    return mean;
}
