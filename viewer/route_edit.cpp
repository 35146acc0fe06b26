#include "viewer/route_edit.h"

#include <iterator>
#include <utility>

namespace viewer {

void RouteEdit::keep() {
    constexpr std::size_t kMostChanges = 200;
    end_drag();
    if (earlier_.size() == kMostChanges) earlier_.pop_front();
    earlier_.push_back(waypoints_);
}

void RouteEdit::add(const Waypoint& waypoint) {
    keep();
    waypoints_.push_back(waypoint);
}

void RouteEdit::insert(std::size_t leg, const Waypoint& waypoint) {
    if (waypoints_.empty() || leg >= waypoints_.size() - 1) return;
    keep();
    waypoints_.insert(std::next(waypoints_.begin(), static_cast<std::ptrdiff_t>(leg) + 1), waypoint);
    dragged_ = leg + 1;
}

void RouteEdit::remove(std::size_t index) {
    if (index >= waypoints_.size()) return;
    keep();
    waypoints_.erase(std::next(waypoints_.begin(), static_cast<std::ptrdiff_t>(index)));
}

void RouteEdit::replace(std::vector<Waypoint> waypoints) {
    if (waypoints.empty() && waypoints_.empty()) return;
    keep();
    waypoints_ = std::move(waypoints);
}

void RouteEdit::begin_drag(std::size_t index) {
    if (index >= waypoints_.size()) return;
    keep();
    dragged_ = index;
}

void RouteEdit::drag_to(Position position) {
    if (dragged_) waypoints_[*dragged_].position = position;
}

bool RouteEdit::undo() {
    end_drag();
    if (earlier_.empty()) return false;
    waypoints_ = std::move(earlier_.back());
    earlier_.pop_back();
    return true;
}

}  // namespace viewer
