#include "zellap10/plotter/sheet.h"

#include <cmath>
#include <cstddef>

namespace zellap10::plotter {

Sheet::Sheet(const CGEORec& base, CSize size) : chart_(Georeference::from(base, size)) {
    for (const CGEORec* inset : base.Insets)
        insets_.push_back(Georeference::from(*inset));
}

std::optional<int> Sheet::inset_at(ChartPixel pixel) const {
    std::optional<int> found;
    double least = HUGE_VAL;
    for (std::size_t i = 0; i < insets_.size(); ++i) {
        if (!insets_[i] || !insets_[i]->pixel_outline().contains(pixel)) continue;
        const double area = insets_[i]->pixel_outline().area();
        if (area >= least) continue;
        least = area;
        found = static_cast<int>(i);
    }
    return found;
}

std::optional<Georeference> Sheet::georeference_at(ChartPixel pixel) const {
    const std::optional<int> inset = inset_at(pixel);
    return inset ? insets_[static_cast<std::size_t>(*inset)] : chart_;
}

bool Sheet::covers(Position position) const {
    if (!chart_ || !chart_->covers(position)) return false;
    const std::optional<ChartPixel> pixel = chart_->pixel_of(position);
    return pixel && !inset_at(*pixel);
}

}  // namespace zellap10::plotter
