#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/catalogue_state.h>
#include <zellap10/plotter/inset_area.h>

namespace zellap10::plotter {

namespace {

bool has_georeference_file(const std::string& path) {
    std::error_code ignored;
    const std::string georeference = chart::georeference_path(path);
    return georeference != path && std::filesystem::exists(georeference, ignored);
}

std::vector<CatalogueEntry> entries_of(const std::string& path) {
    CZellap chart;
    if (chart.OpenZellap(path.c_str(), 1) == 0) return {};
    const CSize size = chart.GetDocumentSize();
    if (size.cx <= 0 || size.cy <= 0) return {};
    std::vector<CatalogueEntry> entries;
    const auto add_record = [&](const CGEORec& record, std::optional<int> inset) {
        Outline outline = outline_of(record);
        const std::optional<Extent> extent = outline.extent();
        if (!extent) return;
        std::string name(record.Name);
        if (name.empty() && !inset) name = chart.ChartName;
        entries.push_back(
            {path, inset, std::move(name), metres_per_pixel_of(record), std::move(outline), *extent, {}});
    };
    CGEORec& base = *chart.GetBaseGeoRec();
    add_record(base, {});
    if (!entries.empty() && !base.Insets.IsEmpty()) entries.front().hidden = hidden_by_insets(base, size);
    int number = 0;
    for (const CGEORec* inset : base.Insets)
        add_record(*inset, number++);
    return entries;
}

bool is_inside(const Extent& part, const Extent& all) {
    return part.south >= all.south && part.north <= all.north &&
           degrees_east(part.west, all.west) + part.width <= all.width;
}

bool is_before(double a_metres, std::size_t a_number, double b_metres, std::size_t b_number) {
    return a_metres < b_metres || (a_metres == b_metres && a_number < b_number);
}

}  // namespace

std::optional<Georeference> georeference_of(const CatalogueEntry& entry, const Sheet& sheet) {
    if (!entry.inset) return sheet.chart();
    const auto index = static_cast<std::size_t>(*entry.inset);
    return index < sheet.insets().size() ? sheet.insets()[index] : std::nullopt;
}

bool CatalogueEntry::shows(Position position) const {
    return extent.contains(position) && outline.covers(position) &&
           std::none_of(hidden.begin(), hidden.end(),
                        [position](const Outline& part) { return part.covers(position); });
}

Catalogue::Catalogue() : state_(std::make_unique<State>()) {}
Catalogue::~Catalogue() = default;
Catalogue::Catalogue(Catalogue&&) noexcept = default;
Catalogue& Catalogue::operator=(Catalogue&&) noexcept = default;

bool Catalogue::add_file(const std::string& path) {
    const FileStamp stamp = file_stamp(path);
    const auto loaded = state_->loaded.find(path);
    KnownFile known{stamp, {}};
    if (loaded != state_->loaded.end() && loaded->second.stamp == stamp) {
        known.entries = loaded->second.entries;
    } else {
        known.entries = entries_of(path);
        ++state_->opened;
    }
    for (const CatalogueEntry& entry : known.entries) {
        const std::size_t number = state_->entries.size();
        state_->entries.push_back(std::make_unique<const State::Numbered>(State::Numbered{entry, number}));
        state_->index.add(entry.extent);
    }
    const bool has_entries = !known.entries.empty();
    state_->added[path] = std::move(known);
    return has_entries;
}

void Catalogue::know(const Catalogue& other) {
    state_->loaded.insert(other.state_->added.begin(), other.state_->added.end());
}

FolderReport Catalogue::add_folder(const std::string& path) {
    const FolderFiles files = files_below(path);
    const int opened = state_->opened;
    FolderReport report{0, files.skipped_folders, 0};
    for (const std::string& file : files.paths)
        report.added += has_georeference_file(file) && add_file(file) ? 1 : 0;
    report.opened = state_->opened - opened;
    return report;
}

template <class Covers>
Catalogue::Entries Catalogue::State::chosen(const Extent& extent, Covers covers) const {
    std::vector<const Numbered*> found;
    for (const std::size_t number : index.candidates(extent)) {
        if (covers(*entries[number])) found.push_back(entries[number].get());
    }
    std::sort(found.begin(), found.end(), [](const Numbered* a, const Numbered* b) {
        return is_before(a->metres_per_pixel.value_or(HUGE_VAL), a->number,
                         b->metres_per_pixel.value_or(HUGE_VAL), b->number);
    });
    return {found.begin(), found.end()};
}

Catalogue::Entries Catalogue::covering(Position position) const {
    const Extent extent{position.latitude, position.latitude, normalize_longitude(position.longitude), 0.0};
    return state_->chosen(extent, [position](const CatalogueEntry& entry) { return entry.shows(position); });
}

Catalogue::Entries Catalogue::overlapping(const Extent& extent) const {
    return state_->chosen(extent, [&extent](const CatalogueEntry& entry) {
        return entry.extent.overlaps(extent) &&
               (is_inside(entry.extent, extent) || entry.outline.overlaps(extent));
    });
}

Catalogue::Entries Catalogue::entries() const {
    return state_->chosen({-90.0, 90.0, -180.0, 360.0}, [](const CatalogueEntry&) { return true; });
}

}  // namespace zellap10::plotter
