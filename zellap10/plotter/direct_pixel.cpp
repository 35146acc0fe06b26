#include "zellap10/plotter/direct_pixel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zellap10::plotter {

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

// Steps this small, in pixels, are the rounding of the polynomials; so are larger ones that shrink no more,
// on charts whose pixels are very small.
constexpr double kSmallestStep = 1e-7;
constexpr double kLargestRounding = 1e-3;
// Polynomials of charts are nearly flat: three or four passes lead to a pixel.
constexpr int kMaxPasses = 50;
// Pixels that differ by less are one.
constexpr double kSamePixel = 1e-6;

// Where the steps begin: at the pixel of wpxy, or at the reference point that lies nearer to the position,
// where wpxy errs by more than that.
Pair start_for(const CGEORec& record, Pair position) {
    Pair start;
    record.wpxy(position.first, position.second, &start.first, &start.second);
    const int region = record.SelectPWpoly(start.first, start.second);
    double least = distance(position_by(record, region, start), position);
    for (const CRefPoint* point : record.Points) {
        const double apart = distance({as_fitted(record, point->Longitude), point->Latitude}, position);
        if (apart < least || !std::isfinite(least)) {
            least = apart;
            start = pixel_of_point(*point);
        }
    }
    return start;
}

// Newton's steps on the polynomials of a region.
std::optional<Pair> pixel_by(const CGEORec& record, int region, Pair position, Pair pixel) {
    const auto map = [&record, region](Pair at) { return position_by(record, region, at); };
    double before = kLargest;
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const Pair reached = map(pixel);
        const Pair step = slopes_of(map, pixel, reached, 1.0).inverse(position - reached);
        pixel = pixel + step;
        const double size = distance(step, {});
        if (size <= kSmallestStep || (size < kLargestRounding && size >= before)) return pixel;
        if (!std::isfinite(size)) break;
        before = size;
    }
    return std::nullopt;
}

// How far a pixel that a region gave stands beyond the seam, in pixels; below 0 it stands within the region.
double beyond_seam(const CGEORec& record, int region, Pair pixel) {
    return region == 0 ? pixel.second - record.pwSplit : record.pwSplit - pixel.second;
}

// A pixel that stands beyond the seam by a rounding, put back into its region.
Pair held_in(const CGEORec& record, int region, Pair pixel) {
    const double beyond = beyond_seam(record, region, pixel);
    if (beyond > kSamePixel || record.SelectPWpoly(pixel.first, pixel.second) == region) return pixel;
    return {pixel.first, region == 0 ? record.pwSplit : std::nextafter(record.pwSplit, kLargest)};
}

bool is_whole(Pair pixel) {
    return std::fabs(pixel.first - std::round(pixel.first)) < kSamePixel &&
           std::fabs(pixel.second - std::round(pixel.second)) < kSamePixel;
}

}  // namespace

Pair position_by(const CGEORec& record, int region, Pair pixel) {
    return {record.Evaluate(record.pwxPoly[region], pixel.first, pixel.second),
            record.Evaluate(record.pwyPoly[region], pixel.first, pixel.second)};
}

std::optional<Pair> direct_pixel_of(const CGEORec& record, Pair position) {
    const Pair start = start_for(record, position);
    const std::optional<Pair> low = pixel_by(record, 0, position, start);
    if (record.pwSplit == kLargest) return low;
    const std::optional<Pair> high = pixel_by(record, 1, position, start);
    if (!low || !high) return low ? low : high;

    const Pair pixels[] = {held_in(record, 0, *low), held_in(record, 1, *high)};
    const double beyond[] = {beyond_seam(record, 0, pixels[0]), beyond_seam(record, 1, pixels[1])};
    if (beyond[0] <= 0.0 && beyond[1] <= 0.0) {
        // Both are right. Callers ask for whole pixels more often than for any others.
        if (is_whole(pixels[0]) != is_whole(pixels[1])) return pixels[is_whole(pixels[1]) ? 1 : 0];
        return pixels[record.SelectPWpoly(start.first, start.second)];
    }
    return pixels[beyond[1] < beyond[0] ? 1 : 0];
}

}  // namespace zellap10::plotter
