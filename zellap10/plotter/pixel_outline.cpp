#include "zellap10/plotter/pixel_outline.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include <zellap10/plotter/polygon.h>

namespace zellap10::plotter {

namespace {

constexpr std::size_t kCornersPerRun = 64;
constexpr std::size_t kEdgesPerBand = 4;
constexpr std::size_t kMostBandsPerEdge = 8;  // on average, which bounds the memory

Vector vector_of(ChartPixel pixel) {
    return {pixel.x, pixel.y};
}

}  // namespace

PixelOutline::PixelOutline(std::vector<ChartPixel> corners) : corners_(std::move(corners)) {
    if (corners_.empty()) return;
    Polygon polygon;
    for (const ChartPixel corner : corners_)
        polygon.push_back(vector_of(corner));
    const Box box = box_around(polygon);
    upper_left_ = {box.min.x, box.min.y};
    lower_right_ = {box.max.x, box.max.y};
    area_ = area_of(polygon);

    make_bands();
    make_runs();
}

void PixelOutline::make_runs() {
    for (std::size_t i = 0; i < corners_.size(); ++i) {
        const ChartPixel corner = corners_[i];
        if (i % kCornersPerRun == 0) runs_.push_back({corner, corner});
        Run& run = runs_.back();
        run.upper_left = {std::min(run.upper_left.x, corner.x), std::min(run.upper_left.y, corner.y)};
        run.lower_right = {std::max(run.lower_right.x, corner.x), std::max(run.lower_right.y, corner.y)};
    }
}

std::vector<ChartPixel> PixelOutline::corners_around(ChartPixel box_upper_left,
                                                     ChartPixel box_lower_right) const {
    std::vector<ChartPixel> result;
    unsigned sides = 0;  // of the box on which all corners of the runs before are
    for (std::size_t i = 0; i < runs_.size(); ++i) {
        const Run& run = runs_[i];
        const unsigned run_sides = (run.lower_right.x < box_upper_left.x ? 1U : 0U) |
                                   (run.upper_left.x > box_lower_right.x ? 2U : 0U) |
                                   (run.lower_right.y < box_upper_left.y ? 4U : 0U) |
                                   (run.upper_left.y > box_lower_right.y ? 8U : 0U);
        const auto first = corners_.begin() + static_cast<std::ptrdiff_t>(i * kCornersPerRun);
        const auto end = corners_.begin() +
                         static_cast<std::ptrdiff_t>(std::min((i + 1) * kCornersPerRun, corners_.size()));
        if ((sides & run_sides) != 0) {
            result.back() = *(end - 1);
            sides &= run_sides;
        } else if (run_sides != 0) {
            result.insert(result.end(), {*first, *(end - 1)});
            sides = run_sides;
        } else {
            result.insert(result.end(), first, end);
            sides = 0;
        }
    }
    return result;
}

void PixelOutline::make_bands() {
    // Fewer bands are tried until the number of their edges is bounded.
    const std::size_t count = corners_.size();
    std::size_t sum = 0;
    for (std::size_t bands = count / kEdgesPerBand + 1;; bands /= 2) {
        first_of_band_.assign(bands + 1, 0);
        sum = 0;
        for (std::size_t edge = 0; edge < count; ++edge)
            sum += bands_of(edge).last - bands_of(edge).first + 1;
        if (bands == 1 || sum <= kMostBandsPerEdge * count) break;
    }
    // Counting sort of the edges by their bands.
    edges_.resize(sum);
    for (std::size_t edge = 0; edge < count; ++edge) {
        const Bands bands = bands_of(edge);
        for (std::size_t band = bands.first; band <= bands.last; ++band)
            ++first_of_band_[band + 1];
    }
    std::partial_sum(first_of_band_.begin(), first_of_band_.end(), first_of_band_.begin());
    std::vector<std::size_t> next = first_of_band_;
    for (std::size_t edge = 0; edge < count; ++edge) {
        const Bands bands = bands_of(edge);
        for (std::size_t band = bands.first; band <= bands.last; ++band)
            edges_[next[band]++] = static_cast<std::uint32_t>(edge);
    }
}

PixelOutline::Bands PixelOutline::bands_of(std::size_t edge) const {
    const double y = corners_[edge].y;
    const double next_y = corners_[(edge + 1) % corners_.size()].y;
    return {band_of(std::min(y, next_y)), band_of(std::max(y, next_y))};
}

// Rows outside the box belong to the first or the last band.
std::size_t PixelOutline::band_of(double y) const {
    const double bands = static_cast<double>(first_of_band_.size() - 1);
    const double band = (y - upper_left_.y) / (lower_right_.y - upper_left_.y) * bands;
    return band > 0.0 ? static_cast<std::size_t>(std::min(band, bands - 1.0)) : 0;
}

bool PixelOutline::contains(ChartPixel pixel) const {
    if (corners_.size() < 3 || !(pixel.x >= upper_left_.x && pixel.x <= lower_right_.x) ||
        !(pixel.y >= upper_left_.y && pixel.y <= lower_right_.y)) {
        return false;
    }
    const std::size_t band = band_of(pixel.y);
    ContainsTest test(vector_of(pixel));
    for (std::size_t i = first_of_band_[band]; i < first_of_band_[band + 1]; ++i) {
        const std::size_t edge = edges_[i];
        test.add_edge(vector_of(corners_[edge]), vector_of(corners_[(edge + 1) % corners_.size()]));
    }
    return test.contains();
}

}  // namespace zellap10::plotter
