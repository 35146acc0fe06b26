#include <algorithm>
#include <cstddef>
#include <utility>

#include <zellap10/plotter/holes.h>

namespace zellap10::plotter {

namespace {

constexpr std::size_t kMostBands = 256;

}  // namespace

// Horizontal bands of equal height, each with the outlines that may meet it.
struct Holes::State {
    std::vector<PixelOutline> outlines;
    double top = HUGE_VAL;
    double bottom = -HUGE_VAL;
    std::vector<std::vector<std::uint32_t>> bands;

    // Places outside and NaN belong to the first or the last band.
    [[nodiscard]] std::size_t band_of(double y) const {
        const double count = static_cast<double>(bands.size());
        const double band = (y - top) / (bottom - top) * count;
        return band > 0.0 ? static_cast<std::size_t>(std::min(band, count - 1.0)) : 0;
    }
};

Holes::Holes(std::vector<PixelOutline> outlines) {
    outlines.erase(std::remove_if(outlines.begin(), outlines.end(),
                                  [](const PixelOutline& outline) { return outline.corners().size() < 3; }),
                   outlines.end());
    if (outlines.empty()) return;
    auto state = std::make_shared<State>();
    state->outlines = std::move(outlines);
    for (const PixelOutline& outline : state->outlines) {
        state->top = std::min(state->top, outline.upper_left().y);
        state->bottom = std::max(state->bottom, outline.lower_right().y);
    }
    state->bands.resize(std::min(state->outlines.size() / 4 + 1, kMostBands));
    for (std::size_t i = 0; i < state->outlines.size(); ++i) {
        const std::size_t last = state->band_of(state->outlines[i].lower_right().y);
        for (std::size_t band = state->band_of(state->outlines[i].upper_left().y); band <= last; ++band)
            state->bands[band].push_back(static_cast<std::uint32_t>(i));
    }
    state_ = std::move(state);
}

Holes Holes::smaller_than(double area) const {
    Holes result = *this;
    result.limit_ = std::min(limit_, area);
    return result;
}

std::vector<const PixelOutline*> Holes::around(ChartPixel upper_left, ChartPixel lower_right) const {
    std::vector<const PixelOutline*> found;
    if (state_ == nullptr) return found;
    const std::size_t first = state_->band_of(upper_left.y);
    const std::size_t last = state_->band_of(lower_right.y);
    for (std::size_t band = first; band <= last; ++band) {
        for (const std::uint32_t index : state_->bands[band]) {
            const PixelOutline& outline = state_->outlines[index];
            const bool meets =
                outline.upper_left().x <= lower_right.x && outline.lower_right().x >= upper_left.x &&
                outline.upper_left().y <= lower_right.y && outline.lower_right().y >= upper_left.y;
            // Of several bands with the outline, the first counts.
            const bool is_new = std::max(first, state_->band_of(outline.upper_left().y)) == band;
            if (meets && is_new && outline.area() < limit_) found.push_back(&outline);
        }
    }
    return found;
}

bool Holes::contain(ChartPixel pixel) const {
    const std::vector<const PixelOutline*> near_pixel = around(pixel, pixel);
    return std::any_of(near_pixel.begin(), near_pixel.end(),
                       [pixel](const PixelOutline* outline) { return outline->contains(pixel); });
}

}  // namespace zellap10::plotter
