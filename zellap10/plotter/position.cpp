#include "zellap10/plotter/position.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <zellap10/plotter/direct_pixel.h>
#include <zellap10/plotter/linear.h>
#include <zellap10/plotter/turns.h>

namespace zellap10::plotter {

namespace {

// The flat map of projection mode, from pixels to easting and northing.
Slopes plane_slopes(const CGEORec& record) {
    return {record.pwxAffine[1], record.pwxAffine[2], record.pwyAffine[1], record.pwyAffine[2]};
}

Pair project(const CGEORec& record, Pair position) {
    Pair plane;
    record.ProjFwd(position.first, position.second, &plane.first, &plane.second);
    return plane;
}

// Steps from a longitude and latitude that nearly project to a place on the plane to those that do.
Pair finished(const CGEORec& record, Pair position, Pair plane) {
    constexpr int kPasses = 3;             // the first leaves a millionth of a centimetre
    constexpr double kMetres = 1e-8;       // a rounding
    constexpr double kStepDegrees = 1e-5;  // a metre, over which the slopes are taken
    const auto forward = [&record](Pair at) { return project(record, at); };
    Pair reached = forward(position);
    const Slopes slopes = slopes_of(forward, position, reached, kStepDegrees);
    double miss = distance(reached, plane);
    for (int pass = 0; pass < kPasses && miss > kMetres; ++pass) {
        const Pair step = slopes.inverse(plane - reached);
        const Pair next = position + step;
        reached = forward(next);
        const double next_miss = distance(reached, plane);
        if (!(next_miss < miss)) break;
        miss = next_miss;
        position = next;
    }
    return position;
}

// The middle of the longitudes of the points, as the fit has them.
double middle_longitude(const CGEORec& record) {
    double west = std::numeric_limits<double>::max();
    double east = -west;
    for (const CRefPoint* point : record.Points) {
        const double longitude = as_fitted(record, point->Longitude);
        west = std::min(west, longitude);
        east = std::max(east, longitude);
    }
    return 0.5 * west + 0.5 * east;
}

// The turn of a longitude that lies nearest to the record's points. Most lie near the first of them already.
double turned_to_points(const CGEORec& record, double longitude) {
    constexpr double kNear = 90.0;
    const double first = as_fitted(record, (*record.Points.begin())->Longitude);
    if (std::fabs(longitude - first) <= kNear) return longitude;
    return nearest_turn(longitude, middle_longitude(record));
}

bool are_numbers(Pair pair) {
    return std::isfinite(pair.first) && std::isfinite(pair.second);
}

}  // namespace

bool is_fitted(const CGEORec& record) {
    if (record.Points.IsEmpty()) return false;
    if (record.ProjCode != 0) return plane_slopes(record).has_area();
    const CRefPoint& point = **record.Points.begin();
    const int region = record.SelectPWpoly(point.X, point.Y);
    const auto map = [&record, region](Pair at) { return position_by(record, region, at); };
    const Pair pixel = pixel_of_point(point);
    return slopes_of(map, pixel, map(pixel), 1.0).has_area();
}

std::optional<Position> position_of(const CGEORec& record, Pixel pixel) {
    if (!is_fitted(record)) return std::nullopt;
    Pair position;
    record.pwxy(pixel.x, pixel.y, &position.first, &position.second);
    if (record.ProjCode != 0) {
        const Pair plane{record.Evaluate(record.pwxAffine, pixel.x, pixel.y),
                         record.Evaluate(record.pwyAffine, pixel.x, pixel.y)};
        position = finished(record, position, plane);
    }
    if (!are_numbers(position)) return std::nullopt;
    return Position{position.second, within_a_turn(position.first)};
}

std::optional<Pixel> pixel_of(const CGEORec& record, Position position) {
    if (!is_fitted(record)) return std::nullopt;
    const Pair target{turned_to_points(record, position.longitude), position.latitude};
    std::optional<Pair> pixel;
    if (record.ProjCode == 0) {
        pixel = direct_pixel_of(record, target);
    } else {
        const Pair plane = project(record, target);
        pixel = plane_slopes(record).inverse(plane - Pair{record.pwxAffine[0], record.pwyAffine[0]});
    }
    if (!pixel || !are_numbers(*pixel)) return std::nullopt;
    return Pixel{pixel->first, pixel->second};
}

Position to_wgs84(const CGEORec& record, Position position) {
    return {position.latitude + record.LatitudeOffset,
            within_a_turn(position.longitude + record.LongitudeOffset)};
}

Position from_wgs84(const CGEORec& record, Position position) {
    return {position.latitude - record.LatitudeOffset,
            within_a_turn(position.longitude - record.LongitudeOffset)};
}

}  // namespace zellap10::plotter
