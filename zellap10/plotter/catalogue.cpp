#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include <zellap10/chart/georeference_path.h>
#include <zellap10/chart/zellap.h>
#include <zellap10/platform/path_text.h>
#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/catalogue_state.h>
#include <zellap10/plotter/inset_area.h>

namespace zellap10::plotter {

namespace {

// Whether the georeference file of a path in a list exists. Most often it is next to it in alphabetical
// order.
bool has_georeference_file(const std::vector<std::string>& paths, std::size_t index) {
    const std::string& path = paths[index];
    const std::string georeference = chart::georeference_path(path);
    if (georeference == path) return false;
    if (index > 0 && paths[index - 1] == georeference) return true;
    if (index + 1 < paths.size() && paths[index + 1] == georeference) return true;
    std::error_code ignored;
    return std::filesystem::exists(platform::path_of(georeference), ignored);
}

std::vector<CatalogueEntry> entries_of(const std::string& path, const FileStamp& stamp) {
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
        entries.push_back({path, inset, std::move(name), metres_per_pixel_of(record), std::move(outline),
                           *extent, nullptr});
    };
    const CGEORec& base = *chart.GetBaseGeoRec();
    add_record(base, {});
    if (!entries.empty() && !base.Insets.IsEmpty())
        entries.front().hidden_areas = std::make_shared<const HiddenAreas>(path, stamp);
    int number = 0;
    for (const CGEORec* inset : base.Insets)
        add_record(*inset, number++);
    return entries;
}

bool is_inside(const Extent& part, const Extent& all) {
    return part.south >= all.south && part.north <= all.north &&
           degrees_east(part.west, all.west) + part.width <= all.width;
}

}  // namespace

std::optional<Georeference> georeference_of(const CatalogueEntry& entry, const Sheet& sheet) {
    if (!entry.inset) return sheet.chart();
    const auto index = static_cast<std::size_t>(*entry.inset);
    return index < sheet.insets().size() ? sheet.insets()[index] : std::nullopt;
}

const std::vector<Outline>& CatalogueEntry::hidden() const {
    static const std::vector<Outline> nothing;
    return hidden_areas != nullptr ? hidden_areas->areas() : nothing;
}

bool CatalogueEntry::shows(Position position) const {
    return extent.contains(position) && outline.covers(position) &&
           (hidden_areas == nullptr || !hidden_areas->contain(position));
}

Catalogue::Catalogue() : state_(std::make_unique<State>()) {}
Catalogue::~Catalogue() = default;
Catalogue::Catalogue(Catalogue&&) noexcept = default;
Catalogue& Catalogue::operator=(Catalogue&&) noexcept = default;

bool Catalogue::add_file(const std::string& path) {
    const FileStamp stamp = file_stamp(path);
    const auto loaded = state_->loaded.find(path);
    KnownFile known{stamp, nullptr};
    if (loaded != state_->loaded.end() && loaded->second.stamp == stamp) {
        known.entries = loaded->second.entries;
    } else {
        known.entries = std::make_shared<const std::vector<CatalogueEntry>>(entries_of(path, stamp));
        ++state_->opened;
    }
    for (const CatalogueEntry& entry : *known.entries) {
        state_->entries.emplace_back(known.entries, &entry);
        state_->index.add(entry.extent);
    }
    const bool has_entries = !known.entries->empty();
    state_->added.insert_or_assign(state_->added.end(), path, std::move(known));
    return has_entries;
}

void Catalogue::know(const Catalogue& other) {
    state_->loaded.insert(other.state_->added.begin(), other.state_->added.end());
}

FolderReport Catalogue::add_folder(const std::string& path) {
    const FolderFiles files = files_below(path);
    const int opened = state_->opened;
    FolderReport report{0, files.skipped_folders, 0};
    for (std::size_t i = 0; i < files.paths.size(); ++i)
        report.added += has_georeference_file(files.paths, i) && add_file(files.paths[i]) ? 1 : 0;
    report.opened = state_->opened - opened;
    return report;
}

template <class Covers>
Catalogue::Entries Catalogue::State::chosen(const Extent& extent, Covers covers) const {
    Entries found;
    for (const std::size_t number : index.candidates(extent)) {
        if (covers(*entries[number])) found.push_back(entries[number].get());
    }
    std::stable_sort(found.begin(), found.end(), [](const CatalogueEntry* a, const CatalogueEntry* b) {
        return a->metres_per_pixel.value_or(HUGE_VAL) < b->metres_per_pixel.value_or(HUGE_VAL);
    });
    return found;
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

Catalogue::Entries Catalogue::with_extent_in(const Extent& extent) const {
    return state_->chosen(extent,
                          [&extent](const CatalogueEntry& entry) { return entry.extent.overlaps(extent); });
}

Catalogue::Entries Catalogue::entries() const {
    return state_->chosen({-90.0, 90.0, -180.0, 360.0}, [](const CatalogueEntry&) { return true; });
}

}  // namespace zellap10::plotter
