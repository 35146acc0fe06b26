#pragma once

/// @file
///
/// The areas that insets hide on a chart.

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include <zellap10/plotter/pixel_outline.h>

namespace zellap10::plotter {

/// Areas of a raster, and which of them are near a place. A value that is cheap to copy: it never changes.
class Holes {
public:
    /// None.
    Holes() = default;

    explicit Holes(std::vector<PixelOutline> outlines);

    /// Those with less than some square pixels.
    [[nodiscard]] Holes smaller_than(double area) const;

    /// Those whose boxes meet a box.
    [[nodiscard]] std::vector<const PixelOutline*> around(ChartPixel upper_left,
                                                          ChartPixel lower_right) const;

    /// Whether one of them contains a pixel.
    [[nodiscard]] bool contain(ChartPixel pixel) const;

private:
    struct State;

    std::shared_ptr<const State> state_;
    double limit_ = HUGE_VAL;  // of their areas
};

}  // namespace zellap10::plotter
