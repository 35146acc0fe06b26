#include "viewer/route_edit.h"

#include <iterator>
#include <utility>

namespace viewer {

namespace {

constexpr std::size_t kMostChanges = 200;

}  // namespace

void RouteEdit::keep() {
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
    dragged_ = index < waypoints_.size() ? index : kNone;
    drag_has_moved_ = false;
}

void RouteEdit::drag_to(zellap10::plotter::Position position) {
    const std::size_t dragged = dragged_;
    if (dragged == kNone) return;
    if (!drag_has_moved_) keep();
    dragged_ = dragged;
    drag_has_moved_ = true;
    waypoints_[dragged].position = position;
}

bool RouteEdit::undo() {
    end_drag();
    if (earlier_.empty()) return false;
    waypoints_ = std::move(earlier_.back());
    earlier_.pop_back();
    return true;
}

}  // namespace viewer
