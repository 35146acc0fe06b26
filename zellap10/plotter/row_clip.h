#pragma once

/// @file
///
/// The parts of screen rows that show the area of a chart.

#include <vector>

#include <zellap10/plotter/holes.h>
#include <zellap10/plotter/pixel_outline.h>
#include <zellap10/plotter/polygon.h>
#include <zellap10/plotter/screen_grid.h>

namespace zellap10::plotter {

/// The area of a chart or of an inset on its raster: inside an outline and outside all holes.
struct ChartArea {
    PixelOutline outline;
    Holes holes;
    double width;   ///< of the raster
    double height;  ///< of the raster

    [[nodiscard]] bool contains(ChartPixel pixel) const;
};

/// Pixels of a row, from first to end - 1.
struct RowSpan {
    int first;
    int end;
};

/// Cuts the rows of a cell to an area.
class CellClip {
public:
    CellClip(const ChartArea& area, const GridCell& cell);

    /// The spans of a row of the cell, from left to right. A pixel belongs to an area if its centre does, so
    /// that two areas with a common edge share no pixel and leave none out.
    ///
    /// @param row  from the cell's first
    const std::vector<RowSpan>& spans(int row);

private:
    struct Part {
        Polygon polygon;  // cut to a box around the cell
        bool is_hole;
    };
    void add_part(const PixelOutline& outline, bool is_hole);
    void cross(const Polygon& polygon, Vector start, Vector step);

    const GridCell& cell_;
    Box box_;
    std::vector<Part> parts_;
    bool is_empty_ = false;
    std::vector<double> crossings_;
    std::vector<RowSpan> part_spans_;
    std::vector<RowSpan> spans_;
    std::vector<RowSpan> merged_;
};

}  // namespace zellap10::plotter
