#include <zellap10/plotter/inset_area.h>
#include <zellap10/plotter/opened_chart.h>
#include <zellap10/plotter/sheet.h>

namespace zellap10::plotter {

namespace {

// The fit, outlines in two datums, and the area with its bands.
std::size_t bytes_of(const Georeference& georeference) {
    constexpr std::size_t kFit = 6000;
    constexpr std::size_t kPixelCorner = 64;
    return kFit + 2 * sizeof(Position) * georeference.outline().corners.size() +
           2 * kPixelCorner * georeference.pixel_outline().corners().size();
}

}  // namespace

OpenedChart::OpenedChart(CZellap& opened) : size(opened.GetDocumentSize()), colours(colours_of(opened)) {
    const CGEORec& base = *opened.GetBaseGeoRec();
    const Sheet sheet(base, size);
    std::vector<PixelOutline> holes;
    for (const CGEORec* inset : base.Insets)
        holes.push_back(inset_area(*inset));
    const double width = size.cx;
    const double height = size.cy;
    if (sheet.chart())
        chart =
            Part{*sheet.chart(), {sheet.chart()->pixel_outline(), Holes(std::move(holes)), width, height}};
    bytes = sizeof *this + (sheet.chart() ? bytes_of(*sheet.chart()) : 0);
    // An inset on an inset hides it.
    std::vector<PixelOutline> outlines;
    for (const std::optional<Georeference>& inset : sheet.insets()) {
        if (inset) outlines.push_back(inset->pixel_outline());
    }
    const Holes all(std::move(outlines));
    for (const std::optional<Georeference>& inset : sheet.insets()) {
        std::optional<Part>& part = insets.emplace_back();
        if (!inset) continue;
        bytes += bytes_of(*inset);
        const PixelOutline& outline = inset->pixel_outline();
        part = Part{*inset, {outline, all.smaller_than(outline.area()), width, height}};
    }
}

const OpenedChart::Part* OpenedChart::part(std::optional<int> inset) const {
    if (!inset) return chart ? &*chart : nullptr;
    const auto index = static_cast<std::size_t>(*inset);
    return index < insets.size() && insets[index] ? &*insets[index] : nullptr;
}

}  // namespace zellap10::plotter
