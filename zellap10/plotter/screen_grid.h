#pragma once

/// @file
///
/// Screen pixels on the plane of a view, and chart pixels interpolated between some of them.

#include <cstdint>
#include <optional>
#include <vector>

#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/map_view.h>
#include <zellap10/plotter/vector.h>

namespace zellap10::plotter {

/// The plane of all views of one scale, turn and fraction of a pixel. Views that differ by whole pixels, and
/// the web tiles of a zoom, have the same plane: nothing on it depends on where the screen is.
class ScreenPlane {
public:
    explicit ScreenPlane(const MapView& view);

    /// Column and row of the screen's upper left pixel.
    [[nodiscard]] std::int64_t left() const { return left_; }
    [[nodiscard]] std::int64_t top() const { return top_; }

    /// The position of a pixel; empty beyond 89 degrees of latitude.
    [[nodiscard]] std::optional<Position> position_of(std::int64_t column, std::int64_t row) const;

    /// Whether two views have the same plane.
    [[nodiscard]] bool is_same(const ScreenPlane& other) const;

private:
    double pixels_around_;
    double course_up_;
    double sine_;
    double cosine_;
    std::int64_t left_ = 0;
    std::int64_t top_ = 0;
    double column_fraction_ = 0.0;
    double row_fraction_ = 0.0;
};

/// A square of screen pixels in which chart pixels are interpolated.
struct GridCell {
    std::int64_t left, top;  ///< of its first pixel
    int side;                ///< pixels
    Vector corners[4];       ///< chart pixels at left and top: + 0, 0; + side, 0; + 0, side; + side, side

    /// The chart pixel at a distance from the first pixel, by bilinear interpolation.
    [[nodiscard]] Vector at(double x, double y) const;
};

/// Edge of a block of the plane: cells start with this size.
constexpr int kBlockSide = 128;

/// The extent of a square of the plane; empty if it is not known because the square is too large or too near
/// to a pole.
[[nodiscard]] std::optional<Extent> extent_of(const ScreenPlane& plane, std::int64_t left, std::int64_t top,
                                              int side);

/// How far an interpolated chart pixel is from Georeference::pixel_of at the most, in chart pixels. Two
/// places of a cell may be farther off than those that were compared, which the difference to 0.25 covers.
constexpr double kGridTolerance = 0.2;

/// Divides a block of the plane into cells that are exact enough, in the parts that meet the extent of the
/// chart. Pixels that have no chart pixel are in no cell.
///
/// @param left, top  of the block, multiples of kBlockSide
///
/// A georeference that bends so much that a block takes more than 4,000 evaluations is left out from there
/// on.
[[nodiscard]] std::vector<GridCell> cells_of(const ScreenPlane& plane, const Georeference& georeference,
                                             std::int64_t left, std::int64_t top);

}  // namespace zellap10::plotter
