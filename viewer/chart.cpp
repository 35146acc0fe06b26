#include "viewer/chart.h"

#include <filesystem>

#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/trouble.h>

namespace viewer {

using zellap10::plotter::is_fitted;

namespace {

std::vector<Pixel> outline_on_chart(const CGEORec& record) {
    std::vector<Pixel> outline;
    for (const Position& corner : zellap10::plotter::outline_of(record).corners) {
        if (const auto pixel = zellap10::plotter::pixel_of(record, corner)) outline.push_back(*pixel);
    }
    return outline;
}

}  // namespace

Chart::Chart(const std::string& file) : path(file), name(std::filesystem::path(file).filename().string()) {
    auto chart = std::make_unique<CZellap>();
    if (!chart->OpenZellap(file.c_str(), 0)) {
        const auto fault = zellap10::plotter::trouble_with_chart(file.c_str());
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
    for (const CGEORec* record : zellap->GetBaseGeoRec()->Insets) {
        if (is_fitted(*record)) insets.push_back({record, outline_on_chart(*record)});
    }
    if (base() != nullptr) return;
    const auto fault = zellap10::plotter::trouble_with_georeference(file.c_str());
    trouble = fault ? fault->text : "Its georeference file has no points that a fit could use.";
}

Size Chart::size() const {
    if (!is_open()) return {};
    const CSize size = zellap->GetDocumentSize();
    return {size.cx, size.cy};
}

const CGEORec* Chart::base() const {
    if (!is_open() || !is_fitted(*zellap->GetBaseGeoRec())) return nullptr;
    return zellap->GetBaseGeoRec();
}

std::optional<Place> Chart::place_at(Pixel pixel) const {
    if (!is_open()) return std::nullopt;
    const CGEORec& record = zellap10::plotter::record_at(*zellap->GetBaseGeoRec(), pixel);
    const auto position = zellap10::plotter::position_of(record, pixel);
    if (!position) return std::nullopt;
    return Place{&record, *position};
}

}  // namespace viewer
