#include "zellap10/plotter/catalogue.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/navigation/course.h>
#include <zellap10/plotter/mile.h>

namespace zellap10::plotter {

namespace {

namespace fs = std::filesystem;

double pixels_between(const CRefPoint& a, const CRefPoint& b) {
    return std::hypot(static_cast<double>(a.X) - b.X, static_cast<double>(a.Y) - b.Y);
}

// Metres a pixel over the longest line from the first point; infinite where there is none.
double detail_of(const CRefPointList& points) {
    double metres = std::numeric_limits<double>::infinity();
    double longest = 0.0;
    for (const CRefPoint* point : points) {
        const CRefPoint& first = **points.begin();
        const double pixels = pixels_between(first, *point);
        if (!(pixels > longest)) continue;
        longest = pixels;
        metres = kMetresOfMile *
                 m_distance(first.Latitude, first.Longitude, point->Latitude, point->Longitude) / pixels;
    }
    return std::isfinite(metres) ? metres : std::numeric_limits<double>::infinity();
}

bool is_chart_in_folder(const fs::directory_entry& entry, const std::string& path) {
    std::error_code ignored;
    const std::string georeference = chart::georeference_path(path);
    return entry.is_regular_file(ignored) && georeference != path && fs::exists(georeference, ignored);
}

// The files with a georeference file beside them, in this folder and below it, by the alphabet. Names that
// the system cannot put into text are refused by an exception; such a file could not be opened.
std::vector<std::string> charts_below(const std::string& folder) {
    std::vector<std::string> paths;
    try {
        std::error_code error;
        fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
        for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
            try {
                std::string path = entry->path().string();
                if (is_chart_in_folder(*entry, path)) paths.push_back(std::move(path));
            } catch (const std::system_error&) {
                continue;
            }
        }
    } catch (const std::system_error&) {
        return {};
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace

const CGEORec* record_of(const CatalogueEntry& entry, const CGEORec& base) {
    if (entry.inset < 0) return &base;
    return entry.inset < base.Insets.GetCount() ? *(base.Insets.begin() + entry.inset) : nullptr;
}

bool Catalogue::add_file(const std::string& path) {
    CZellap chart;
    if (chart.OpenZellap(path.c_str(), 1) == 0) return false;
    if (chart.GetDocumentSize().cx <= 0 || chart.GetDocumentSize().cy <= 0) return false;
    const std::size_t before = entries_.size();
    const auto add_record = [&](const CGEORec& record, int inset) {
        Outline outline = wgs84_outline_of(record);
        const std::optional<Extent> extent = outline.extent();
        if (!extent) return;
        std::string name(record.Name);
        if (name.empty() && inset < 0) name = chart.ChartName;
        add({path, inset, std::move(name), detail_of(record.Points), std::move(outline), *extent});
    };
    const CGEORec& base = *chart.GetBaseGeoRec();
    add_record(base, -1);
    int number = 0;
    for (const CGEORec* inset : base.Insets)
        add_record(*inset, number++);
    return entries_.size() > before;
}

int Catalogue::add_folder(const std::string& path) {
    int added = 0;
    for (const std::string& file : charts_below(path))
        added += add_file(file) ? 1 : 0;
    return added;
}

void Catalogue::add(CatalogueEntry entry) {
    auto added = std::make_unique<const CatalogueEntry>(std::move(entry));
    const auto is_finer = [](const auto& a, const auto& b) {
        return a->metres_per_pixel < b->metres_per_pixel;
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
