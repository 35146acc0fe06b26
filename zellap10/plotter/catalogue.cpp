#include "zellap10/plotter/catalogue.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/chart/zellap.h>

namespace zellap10::plotter {

namespace {

bool has_georeference_file(const std::string& path) {
    std::error_code ignored;
    const std::string georeference = chart::georeference_path(path);
    return georeference != path && std::filesystem::exists(georeference, ignored);
}

}  // namespace

std::optional<Georeference> georeference_of(const CatalogueEntry& entry, const Sheet& sheet) {
    if (!entry.inset) return sheet.chart();
    const auto index = static_cast<std::size_t>(*entry.inset);
    return index < sheet.insets().size() ? sheet.insets()[index] : std::nullopt;
}

bool Catalogue::add_file(const std::string& path) {
    CZellap chart;
    if (chart.OpenZellap(path.c_str(), 1) == 0) return false;
    if (chart.GetDocumentSize().cx <= 0 || chart.GetDocumentSize().cy <= 0) return false;
    const std::size_t before = entries_.size();
    const auto add_record = [&](const CGEORec& record, std::optional<int> inset) {
        Outline outline = outline_of(record);
        const std::optional<Extent> extent = outline.extent();
        if (!extent) return;
        std::string name(record.Name);
        if (name.empty() && !inset) name = chart.ChartName;
        add({path, inset, std::move(name), metres_per_pixel_of(record), std::move(outline), *extent});
    };
    const CGEORec& base = *chart.GetBaseGeoRec();
    add_record(base, {});
    int number = 0;
    for (const CGEORec* inset : base.Insets)
        add_record(*inset, number++);
    return entries_.size() > before;
}

FolderReport Catalogue::add_folder(const std::string& path) {
    const FolderFiles files = files_below(path);
    FolderReport report{0, files.skipped_folders};
    for (const std::string& file : files.paths)
        report.added += has_georeference_file(file) && add_file(file) ? 1 : 0;
    return report;
}

void Catalogue::add(CatalogueEntry entry) {
    auto added = std::make_unique<const CatalogueEntry>(std::move(entry));
    const auto is_finer = [](const auto& a, const auto& b) {
        return a->metres_per_pixel.value_or(HUGE_VAL) < b->metres_per_pixel.value_or(HUGE_VAL);
    };
    const auto place = std::upper_bound(entries_.begin(), entries_.end(), added, is_finer);
    entries_.insert(place, std::move(added));
}

template <class Covers>
Catalogue::Entries Catalogue::chosen(Covers covers) const {
    Entries found;
    for (const auto& entry : entries_) {
        if (covers(*entry)) found.push_back(entry.get());
    }
    return found;
}

Catalogue::Entries Catalogue::covering(Position position) const {
    return chosen([position](const CatalogueEntry& entry) {
        return entry.extent.contains(position) && entry.outline.covers(position);
    });
}

Catalogue::Entries Catalogue::overlapping(const Extent& extent) const {
    return chosen([&extent](const CatalogueEntry& entry) {
        return entry.extent.overlaps(extent) && entry.outline.overlaps(extent);
    });
}

Catalogue::Entries Catalogue::entries() const {
    return chosen([](const CatalogueEntry&) { return true; });
}

}  // namespace zellap10::plotter
