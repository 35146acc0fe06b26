#pragma once

/// @file
///
/// The georeferences of a chart and of its insets.

#include <optional>
#include <vector>

#include <zellap10/georef/geo_record.h>
#include <zellap10/platform/platform.h>
#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// The georeferences of a chart and of its insets. It is made once after OpenZellap and then independent of
/// the chart object. Like a Georeference it is a value that several threads may use.
class Sheet {
public:
    /// @param base  the record of the chart, as GetBaseGeoRec returns it
    /// @param size  of the chart, as GetDocumentSize returns it, see Georeference::from
    explicit Sheet(const CGEORec& base, CSize size = {});

    /// The georeference of the chart; empty without a fit.
    [[nodiscard]] const std::optional<Georeference>& chart() const { return chart_; }

    /// The georeferences of the insets in the order of the file, each empty without a fit.
    [[nodiscard]] const std::vector<std::optional<Georeference>>& insets() const { return insets_; }

    /// The inset that owns a pixel of the chart: the one whose pixel outline contains the pixel, and the
    /// smallest if several do. The margin of 80 pixels in InsetRect belongs to the chart.
    ///
    /// @return  its index in insets(); empty if the pixel belongs to the chart itself
    [[nodiscard]] std::optional<int> inset_at(ChartPixel pixel) const;

    /// The georeference of the inset that owns a pixel, else that of the chart.
    [[nodiscard]] std::optional<Georeference> georeference_at(ChartPixel pixel) const;

    /// Whether the chart itself shows a position: its outline contains the position, and no inset hides the
    /// pixel.
    [[nodiscard]] bool covers(Position position) const;

private:
    std::optional<Georeference> chart_;
    std::vector<std::optional<Georeference>> insets_;
};

}  // namespace zellap10::plotter
