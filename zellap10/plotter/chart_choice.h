#pragma once

/// @file
///
/// Which charts a view shows, and which of them cover the others.

#include <set>
#include <vector>

#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/map_view.h>

namespace zellap10::plotter {

/// A chart is readable up to this many chart pixels per screen pixel, and from this many screen pixels per
/// chart pixel on. See Quilt.
constexpr double kMostReduced = 4.0;
constexpr double kMostEnlarged = 4.0;

/// A readable chart stays so up to this factor beyond the limits.
constexpr double kHysteresis = 1.1;

/// A chart that is smaller on the screen, in pixels, is not shown.
constexpr double kLeastSide = 12.0;

/// The charts that a view shows are no more than this.
constexpr std::size_t kMostCharts = 2000;

/// A chart of a view.
struct ChosenChart {
    const CatalogueEntry* entry;
    double reduction;  ///< chart pixels per screen pixel, at the middle latitude of the chart
};

struct ChartChoice {
    std::vector<ChosenChart> charts;           ///< uppermost first
    std::set<const CatalogueEntry*> readable;  ///< those within the limits, for the next choice
};

/// Chooses the charts of a view.
///
/// Readable charts come first, the most detailed of them uppermost; then those that are enlarged too much,
/// from the most detailed on; then those that are reduced too much, from the coarsest on. Nothing depends on
/// the place of the view, so that web tiles meet without a seam.
///
/// @param readable  of the previous choice; empty for a choice that depends on the view alone
[[nodiscard]] ChartChoice choose_charts(const Catalogue& catalogue, const MapView& view,
                                        const std::set<const CatalogueEntry*>& readable);

}  // namespace zellap10::plotter
