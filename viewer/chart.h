#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <viewer/types.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/sheet.h>

namespace viewer {

using zellap10::plotter::Georeference;
using zellap10::plotter::Sheet;

/// A position and what gives it.
struct Place {
    const CGEORec* record;  ///< of the chart or of an inset
    std::optional<int> inset;
    Georeference georeference;
    Position chart_datum;

    Position wgs84() const { return georeference.to_wgs84(chart_datum); }
};

/// A chart to look at, open if it can be.
struct Chart {
    explicit Chart(const std::string& file);

    std::string path;
    std::string name;                 ///< what the chart calls itself, or its file
    std::unique_ptr<CZellap> zellap;  ///< null where the chart cannot be opened
    std::string trouble;  ///< why it cannot be opened, or has no positions; empty where all is well
    Sheet sheet{CGEORec()};

    bool is_open() const { return zellap != nullptr; }
    ScreenSize size() const;

    /// The record of an inset, or of the chart itself. The chart must be open.
    const CGEORec& record(std::optional<int> inset = {}) const;

    /// The position of a pixel; empty if it has none.
    std::optional<Place> place_at(ChartPixel pixel) const;
};

}  // namespace viewer
