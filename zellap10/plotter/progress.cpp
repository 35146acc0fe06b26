#include "zellap10/plotter/progress.h"

#include <cmath>

#include <zellap10/platform/angle.h>

namespace zellap10::plotter {

namespace {

constexpr double kArrivalMiles = 0.05;
constexpr double kAbeamMiles = 1.0;

double cosine_of(double degrees) {
    return std::cos(degrees * platform::DEG_TO_RAD);
}

bool has_passed(Position at, const std::vector<Waypoint>& route, std::size_t waypoint) {
    const Position position = route[waypoint].position;
    const Leg to_ship = leg_between(position, at);
    if (to_ship.distance <= kArrivalMiles) return true;
    if (waypoint == 0 || !(to_ship.distance <= kAbeamMiles)) return false;
    const Leg leg = leg_between(route[waypoint - 1].position, position);
    return leg.course && to_ship.course && cosine_of(*to_ship.course - *leg.course) > 0.0;
}

}  // namespace

Progress progress_to(const Fix& fix, const std::vector<Waypoint>& route, std::size_t next) {
    const Position target = route[next].position;
    const Leg leg = leg_between(fix.position, target);
    Progress progress{leg.course, leg.distance, std::nullopt, std::nullopt};
    if (next > 0) progress.cross_track = cross_track_distance(route[next - 1].position, target, fix.position);
    if (fix.speed) {
        const double made_good = fix.course && leg.course ? cosine_of(*fix.course - *leg.course) : 1.0;
        progress.time = time_to_go(leg.distance, *fix.speed * made_good);
    }
    return progress;
}

std::size_t advance_waypoint(Position at, const std::vector<Waypoint>& route, std::size_t next) {
    while (next + 1 < route.size() && has_passed(at, route, next))
        ++next;
    return next;
}

}  // namespace zellap10::plotter
