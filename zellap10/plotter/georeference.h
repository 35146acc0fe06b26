#pragma once

/// @file
///
/// Conversions between the pixels of a chart and positions.

#include <memory>
#include <optional>

#include <zellap10/georef/geo_record.h>
#include <zellap10/platform/platform.h>
#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/pixel_outline.h>
#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// The fit of a chart or of an inset, with everything that can be computed once. It is a value: independent
/// of the chart object, cheap to copy, and safe to use from several threads.
class Georeference {
public:
    /// Copies what is needed from a fitted record.
    ///
    /// @param record  of a chart that was opened with infoOnly 0, or of one of its insets. If a chart object
    ///                was closed and opened again for information only, its record still has the fit of the
    ///                earlier chart
    /// @param size    of the chart, as GetDocumentSize returns it. On a chart as wide as the earth, the size
    ///                decides in which turn a longitude is. Without a size, the reference points decide
    /// @return        empty if the record has no fit, or if its reference points do not span an area
    ///
    /// This takes 50 ms for 10^5 reference points and vertices.
    [[nodiscard]] static std::optional<Georeference> from(const CGEORec& record, CSize size = {});

    /// The position of a pixel.
    ///
    /// @param pixel  any pixel; outside the chart the position is extrapolated
    /// @return       empty if no position projects to the pixel
    ///
    /// The conversion is that of CGEORec::pwxy. In projection mode the inverse formulas of pwxy have errors
    /// of up to 66 m (polyconic at the equator: 1 to 2 m on a chart of 200 m, 66 m on one of 20 km;
    /// transverse Mercator at 72 N: 2.5 m on one of 200 km). Here the result is refined to rounding error.
    [[nodiscard]] std::optional<Position> position_of(ChartPixel pixel) const;

    /// The pixel of a position. This is the inverse of position_of, to 1e-6 pixel at every scale.
    ///
    /// @param position  any position; outside the chart the pixel is extrapolated. If the longitude has a
    ///                  pixel in several turns, the one on the chart or nearest to it is returned
    /// @return          the pixel, not rounded; empty if there is none
    ///
    /// In projection mode this is the forward projection and the inverse of the affine map of pwxy, in about
    /// the time of wpxy. In direct mode it is Newton's method on the polynomials of pwxy. If these have two
    /// regions, a position near their seam may have a pixel in both. Then a pixel with integer coordinates is
    /// preferred. If it has one in neither, each region gives a pixel past the seam. The one nearer to the
    /// seam is returned.
    [[nodiscard]] std::optional<ChartPixel> pixel_of(Position position) const;

    /// position_of in the chart's own datum.
    [[nodiscard]] std::optional<Position> chart_datum_position_of(ChartPixel pixel) const;

    /// pixel_of for a position in the chart's own datum.
    [[nodiscard]] std::optional<ChartPixel> pixel_of_chart_datum(Position position) const;

    /// Shifts a position from the chart's own datum to WGS 84, by the record's two offsets.
    [[nodiscard]] Position to_wgs84(Position in_chart_datum) const;

    /// Shifts a position from WGS 84 to the chart's own datum, by the record's two offsets.
    [[nodiscard]] Position to_chart_datum(Position wgs84) const;

    /// The outline in WGS 84.
    [[nodiscard]] const Outline& outline() const;

    /// The extent of the outline, as Outline::extent.
    [[nodiscard]] const std::optional<Extent>& extent() const;

    /// The outline in the chart's own datum.
    [[nodiscard]] const Outline& chart_datum_outline() const;

    /// The outline on the raster. It has additional corners between those of the outline, so that its edges
    /// follow the edges of the outline to 0.25 pixel.
    [[nodiscard]] const PixelOutline& pixel_outline() const;

    /// Whether the outline contains a position.
    [[nodiscard]] bool covers(Position position) const;

    /// Metres per pixel from the first reference point to the one farthest from it on the raster; empty if
    /// that is not a finite number.
    [[nodiscard]] std::optional<double> metres_per_pixel() const;

private:
    struct State;
    explicit Georeference(std::shared_ptr<const State> state);

    std::shared_ptr<const State> state_;  // never null
};

/// Metres per pixel of a record, as Georeference::metres_per_pixel. It needs no fit.
[[nodiscard]] std::optional<double> metres_per_pixel_of(const CGEORec& record);

}  // namespace zellap10::plotter
