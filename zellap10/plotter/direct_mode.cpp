#include "zellap10/plotter/direct_mode.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include <zellap10/plotter/polygon.h>

namespace zellap10::plotter {

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

// Smaller steps, in pixels, are rounding error. So are larger ones that no longer shrink, on charts with very
// small pixels.
constexpr double kSmallestStep = 1e-7;
constexpr double kLargestRounding = 1e-3;
// The polynomials of charts are nearly flat, so that three or four passes are enough.
constexpr int kMaxPasses = 50;
// Pixels that differ by less are equal.
constexpr double kSamePixel = 1e-6;
// Starts are kept in a grid of cells, one in each, if there are more points than cells.
constexpr std::size_t kCellsAlong = 8;
constexpr std::size_t kMostStarts = kCellsAlong * kCellsAlong;

// Newton's method on the polynomials of a region.
std::optional<Vector> pixel_by(const CGEORec& record, int region, Vector position, Vector pixel) {
    const auto map = [&record, region](Vector at) { return position_by(record, region, at); };
    double before = kLargest;
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const Vector reached = map(pixel);
        const Vector step = jacobian_of(map, pixel, reached, 1.0).inverse(position - reached);
        pixel = pixel + step;
        const double size = distance(step, {});
        if (size <= kSmallestStep || (size < kLargestRounding && size >= before)) return pixel;
        if (!std::isfinite(size)) break;
        before = size;
    }
    return std::nullopt;
}

// How far past the seam a pixel of a region is, in pixels; negative within the region.
double past_seam(const CGEORec& record, int region, Vector pixel) {
    return region == 0 ? pixel.y - record.pwSplit : record.pwSplit - pixel.y;
}

// Puts a pixel that is past the seam by rounding error back into its region.
Vector held_in(const CGEORec& record, int region, Vector pixel) {
    if (past_seam(record, region, pixel) > kSamePixel || record.SelectPWpoly(pixel.x, pixel.y) == region)
        return pixel;
    return {pixel.x, region == 0 ? record.pwSplit : std::nextafter(record.pwSplit, kLargest)};
}

bool is_whole(Vector pixel) {
    return std::fabs(pixel.x - std::round(pixel.x)) < kSamePixel &&
           std::fabs(pixel.y - std::round(pixel.y)) < kSamePixel;
}

// The cell of a value between two bounds.
std::size_t cell_of(double value, double min, double max) {
    const double cell = (value - min) / (max - min) * static_cast<double>(kCellsAlong);
    return cell > 0.0 ? static_cast<std::size_t>(std::min(cell, kCellsAlong - 1.0)) : 0;
}

}  // namespace

Vector position_by(const CGEORec& record, int region, Vector pixel) {
    return {record.Evaluate(record.pwxPoly[region], pixel.x, pixel.y),
            record.Evaluate(record.pwyPoly[region], pixel.x, pixel.y)};
}

std::vector<NewtonStart> newton_starts(const CGEORec& record) {
    std::vector<NewtonStart> all;
    Polygon pixels;
    for (const CRefPoint* point : record.Points) {
        pixels.push_back(pixel_of_point(*point));
        all.push_back({pixels.back(), {as_fitted(record, point->Longitude), point->Latitude}});
    }
    if (all.size() <= kMostStarts) return all;
    const Box box = box_around(pixels);
    std::vector<NewtonStart> starts;
    bool is_taken[kMostStarts] = {};
    for (const NewtonStart& start : all) {
        const std::size_t cell = cell_of(start.pixel.x, box.min.x, box.max.x) * kCellsAlong +
                                 cell_of(start.pixel.y, box.min.y, box.max.y);
        if (!is_taken[cell]) starts.push_back(start);
        is_taken[cell] = true;
    }
    return starts;
}

Vector start_for(const CGEORec& record, const std::vector<NewtonStart>& starts, Vector position) {
    Vector pixel;
    record.wpxy(position.x, position.y, &pixel.x, &pixel.y);
    const int region = record.SelectPWpoly(pixel.x, pixel.y);
    double least = distance(position_by(record, region, pixel), position);
    for (const NewtonStart& start : starts) {
        const double apart = distance(start.position, position);
        if (apart < least || !std::isfinite(least)) {
            least = apart;
            pixel = start.pixel;
        }
    }
    return pixel;
}

std::optional<Vector> direct_pixel_of(const CGEORec& record, Vector position, Vector start) {
    const std::optional<Vector> low = pixel_by(record, 0, position, start);
    if (record.pwSplit == kLargest) return low;
    const std::optional<Vector> high = pixel_by(record, 1, position, start);
    if (!low || !high) return low ? low : high;

    const Vector pixels[] = {held_in(record, 0, *low), held_in(record, 1, *high)};
    const double past[] = {past_seam(record, 0, pixels[0]), past_seam(record, 1, pixels[1])};
    if (past[0] <= 0.0 && past[1] <= 0.0) {
        // Both are right. Callers ask for whole pixels more often than for others.
        if (is_whole(pixels[0]) != is_whole(pixels[1])) return pixels[is_whole(pixels[1]) ? 1 : 0];
        return pixels[record.SelectPWpoly(start.x, start.y)];
    }
    return pixels[past[1] < past[0] ? 1 : 0];
}

}  // namespace zellap10::plotter
