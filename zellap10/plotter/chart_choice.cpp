#include <algorithm>
#include <cmath>
#include <tuple>

#include <zellap10/plotter/chart_choice.h>
#include <zellap10/plotter/web_mercator.h>

namespace zellap10::plotter {

namespace {

enum class Rank { kReadable, kEnlarged, kReduced };

struct Ranked {
    Rank rank;
    double detail;  // smaller is higher
    ChosenChart chart;
};

Rank rank_of(double reduction, bool was_readable) {
    const double slack = was_readable ? kHysteresis : 1.0;
    if (reduction > kMostReduced * slack) return Rank::kReduced;
    if (reduction * kMostEnlarged * slack < 1.0) return Rank::kEnlarged;
    return Rank::kReadable;
}

// Metres on the ground per screen pixel at the middle latitude of an extent.
double metres_at(const Extent& extent, const MapView& view) {
    const double latitude = std::clamp(0.5 * (extent.south + extent.north), -89.0, 89.0);
    return kMetresAround / view.pixels_around() * std::cos(latitude * platform::DEG_TO_RAD);
}

bool is_large_enough(const Extent& extent, const MapView& view) {
    const double wide = extent.width / 360.0;
    const double high = mercator_turns(std::clamp(extent.north, -89.0, 89.0)) -
                        mercator_turns(std::clamp(extent.south, -89.0, 89.0));
    return std::max(wide, high) * view.pixels_around() >= kLeastSide;
}

}  // namespace

ChartChoice choose_charts(const Catalogue& catalogue, const MapView& view,
                          const std::set<const CatalogueEntry*>& readable) {
    std::vector<Ranked> ranked;
    for (const CatalogueEntry* entry : catalogue.with_extent_in(view.extent())) {
        if (!entry->metres_per_pixel || !(*entry->metres_per_pixel > 0.0)) continue;
        if (!is_large_enough(entry->extent, view)) continue;
        const double reduction = metres_at(entry->extent, view) / *entry->metres_per_pixel;
        const Rank rank = rank_of(reduction, readable.count(entry) > 0);
        const double detail = rank == Rank::kReduced ? -*entry->metres_per_pixel : *entry->metres_per_pixel;
        ranked.push_back({rank, detail, {entry, reduction}});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) {
        return std::tie(a.rank, a.detail) < std::tie(b.rank, b.detail);
    });
    if (ranked.size() > kMostCharts) ranked.resize(kMostCharts);
    ChartChoice choice;
    for (const Ranked& each : ranked) {
        choice.charts.push_back(each.chart);
        if (each.rank == Rank::kReadable) choice.readable.insert(each.chart.entry);
    }
    return choice;
}

}  // namespace zellap10::plotter
