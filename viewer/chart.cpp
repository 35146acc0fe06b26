#include "viewer/chart.h"

#include <filesystem>

#include <zellap10/plotter/diagnosis.h>

namespace viewer {

Chart::Chart(const std::string& file) : path(file), name(std::filesystem::path(file).filename().string()) {
    auto chart = std::make_unique<CZellap>();
    if (!chart->OpenZellap(file.c_str(), 0)) {
        const auto fault = zellap10::plotter::diagnose_chart(file);
        trouble = fault ? fault->text : "There is not enough memory for it.";
        return;
    }
    const CSize size = chart->GetDocumentSize();
    if (size.cx < 1 || size.cy < 1) {
        trouble = "It has no picture.";
        return;
    }
    zellap = std::move(chart);
    if (zellap->ChartName[0] != '\0') name = zellap->ChartName;
    sheet = Sheet(record(), size);
    if (sheet.chart()) return;
    const auto fault = zellap10::plotter::diagnose_georeference(file);
    trouble = fault ? fault->text : "Its georeference file has no points that a fit could use.";
}

ScreenSize Chart::size() const {
    if (!is_open()) return {};
    const CSize size = zellap->GetDocumentSize();
    return {size.cx, size.cy};
}

const CGEORec& Chart::record(std::optional<int> inset) const {
    const CGEORec& base = *zellap->GetBaseGeoRec();
    return inset ? **(base.Insets.begin() + *inset) : base;
}

std::optional<Place> Chart::place_at(ChartPixel pixel) const {
    const std::optional<int> inset = sheet.inset_at(pixel);
    const auto georeference = sheet.georeference_at(pixel);
    const auto position = georeference ? georeference->chart_datum_position_of(pixel) : std::nullopt;
    if (!position) return std::nullopt;
    return Place{&record(inset), inset, *georeference, *position};
}

}  // namespace viewer
