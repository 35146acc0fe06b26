#include "zellap10/plotter/route.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <zellap10/navigation/course.h>
#include <zellap10/navigation/dead_reckoning.h>
#include <zellap10/platform/angle.h>

namespace zellap10::plotter {

namespace {

// The short way from one longitude to another, degrees.
double longitude_between(double from, double to) {
    return std::remainder(to - from, 360.0);
}

// Degrees, 0.1 m on the ground. Between closer latitudes the difference of meridional parts has too few
// digits left: it may be 0, and with it the distance of a leg of 40 miles.
constexpr double kNearParallel = 1e-6;

// The distance and course of a rhumb line between two latitudes that ends `east` degrees east of its start.
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

Leg leg_between(Position from, Position to) {
    double course = 0.0;
    const double east = longitude_between(from.longitude, to.longitude);
    const double distance = sail(from.latitude, to.latitude, east, &course);
    if (distance == 0.0 || !std::isfinite(course)) return {std::nullopt, distance};
    return {course, distance};
}

Route route_over(const std::vector<Position>& waypoints) {
    Route route;
    for (std::size_t i = 1; i < waypoints.size(); ++i) {
        route.legs.push_back(leg_between(waypoints[i - 1], waypoints[i]));
        route.distance += route.legs.back().distance;
    }
    return route;
}

std::optional<double> time_to_go(double distance, double speed) {
    if (!(speed > 0.0) || !std::isfinite(speed) || !std::isfinite(distance)) return std::nullopt;
    return distance * 3600.0 / speed;
}

std::optional<double> cross_track_distance(Position from, Position to, Position at) {
    const std::optional<double> course = leg_between(from, to).course;
    if (!course) return std::nullopt;
    const double theta = (90.0 - *course) * platform::DEG_TO_RAD;
    const double at_east = longitude_between(from.longitude, at.longitude);
    Position foot{at.latitude, at_east};
    m_line(from.latitude, 0.0, &foot.latitude, &foot.longitude, theta);
    const Position off{at.latitude, at_east};
    const double distance = leg_between(foot, off).distance;
    if (!std::isfinite(distance)) return std::nullopt;
    // Right of the leg, a quarter turn clockwise from its direction.
    const double right =
        (off.longitude - foot.longitude) * std::sin(theta) - (off.latitude - foot.latitude) * std::cos(theta);
    return std::copysign(distance, right);
}

std::vector<Position> rhumb_line(Position from, Position to, int pieces) {
    const double east = longitude_between(from.longitude, to.longitude);
    const Position end{to.latitude, from.longitude + east};
    double course = 0.0;
    const double miles = sail(from.latitude, to.latitude, east, &course);
    const auto advanced = [&](double part) {
        Position position = from;
        m_advance_d(&position.latitude, &position.longitude, miles * part, course);
        return position;
    };
    // m_advance_d stays on the parallel for courses within 0.01 degrees of it and so misses the end. Each
    // position is corrected by its share of that.
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
