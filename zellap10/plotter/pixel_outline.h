#pragma once

/// @file
///
/// The area that a chart or an inset covers on the chart's raster.

#include <cstddef>
#include <cstdint>
#include <vector>

#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// A polygon of chart pixels, its edges included. It is made once and then answers quickly.
class PixelOutline {
public:
    /// Without corners; contains nothing.
    PixelOutline() = default;

    /// @param corners  finite; with fewer than three the polygon contains nothing
    explicit PixelOutline(std::vector<ChartPixel> corners);

    /// The corners in order. An edge joins the last to the first.
    [[nodiscard]] const std::vector<ChartPixel>& corners() const { return corners_; }

    /// Whether it contains a pixel. This takes a time that does not depend on the number of corners, unless
    /// most edges are as high as the polygon.
    [[nodiscard]] bool contains(ChartPixel pixel) const;

    /// The corners of a smaller polygon that has the same part in a box. Of several corners in a row that are
    /// on one side of the box only the first and the last are kept.
    [[nodiscard]] std::vector<ChartPixel> corners_around(ChartPixel box_upper_left,
                                                         ChartPixel box_lower_right) const;

    /// Square pixels.
    [[nodiscard]] double area() const { return area_; }

    /// The upper left corner of the smallest box around it; 0, 0 without corners.
    [[nodiscard]] ChartPixel upper_left() const { return upper_left_; }

    /// The lower right corner of the smallest box around it; 0, 0 without corners.
    [[nodiscard]] ChartPixel lower_right() const { return lower_right_; }

private:
    struct Bands {
        std::size_t first;
        std::size_t last;
    };
    // The box around some corners in a row.
    struct Run {
        ChartPixel upper_left, lower_right;
    };
    void make_bands();
    void make_runs();
    Bands bands_of(std::size_t edge) const;
    std::size_t band_of(double y) const;

    std::vector<ChartPixel> corners_;
    double area_ = 0.0;
    ChartPixel upper_left_;
    ChartPixel lower_right_;
    std::vector<Run> runs_;
    // Horizontal bands of equal height, each with the edges that have a point in it.
    std::vector<std::size_t> first_of_band_;  // place in edges_, one more than there are bands
    std::vector<std::uint32_t> edges_;        // by their first corner
};

}  // namespace zellap10::plotter
