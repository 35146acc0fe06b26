#include "viewer/view.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

#include <zellap10/platform/angle.h>
#include <zellap10/plotter/diagnosis.h>
#include <zellap10/plotter/text.h>
#include <zellap10/plotter/web_mercator.h>

namespace viewer {

namespace {

constexpr double kWheelFactor = 1.25;      // per step
constexpr double kClosest = 0.02;          // metres per pixel
constexpr double kWidest = 50000;          // metres per pixel
constexpr double kTopmostReduction = 4.5;  // past which the quilt shows a coarser chart

}  // namespace

View::View(const std::vector<std::string>& charts, Options options)
    : options_(std::move(options)),
      map_({0, 0}, kWidest, {}),
      route_path_((std::filesystem::path(options_.route_folder) / "route.gpx").string()),
      lister_(charts, options_.on_change),
      quilt_(list_.catalogue,
             {Quilt::Options().memory_bytes, options_.workers, options_.workers, options_.on_change}) {
    if (options_.route_path.empty()) return;
    route_path_ = options_.route_path;
    std::error_code ignored;
    if (std::filesystem::exists(route_path_, ignored)) message_ = load_route(route_path_);
}

View::~View() {
    lister_.stop();
    if (receiver_) receiver_->stop();
    if (sheet_) sheet_->stop();
}

ScreenPixel View::middle() const {
    return {(map_.size().width - 1) / 2.0, (map_.size().height - 1) / 2.0};
}

void View::resize(ScreenSize window, double scale) {
    window_ = window;
    scale_ = scale;
    const ScreenSize part{window.width, window.height - static_cast<int>(kBarHeight * scale)};
    map_ = map_.resized(part);
    if (sheet_) sheet_->resize(part);
    if (!user_moved_) show_first();
}

// The map, or on a sheet the inset or chart that owns the pixel.
Scene View::scene_at(ScreenPixel at) const {
    const Theme& theme = theme_for(scheme_);
    if (!sheet_) return map_scene(map_, theme);
    const auto georeference = sheet_->georeferences().georeference_at(sheet_->viewport().to_chart(at));
    const Box box = map_scene(map_, theme).box;
    if (georeference) return sheet_scene(*georeference, sheet_->viewport(), box, theme);
    return {[](Position) { return std::nullopt; }, [](ScreenPixel) { return std::nullopt; }, 0, box, theme};
}

void View::show(Position centre, double metres_per_pixel) {
    map_ = MapView(centre, std::clamp(metres_per_pixel, kClosest, kWidest), map_.size(), map_.course_up());
}

// Shows all of some charts.
void View::show_charts(const Catalogue::Entries& entries) {
    if (entries.empty() || map_.size().width < 1 || map_.size().height < 1) return;
    double south = kWebMercatorLatitude, north = -south, west = 1e9, east = -west;
    for (const CatalogueEntry* entry : entries) {
        if (entry->inset) continue;
        const Extent& extent = entry->extent;
        const double left = longitude_near(extent.west, entries.front()->extent.west);
        south = std::min(south, extent.south);
        north = std::max(north, extent.north);
        west = std::min(west, left);
        east = std::max(east, left + extent.width);
    }
    if (!(south < north && west < east)) return;
    const auto turns = [](double latitude) {
        return mercator_turns(std::clamp(latitude, -kWebMercatorLatitude, kWebMercatorLatitude));
    };
    const double latitude = mercator_latitude((turns(south) + turns(north)) / 2);
    const double turns_per_pixel = 1.03 * std::max(std::min((east - west) / 360, 1.0) / map_.size().width,
                                                   (turns(north) - turns(south)) / map_.size().height);
    const double parallel = kMetresAround * std::cos(latitude * zellap10::platform::DEG_TO_RAD);
    show({latitude, (west + east) / 2}, parallel * turns_per_pixel);
}

// Shows all charts, or the complete sheet.
void View::show_all() {
    follows_ = false;
    if (sheet_) return sheet_->show_all();
    show_charts(list_.catalogue->entries());
}

// Shows the first chart and those that overlap it: charts of distant seas would be too small to be seen.
void View::show_first() {
    for (const CatalogueEntry* entry : list_.catalogue->entries()) {
        if (entry->path == list_.first && !entry->inset)
            return show_charts(list_.catalogue->overlapping(entry->extent));
    }
}

void View::pan(double right, double down) {
    user_moved_ = true;
    if (sheet_) return sheet_->pan(right, down);
    follows_ = false;
    map_ = map_.moved_by(-right, -down);
}

void View::zoom(double steps) {
    user_moved_ = true;
    const ScreenPixel about = follows_ || !pointer_ || !is_on_chart(*pointer_) ? middle() : *pointer_;
    if (sheet_)
        return sheet_->zoom(static_cast<int>(steps > 0 ? std::ceil(steps) : std::floor(steps)), about);
    const double wanted = std::pow(kWheelFactor, std::clamp(steps, -20.0, 20.0));
    const double now = map_.metres_per_pixel();
    map_ = map_.zoomed(now / std::clamp(now / wanted, kClosest, kWidest), about);
}

void View::turn(double degrees) {
    user_moved_ = true;
    course_up_ = false;
    if (!sheet_) map_ = map_.turned_to(map_.course_up() + degrees);
}

// Takes what the lister has found. A sheet is opened again, since its file may be another one now.
void View::look_for_charts() {
    auto list = lister_.take();
    if (!list) return;
    list_ = std::move(*list);
    quilt_.set_catalogue(list_.catalogue);
    shown_.clear();
    hides_problems_ = false;
    if (!user_moved_) show_first();
    if (!list_.complete) return;
    if (!sheet_ && list_.catalogue->entries().empty()) show_next_bare_chart();
    if (!sheet_) return;
    const ScreenSize size = sheet_->size();
    const Viewport viewport = sheet_->viewport();
    const std::string path = sheet_->path();
    if (!open_sheet(path)) return;
    if (sheet_->size().width == size.width && sheet_->size().height == size.height)
        sheet_->show(viewport.to_chart(middle()), viewport.reduction);
}

// Shows a chart of the quilt on top, at full size if it is: charts with more detail give way only past their
// limit.
void View::show_at_size_of(const CatalogueEntry& entry, const CatalogueEntry* finer, Position at) {
    double metres = entry.metres_per_pixel.value_or(map_.metres_per_pixel());
    if (finer != nullptr && finer->metres_per_pixel)
        metres = std::max(metres, kTopmostReduction * *finer->metres_per_pixel);
    show(at, metres);
    const std::string name = entry.name.empty() ? short_path(entry.path) : entry.name;
    message_ = name + ": " + size_text(metres / entry.metres_per_pixel.value_or(metres));
}

// Goes to the next chart of this place with more detail, for a step of -1, or with less.
void View::step_detail(int step) {
    user_moved_ = true;
    const auto place = scene_at(middle()).to_position(middle());
    if (!place) return sheet_ ? show_next_bare_chart() : void();
    std::vector<const CatalogueEntry*> charts;
    for (const CatalogueEntry* entry : list_.catalogue->covering(*place)) {
        if (entry->metres_per_pixel) charts.push_back(entry);
    }
    const auto present = [&](const CatalogueEntry* entry) {
        if (sheet_) return entry->path == sheet_->path() && !entry->inset;
        const auto hit = quilt_.at(map_, middle());
        return hit && hit->entry == entry;
    };
    const auto found = std::find_if(charts.begin(), charts.end(), present);
    const auto wanted = (found - charts.begin()) + (found == charts.end() ? -1 : step);
    if (wanted < 0 || wanted >= static_cast<std::ptrdiff_t>(charts.size())) {
        message_ = charts.empty() ? "There is no chart of this place."
                   : step < 0     ? "No chart of this place has more detail."
                                  : "No chart of this place has less detail.";
        return;
    }
    const CatalogueEntry* const entry = charts[static_cast<std::size_t>(wanted)];
    show_at_size_of(*entry, wanted > 0 ? charts[static_cast<std::size_t>(wanted - 1)] : nullptr, *place);
    if (!sheet_ || !open_sheet(entry->path)) return;
    const auto georeference = georeference_of(*entry, sheet_->georeferences());
    const auto pixel = georeference ? georeference->pixel_of(*place) : std::nullopt;
    if (pixel) sheet_->show(*pixel, 1);
}

bool View::open_sheet(const std::string& path) {
    sheet_ = PrintedSheet::open(path, options_.on_change);
    if (!sheet_) {
        const auto diagnosis = diagnose_chart(path);
        message_ = short_path(path) + ": " + (diagnosis ? diagnosis->text : "It has no pixels.");
        return false;
    }
    sheet_->resize(map_.size());
    sheet_->show_all();
    return true;
}

void View::show_next_bare_chart() {
    if (list_.bare_charts.empty()) return;
    const auto now =
        std::find(list_.bare_charts.begin(), list_.bare_charts.end(), sheet_ ? sheet_->path() : "");
    const bool is_last = now == list_.bare_charts.end() || now + 1 == list_.bare_charts.end();
    const std::string path = is_last ? list_.bare_charts.front() : *(now + 1);
    if (open_sheet(path)) message_ = sheet_->name() + " has no positions.";
}

// Changes between the map and the sheet in its middle, with the same place in the middle.
void View::toggle_sheet() {
    user_moved_ = true;
    if (sheet_) {
        const auto place = scene_at(middle()).to_position(middle());
        const auto& base = sheet_->georeferences().chart();
        const double metres = (base ? base->metres_per_pixel() : std::nullopt).value_or(0);
        if (place && metres > 0) show(*place, metres * sheet_->viewport().reduction);
        sheet_ = nullptr;
        return;
    }
    const auto hit = quilt_.at(map_, middle());
    if (!hit && list_.bare_charts.empty()) message_ = "There is no chart in the middle of the window.";
    if (!hit) return show_next_bare_chart();
    const double metres = hit->entry->metres_per_pixel.value_or(map_.metres_per_pixel());
    if (open_sheet(hit->entry->path)) sheet_->show(hit->pixel, map_.metres_per_pixel() / metres);
}

}  // namespace viewer
