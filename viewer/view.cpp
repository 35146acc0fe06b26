#include "viewer/view.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

#include <viewer/scale_bar.h>
#include <viewer/status.h>
#include <viewer/strip_drawer.h>

namespace viewer {

using zellap10::plotter::CatalogueEntry;

namespace {

constexpr int kKeyPan = 96;      // window pixels
constexpr double kDragFrom = 4;  // window pixels; a button that moves less is a click

constexpr std::size_t kCacheBytes = std::size_t{256} << 20;
constexpr std::size_t kCacheWindows = 6;  // that the cache holds at the least

double apart(ScreenPixel a, ScreenPixel b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

}  // namespace

View::View(ChartList charts, Options options)
    : options_(std::move(options)),
      charts_(std::move(charts)),
      tiles_(kCacheBytes,
             {options_.workers, [this] { return strip_drawer(charts_.paths); }, options_.on_change}) {
    show_chart(0);
}

void View::show_chart(int index) {
    if (chart_ != nullptr) cameras_[current_] = camera_;
    const ScreenSize window = camera_.window();
    current_ = index;
    chart_ = std::make_unique<Chart>(charts_.paths[static_cast<std::size_t>(index)]);
    const auto before = cameras_.find(index);
    if (before != cameras_.end()) {
        camera_ = before->second;
        camera_.resize(window);
    } else {
        camera_.show(chart_->size());
    }
    pressed_.reset();
}

void View::resize(ScreenSize window) {
    const bool first = window_.width == 0;
    window_ = window;
    camera_.resize({window.width, window.height - kBarHeight});
    if (first) camera_.show(chart_->size());
    const auto bytes =
        sizeof(Argb) * static_cast<std::size_t>(window.width) * static_cast<std::size_t>(window.height);
    tiles_.set_room(std::max(kCacheBytes, kCacheWindows * bytes));
}

void View::press(Button button, ScreenPixel spot) {
    message_.clear();
    pointer_ = spot;
    if (spot.y >= camera_.window().height) return;
    if (button == Button::kRight) return take_waypoint_off();
    pressed_ = spot;
    dragging_ = false;
}

void View::move(ScreenPixel spot) {
    if (pressed_ && (dragging_ || apart(*pressed_, spot) >= kDragFrom)) {
        dragging_ = true;
        const double right = std::round(spot.x - pressed_->x);
        const double down = std::round(spot.y - pressed_->y);
        camera_.pan(static_cast<int>(right), static_cast<int>(down));
        pressed_ = ScreenPixel{pressed_->x + right, pressed_->y + down};
    }
    pointer_ = spot;
}

void View::release(Button button, ScreenPixel spot) {
    if (button != Button::kLeft || !pressed_) return;
    move(spot);
    pressed_.reset();
    if (!dragging_) add_waypoint(spot);
}

void View::leave() {
    pointer_.reset();
}

// Goes to the chart or inset that shows most of what stands in the middle of the window, about as large as it
// is now.
void View::show_best() {
    const auto place = chart_->place_at(camera_.to_chart(camera_.middle()));
    if (!place) {
        message_ = "There is no position in the middle of the window.";
        return;
    }
    const Position middle = place->wgs84();
    const double metres_a_pixel = zellap10::plotter::kMetresPerNauticalMile * miles_a_pixel(camera_, *chart_);
    for (const CatalogueEntry* entry : charts_.catalogue.covering(middle)) {
        if (go_to(*entry, middle, metres_a_pixel)) return;
    }
    message_ = "No chart of the list covers the middle of the window.";
}

// Shows a position on a chart of the catalogue; false where that does not open.
bool View::go_to(const CatalogueEntry& entry, const Position& wgs84, double metres_a_pixel) {
    const auto path = std::find(charts_.paths.begin(), charts_.paths.end(), entry.path);
    const int index = static_cast<int>(path - charts_.paths.begin());
    if (index != current_) show_chart(index);
    const auto georeference = zellap10::plotter::georeference_of(entry, chart_->sheet);
    const auto pixel = georeference ? georeference->pixel_of(wgs84) : std::nullopt;
    if (!pixel || !entry.metres_per_pixel) return false;
    camera_.centre_on(*pixel, Camera::step_near(metres_a_pixel / *entry.metres_per_pixel));
    message_ = chart_->name + " is the best chart here.";
    return true;
}

void View::turn_wheel(int steps) {
    camera_.zoom(steps, pointer_.value_or(camera_.middle()));
}

void View::add_waypoint(ScreenPixel spot) {
    if (const auto place = chart_->place_at(camera_.to_chart(spot)))
        route_.push_back(place->wgs84());
    else
        message_ = "There is no position for a waypoint here.";
}

void View::take_waypoint_off() {
    if (!route_.empty()) route_.pop_back();
}

void View::do_command(Command command) {
    message_.clear();
    const int count = static_cast<int>(charts_.paths.size());
    const auto toggle = [](bool& flag) { flag = !flag; };
    switch (command) {
        case Command::kPanLeft:
            return camera_.pan(kKeyPan, 0);
        case Command::kPanRight:
            return camera_.pan(-kKeyPan, 0);
        case Command::kPanUp:
            return camera_.pan(0, kKeyPan);
        case Command::kPanDown:
            return camera_.pan(0, -kKeyPan);
        case Command::kCloser:
            return turn_wheel(1);
        case Command::kWider:
            return turn_wheel(-1);
        case Command::kWhole:
            return camera_.show(camera_.chart());
        case Command::kNext:
            return show_chart((current_ + 1) % count);
        case Command::kPrevious:
            return show_chart((current_ + count - 1) % count);
        case Command::kBest:
            return show_best();
        case Command::kUndo:
            return take_waypoint_off();
        case Command::kClear:
            return route_.clear();
        case Command::kGrid:
            return toggle(shows_grid_);
        case Command::kPoints:
            return toggle(shows_points_);
        case Command::kLight:
            light_ = static_cast<ColourScheme>((static_cast<int>(light_) + 1) % 3);
            return;
        case Command::kSave:
            return save(free_path());
        case Command::kHelp:
            return toggle(shows_help_);
        case Command::kLeave:
            shows_help_ = false;
            return;
        case Command::kQuit:
            over_ = true;
            return;
        case Command::kNone:
            return;
    }
}

// A path for a picture of this chart at which no file stands yet.
std::string View::free_path() const {
    const std::filesystem::path chart(chart_->path);
    for (int i = 1;; ++i) {
        const std::filesystem::path path = std::filesystem::path(options_.save_folder) /
                                           (chart.stem().string() + "-" + std::to_string(i) + ".png");
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored)) return path.string();
    }
}

void View::save(const std::string& path) {
    save_path_ = path;
}

}  // namespace viewer
