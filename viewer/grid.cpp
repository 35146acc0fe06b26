#include "viewer/grid.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include <zellap10/plotter/text.h>

namespace viewer {

using zellap10::plotter::format_latitude;
using zellap10::plotter::format_longitude;
using zellap10::plotter::Georeference;
using zellap10::plotter::longitude_near;

namespace {

constexpr double kSteps[] = {0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1,   2,   5,   10,
                             15,   20,   30,   60,  120, 300, 600, 900, 1800};

constexpr double kLeastGap = 140;  // between lines, window pixels
constexpr int kPieces = 24;        // of a line across the box
constexpr int kProbes = 8;         // for positions, on each side of the box
constexpr int kMostLines = 100;    // a fit that says more of a window is nonsense
constexpr double kFarAway = 1e6;   // window pixels, past which nothing is drawn

// Latitudes, or longitudes that run on over the 180th meridian.
struct Extent {
    double least;
    double greatest;

    void take_in(double value) {
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
};

struct Bounds {
    Extent lat;
    Extent lon;
};

// What positions the edge of the box has.
std::optional<Bounds> bounds_of(const Camera& camera, const Georeference& georeference, const Box& box) {
    std::optional<Bounds> bounds;
    for (int i = 0; i < 4 * kProbes; ++i) {
        const double along = static_cast<double>(i % kProbes) / kProbes;
        const int side = i / kProbes;
        const double u = side == 0 ? along : side == 1 ? 1 : side == 2 ? 1 - along : 0;
        const double v = side == 0 ? 0 : side == 1 ? along : side == 2 ? 1 : 1 - along;
        const ScreenPixel spot{box.upper_left.x + u * (box.lower_right.x - box.upper_left.x),
                               box.upper_left.y + v * (box.lower_right.y - box.upper_left.y)};
        const auto position = georeference.chart_datum_position_of(camera.to_chart(spot));
        if (!position) return std::nullopt;
        if (!bounds) {
            bounds =
                Bounds{{position->latitude, position->latitude}, {position->longitude, position->longitude}};
        }
        bounds->lat.take_in(position->latitude);
        bounds->lon.take_in(longitude_near(position->longitude, bounds->lon.least));
    }
    return bounds;
}

// Degrees of latitude and longitude along a window pixel, at the middle of the box.
std::optional<Position> degrees_a_pixel(const Camera& camera, const Georeference& georeference,
                                        const Box& box) {
    const ScreenPixel spot{(box.upper_left.x + box.lower_right.x) / 2,
                           (box.upper_left.y + box.lower_right.y) / 2};
    const auto here = georeference.chart_datum_position_of(camera.to_chart(spot));
    const auto right = georeference.chart_datum_position_of(camera.to_chart({spot.x + 1, spot.y}));
    const auto below = georeference.chart_datum_position_of(camera.to_chart({spot.x, spot.y + 1}));
    if (!here || !right || !below) return std::nullopt;
    const auto east = [&](const Position& position) {
        return longitude_near(position.longitude, here->longitude);
    };
    return Position{std::hypot(right->latitude - here->latitude, below->latitude - here->latitude),
                    std::hypot(east(*right) - here->longitude, east(*below) - here->longitude)};
}

// The places of a line of which `position` gives the position at 0 to 1.
template <class PositionAt>
std::vector<ScreenPixel> spots_of(const Camera& camera, const Georeference& georeference,
                                  PositionAt position) {
    std::vector<ScreenPixel> spots;
    for (int i = 0; i <= kPieces; ++i) {
        const auto pixel = georeference.pixel_of_chart_datum(position(static_cast<double>(i) / kPieces));
        if (!pixel) continue;
        const ScreenPixel spot = camera.to_window(*pixel);
        if (std::abs(spot.x) < kFarAway && std::abs(spot.y) < kFarAway) spots.push_back(spot);
    }
    return spots;
}

// Calls with each whole multiple of a step that lies in the extent.
template <class Use>
void for_each_line(const Extent& extent, double minutes, Use use) {
    const double first = std::ceil(extent.least * 60 / minutes);
    const double last = std::floor(extent.greatest * 60 / minutes);
    if (!(last - first < kMostLines)) return;
    for (double k = first; k <= last; ++k)
        use(k * minutes / 60);
}

}  // namespace

double grid_step(double minutes) {
    const double* const step = std::lower_bound(std::begin(kSteps), std::end(kSteps), minutes);
    return step != std::end(kSteps) ? *step : *std::rbegin(kSteps);
}

void draw_grid(Painter& painter, const Camera& camera, const Georeference& georeference, const Box& box,
               const Theme& theme) {
    if (box.is_empty()) return;
    const auto bounds = bounds_of(camera, georeference, box);
    const auto pixel = degrees_a_pixel(camera, georeference, box);
    if (!bounds || !pixel) return;
    const Extent& lat = bounds->lat;
    const Extent& lon = bounds->lon;

    const auto draw = [&](const std::vector<ScreenPixel>& spots, const std::string& text, Anchor anchor) {
        painter.line(spots, theme.grid);
        const auto parts = parts_inside(box, spots);
        if (!parts.empty()) painter.text(parts.front().first, {text}, {theme.paper, anchor, 12});
    };
    for_each_line(lat, grid_step(pixel->latitude * kLeastGap * 60), [&](double value) {
        const auto at = [&](double t) { return Position{value, lon.least + t * (lon.greatest - lon.least)}; };
        draw(spots_of(camera, georeference, at), format_latitude(value), {0, 0.5});
    });
    for_each_line(lon, grid_step(pixel->longitude * kLeastGap * 60), [&](double value) {
        const auto at = [&](double t) {
            return Position{lat.greatest - t * (lat.greatest - lat.least), value};
        };
        draw(spots_of(camera, georeference, at), format_longitude(value), {0.5, 0});
    });
}

}  // namespace viewer
