// What a view does with mouse, keys and fixes.

#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

#include <viewer/files.h>
#include <viewer/gpx.h>
#include <viewer/route_lines.h>
#include <viewer/view.h>
#include <zellap10/platform/angle.h>
#include <zellap10/plotter/parse_position.h>
#include <zellap10/plotter/progress.h>
#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr double kDragFrom = 4;      // pixels; a button that moves less is a click
constexpr double kTurnFrom = 2;      // degrees; smaller changes of the course turn nothing
constexpr double kLeastSpeed = 0.5;  // knots, below which a course means nothing
constexpr std::size_t kLongestText = 1000;

void remove_last_character(std::string& text) {
    while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
        text.pop_back();
    if (!text.empty()) text.pop_back();
}

}  // namespace

void View::press(Button button, ScreenPixel at, bool shift) {
    message_.clear();
    pointer_ = at;
    if (!is_on_chart(at)) return;
    if (button == Button::kLeft) drag_ = Drag{shift ? DragKind::kTurn : DragKind::kMove, at};
    if (!route_mode_ || (shift && button == Button::kLeft)) return;
    const Scene scene = scene_at(at);
    const auto waypoint = waypoint_at(scene, waypoints(), at, kReach * scale_);
    if (button == Button::kRight) {
        if (waypoint) route_.remove(*waypoint);
        route_changed_ = route_changed_ || waypoint;
    } else if (waypoint) {
        drag_ = Drag{DragKind::kWaypoint, at, *waypoint};
    } else if (const auto leg = leg_at(scene, waypoints(), at, kReach * scale_)) {
        drag_ = Drag{DragKind::kLeg, at, *leg};
    }
}

void View::move(ScreenPixel at) {
    if (drag_ && (drag_->moved || apart(drag_->from, at) >= kDragFrom * scale_)) drag_to(at);
    pointer_ = at;
}

void View::drag_to(ScreenPixel at) {
    const bool starts = !std::exchange(drag_->moved, true);
    const double right = std::round(at.x - drag_->from.x);
    const double down = std::round(at.y - drag_->from.y);
    if (drag_->kind == DragKind::kMove) {
        pan(right, down);
        drag_->from = {drag_->from.x + right, drag_->from.y + down};
    } else if (drag_->kind == DragKind::kTurn) {
        const ScreenPixel centre = middle();
        const auto angle = [&](ScreenPixel p) { return std::atan2(p.y - centre.y, p.x - centre.x); };
        turn((angle(drag_->from) - angle(at)) * zellap10::platform::RAD_TO_DEG);
        drag_->from = at;
    } else if (const auto place = scene_at(at).to_position(at)) {
        route_changed_ = true;
        if (drag_->kind == DragKind::kLeg) {
            route_.insert(drag_->index, {*place, ""});
            drag_->kind = DragKind::kWaypoint;
        } else if (starts) {
            route_.begin_drag(drag_->index);
        }
        route_.drag_to(*place);
    }
}

void View::release(Button button, ScreenPixel at) {
    if (button != Button::kLeft || !drag_) return;
    move(at);
    const Drag drag = *drag_;
    drag_.reset();
    route_.end_drag();
    if (!drag.moved && route_mode_) click(drag);
}

// A click on a waypoint does nothing.
void View::click(const Drag& drag) {
    if (drag.kind != DragKind::kMove && drag.kind != DragKind::kLeg) return;
    const auto place = scene_at(drag.from).to_position(drag.from);
    if (!place) {
        message_ = "There is no position for a waypoint here.";
        return;
    }
    route_changed_ = true;
    if (drag.kind == DragKind::kLeg)
        route_.insert(drag.index, {*place, ""});
    else
        route_.add({*place, ""});
}

void View::undo() {
    if (!route_.undo()) message_ = "There is nothing to undo.";
    route_changed_ = true;
}

void View::clear_route() {
    route_changed_ = route_changed_ || !waypoints().empty();
    route_.clear();
    target_ = 1;
}

void View::ask(const char* question, std::string (View::*enter)(const std::string&),
               const std::string& text) {
    drag_.reset();
    prompt_ = Prompt{question, enter, text, ""};
}

void View::type(const std::string& text) {
    if (prompt_ && prompt_->text.size() + text.size() <= kLongestText) prompt_->text += text;
}

// While something is typed, keys belong to the text.
void View::edit_prompt(const std::string& key) {
    if (key == "Backspace") remove_last_character(prompt_->text);
    if (key == "Delete") prompt_->text.clear();
    if (key == "Escape") prompt_.reset();
    if (key != "Return") return;
    prompt_->reason = (this->*prompt_->enter)(prompt_->text);
    if (prompt_->reason.empty()) prompt_.reset();
}

