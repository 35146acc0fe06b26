#include "viewer/grid.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr double kSteps[] = {0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1,   2,   5,   10,
                             15,   20,   30,   60,  120, 300, 600, 900, 1800};

constexpr double kLeastGap = 140;  // between lines, pixels
constexpr int kPieces = 24;        // of a line across the box
constexpr int kProbes = 8;         // for positions, across the box and down
constexpr int kMostLines = 100;    // a georeference that needs more is nonsense

// Latitudes, or longitudes that run on across the 180th meridian.
struct Range {
    double least = 1e9;
    double greatest = -1e9;

    void include(double value) {
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
};

// Degrees of latitude and longitude per pixel, in the middle of the box.
std::optional<Position> degrees_per_pixel(const Scene& scene) {
    const ScreenPixel middle = scene.box.at(0.5, 0.5);
    const auto here = scene.to_position(middle);
    const auto right = scene.to_position({middle.x + 1, middle.y});
    const auto below = scene.to_position({middle.x, middle.y + 1});
    if (!here || !right || !below) return std::nullopt;
    const auto east = [&](const Position& position) {
        return longitude_near(position.longitude, here->longitude) - here->longitude;
    };
    return Position{std::hypot(right->latitude - here->latitude, below->latitude - here->latitude),
                    std::hypot(east(*right), east(*below))};
}

// Draws a piece of a meridian or parallel, with its label at its start.
void draw_line(Painter& painter, const Scene& scene, Position from, Position to, const std::string& text,
               ScreenPixel anchor) {
    std::vector<Position> positions;
    for (int i = 0; i <= kPieces; ++i) {
        const double t = static_cast<double>(i) / kPieces;
        positions.push_back({from.latitude + t * (to.latitude - from.latitude),
                             from.longitude + t * (to.longitude - from.longitude)});
    }
    for (const std::vector<ScreenPixel>& line : lines_on_screen(scene, positions)) {
        const auto parts = parts_inside(scene.box, line);
        if (parts.empty()) continue;
        painter.line(line, scene.theme.grid);
        painter.label(parts.front().first, text, {scene.theme.paper, anchor, 12}, Rank::kGrid);
    }
}

// Calls with each multiple of a step in a range.
template <class Use>
void for_each_line(const Range& range, double minutes, Use use) {
    const double first = std::ceil(range.least * 60 / minutes);
    const double last = std::floor(range.greatest * 60 / minutes);
    if (!(last - first < kMostLines)) return;
    for (double k = first; k <= last; ++k)
        use(k * minutes / 60);
}

}  // namespace

double grid_step(double minutes) {
    const double* const step = std::lower_bound(std::begin(kSteps), std::end(kSteps), minutes);
    return step != std::end(kSteps) ? *step : *std::rbegin(kSteps);
}

void draw_grid(Painter& painter, const Scene& scene) {
    const auto pixel = degrees_per_pixel(scene);
    const auto centre = scene.to_position(scene.box.at(0.5, 0.5));
    if (!pixel || !centre) return;
    Range lat;
    Range lon;
    for (int i = 0; i < (kProbes + 1) * (kProbes + 1); ++i) {
        const int column = i % (kProbes + 1);
        const int row = i / (kProbes + 1);
        const auto position = scene.to_position(scene.box.at(1.0 / kProbes * column, 1.0 / kProbes * row));
        if (!position) return;
        lat.include(position->latitude);
        lon.include(longitude_near(position->longitude, centre->longitude));
    }
    const double gap = kLeastGap * 60 * painter.scale();

    for_each_line(lat, grid_step(pixel->latitude * gap), [&](double value) {
        draw_line(painter, scene, {value, lon.least}, {value, lon.greatest}, format_latitude(value),
                  {0, 0.5});
    });
    for_each_line(lon, grid_step(pixel->longitude * gap), [&](double value) {
        draw_line(painter, scene, {lat.greatest, value}, {lat.least, value}, format_longitude(value),
                  {0.5, 0});
    });
}

}  // namespace viewer
