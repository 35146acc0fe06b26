#include <zellap10/plotter/inset_area.h>
#include <zellap10/plotter/opened_chart.h>
#include <zellap10/plotter/sheet.h>

namespace zellap10::plotter {

OpenedChart::OpenedChart(CZellap& opened) : size(opened.GetDocumentSize()), colours(colours_of(opened)) {
    const CGEORec& base = *opened.GetBaseGeoRec();
    const Sheet sheet(base, size);
    std::vector<PixelOutline> holes;
    for (const CGEORec* inset : base.Insets)
        holes.push_back(inset_area(*inset));
    const double width = size.cx;
    const double height = size.cy;
    if (sheet.chart())
        chart = Part{*sheet.chart(), {sheet.chart()->pixel_outline(), std::move(holes), width, height}};
    for (const std::optional<Georeference>& inset : sheet.insets()) {
        std::optional<Part>& part = insets.emplace_back();
        if (!inset) continue;
        part = Part{*inset, {inset->pixel_outline(), {}, width, height}};
        // An inset on an inset hides it.
        for (const std::optional<Georeference>& other : sheet.insets()) {
            if (other && other->pixel_outline().area() < inset->pixel_outline().area())
                part->area.holes.push_back(other->pixel_outline());
        }
    }
}

const OpenedChart::Part* OpenedChart::part(std::optional<int> inset) const {
    if (!inset) return chart ? &*chart : nullptr;
    const auto index = static_cast<std::size_t>(*inset);
    return index < insets.size() && insets[index] ? &*insets[index] : nullptr;
}

}  // namespace zellap10::plotter