// Returns why it cannot.
std::string View::go_to(const std::string& text) {
    const auto parsed = parse_position(text);
    if (!parsed.position) return parsed.reason;
    user_moved_ = true;
    follows_ = false;
    message_ = format_position(*parsed.position);
    if (sheet_ && sheet_->georeferences().covers(*parsed.position)) {
        const auto pixel = sheet_->georeferences().chart()->pixel_of(*parsed.position);
        sheet_->show(*pixel, sheet_->viewport().reduction);
    } else {
        sheet_ = nullptr;
        show(*parsed.position, map_.metres_per_pixel());
    }
    return {};
}

std::string View::load_route(const std::string& path) {
    LoadedGpx loaded = load_gpx(path);
    if (!loaded.reason.empty()) return loaded.reason;
    route_.replace(std::move(loaded.waypoints));
    adopt_route_file(path);
    target_ = 1;
    message_ = "Loaded " +
               (loaded.routes > 1 ? "the first of " + std::to_string(loaded.routes) + " routes of " : "") +
               short_path(path);
    return {};
}

// A file that is neither new nor the one that was loaded or saved last is not overwritten.
std::string View::save_route(const std::string& path) {
    const std::filesystem::path wanted(path);
    std::error_code ignored;
    const bool is_own = path == route_path_ && route_stamp_ == file_stamp(path);
    const bool is_foreign = !is_own && std::filesystem::is_regular_file(wanted, ignored);
    const std::string target =
        is_foreign ? free_path(wanted.parent_path().string(), wanted.stem().string(), ".gpx") : path;
    std::string reason = save_gpx(target, waypoints());
    if (!reason.empty()) return reason;
    adopt_route_file(target);
    message_ = (is_foreign ? short_path(path) + " exists. " : "") + "Saved the route as " + target;
    return {};
}

void View::adopt_route_file(const std::string& path) {
    route_path_ = path;
    route_stamp_ = file_stamp(path);
    route_changed_ = false;
}

// A route that was not saved is saved under a new name, whatever ends the program.
void View::quit() {
    over_ = true;
    if (!route_changed_ || waypoints().empty()) return;
    const std::string reason = save_route(free_path(options_.route_folder, "route", ".gpx"));
    if (!reason.empty()) message_ = reason;
}

void View::save(const std::string& path) {
    save_path_ = path;
    save_failure_.clear();
    complete_ = false;
}

void View::set_receiver(std::unique_ptr<FixSource> receiver) {
    receiver_ = std::move(receiver);
    follows_ = true;
}

void View::look_for_fixes() {
    if (!receiver_) return;
    const FixNews news = receiver_->take();
    const bool is_first = !track_.last_fix() && !news.fixes.empty();
    const auto now = options_.now();
    for (const Fix& fix : news.fixes)
        track_.add(fix, now);
    lost_ = track_.is_lost(now);
    receiver_status_ = news.status;
    if (news.broken_lines > 0)
        receiver_status_ +=
            (news.status.empty() ? "" : ", ") + std::to_string(news.broken_lines) + " broken lines";
    if (news.fixes.empty()) return;
    const std::size_t next = advance_waypoint(track_.last_fix()->position, waypoints(), target_);
    if (next != target_) message_ = "Waypoint " + std::to_string(next) + " is reached.";
    target_ = next;
    if (is_first && !user_moved_) {
        const auto charts = list_.catalogue->covering(track_.last_fix()->position);
        user_moved_ = !charts.empty();
        show(track_.last_fix()->position,
             charts.empty() ? map_.metres_per_pixel()
                            : charts.front()->metres_per_pixel.value_or(map_.metres_per_pixel()));
    }
    follow();
}

void View::toggle_course_up() {
    course_up_ = !course_up_;
    if (!course_up_) return turn(-map_.course_up());
    follow();
}

// Brings the ship into the middle, by whole pixels, which is cheap to draw, and its course to the top.
void View::follow() {
    const auto& fix = track_.last_fix();
    if (!fix) return;
    if (course_up_ && fix->course && fix->speed.value_or(0) > kLeastSpeed &&
        std::abs(std::remainder(*fix->course - map_.course_up(), 360)) > kTurnFrom)
        map_ = map_.turned_to(*fix->course);
    if (!follows_ || drag_) return;
    const auto ship = map_.to_screen(fix->position);
    const ScreenPixel centre = middle();
    const Box around = map_scene(map_, theme_for(scheme_)).box.grown(map_.size().width);
    if (ship && around.contains(*ship))
        map_ = map_.moved_by(std::round(ship->x - centre.x), std::round(ship->y - centre.y));
    else
        show(fix->position, map_.metres_per_pixel());
}

}  // namespace viewer
