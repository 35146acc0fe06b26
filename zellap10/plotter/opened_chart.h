#pragma once

/// @file
///
/// What drawing needs to know of an open chart.

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/colours.h>
#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/row_clip.h>

namespace zellap10::plotter {

/// A chart as it was when its file was opened. It never changes and needs no chart object.
struct OpenedChart {
    struct Part {
        Georeference georeference;
        ChartArea area;
    };

    CSize size;
    ColourTable colours;
    std::optional<Part> chart;
    std::vector<std::optional<Part>> insets;
    std::size_t bytes;  ///< of memory, about

    /// @param opened  a chart object after OpenZellap with infoOnly 0
    explicit OpenedChart(CZellap& opened);

    /// The chart itself or an inset; null if there is none with a fit.
    [[nodiscard]] const Part* part(std::optional<int> inset) const;
};

}  // namespace zellap10::plotter
