#include "zellap10/plotter/route.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include <zellap10/navigation/course.h>
#include <zellap10/navigation/dead_reckoning.h>

namespace zellap10::plotter {

namespace {

// The short way from one longitude to another, degrees.
double longitude_between(double from, double to) {
    return std::remainder(to - from, 360.0);
}

// Degrees, 0.1 m on the ground. Between latitudes closer than this the difference of meridional parts has too
// few places left: it may be 0, and a leg of 40 miles with it.
constexpr double kNearParallel = 1e-6;

// The distance along a rhumb line from a latitude to another, to a longitude `east` of it, and its course.
double sail(double from_latitude, double to_latitude, double east, double* course) {
    const double north = to_latitude - from_latitude;
    if (north == 0.0 || !(std::abs(north) < kNearParallel))
        return m_b_d(from_latitude, 0.0, to_latitude, east, course);
    const double middle = (from_latitude + to_latitude) / 2;
    const double miles_east = std::copysign(m_distance(middle, 0.0, middle, east), east);
    const double miles_north = 60.0 * north;
    *course = m_angle(miles_east, miles_north);
    return std::hypot(miles_east, miles_north);
}

}  // namespace

Leg leg_between(const Position& from, const Position& to, double speed) {
    Leg leg;
    const double east = longitude_between(from.longitude, to.longitude);
    leg.distance = sail(from.latitude, to.latitude, east, &leg.course);
    if (leg.distance == 0.0) {
        leg.course = std::numeric_limits<double>::quiet_NaN();
    } else {
        leg.time = speed > 0.0 ? leg.distance * 3600.0 / speed : std::numeric_limits<double>::infinity();
    }
    return leg;
}

Route route_over(const std::vector<Position>& waypoints, double speed) {
    Route route;
    for (std::size_t i = 1; i < waypoints.size(); ++i) {
        const Leg leg = leg_between(waypoints[i - 1], waypoints[i], speed);
        route.legs.push_back(leg);
        route.distance += leg.distance;
        route.time += leg.time;
    }
    return route;
}

std::vector<Position> rhumb_line(const Position& from, const Position& to, int pieces) {
    const double east = longitude_between(from.longitude, to.longitude);
    const Position end{to.latitude, from.longitude + east};
    double course = 0.0;
    const double miles = sail(from.latitude, to.latitude, east, &course);
    const auto advanced = [&](double part) {
        Position position = from;
        m_advance_d(&position.latitude, &position.longitude, miles * part, course);
        return position;
    };
    // A course within 0.01 degrees of a parallel is sailed along it and so misses the end; each position
    // takes its share of that.
    const Position reached = advanced(1.0);
    const Position missed{end.latitude - reached.latitude, end.longitude - reached.longitude};
    if (!std::isfinite(missed.latitude) || !std::isfinite(missed.longitude)) return {from, end};

    std::vector<Position> line{from};
    for (int i = 1; i < pieces; ++i) {
        const double part = static_cast<double>(i) / pieces;
        const Position position = advanced(part);
        line.push_back(
            {position.latitude + part * missed.latitude, position.longitude + part * missed.longitude});
    }
    line.push_back(end);
    return line;
}

}  // namespace zellap10::plotter
