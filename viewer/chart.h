#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <viewer/types.h>
#include <zellap10/chart/zellap.h>

namespace viewer {

/// An inset that has positions.
struct Inset {
    const CGEORec* record = nullptr;
    std::vector<Pixel> outline;  ///< on the chart's picture
};

/// A position and the record that gives it.
struct Place {
    const CGEORec* record;
    Position position;  ///< in the record's own datum

    Position wgs84() const { return zellap10::plotter::to_wgs84(*record, position); }
};

/// A chart to look at, open if it can be.
struct Chart {
    explicit Chart(const std::string& file);

    std::string path;
    std::string name;                 ///< what the chart calls itself, or its file
    std::unique_ptr<CZellap> zellap;  ///< null where the chart cannot be opened
    std::string trouble;  ///< why it cannot be opened, or has no positions; empty where all is well
    std::vector<Inset> insets;

    bool is_open() const { return zellap != nullptr; }
    Size size() const;

    /// The record of the whole chart; null where it has no positions.
    const CGEORec* base() const;

    /// What stands at a pixel: on an inset if one is there; none where nothing has a position.
    std::optional<Place> place_at(Pixel pixel) const;
};

}  // namespace viewer
