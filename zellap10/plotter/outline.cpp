#include "zellap10/plotter/outline.h"

#include <algorithm>
#include <cmath>

#include <zellap10/plotter/polygon.h>

namespace zellap10::plotter {

namespace {

// Longitudes beyond this are damaged.
constexpr double kLargestLongitude = 3600.0;

// Longitudes and latitudes of a list's points that are on the earth.
std::vector<Vector> places_of(const CRefPointList& points) {
    std::vector<Vector> places;
    for (const CRefPoint* point : points) {
        if (std::fabs(point->Latitude) <= 90.0 && std::fabs(point->Longitude) <= kLargestLongitude)
            places.push_back({point->Longitude, point->Latitude});
    }
    return places;
}

// Whether points cross the 180th meridian from the left of the chart to its right, by the rule of the fit.
bool crosses_180(const CRefPointList& points) {
    const auto further_left = [](const CRefPoint* a, const CRefPoint* b) { return a->X < b->X; };
    const auto left = std::min_element(points.begin(), points.end(), further_left);
    const auto right = std::max_element(points.begin(), points.end(), further_left);
    return left != points.end() && (*left)->Longitude > 0.0 && (*right)->Longitude < 0.0;
}

double middle_longitude(const Polygon& polygon) {
    const Box box = box_around(polygon);
    return 0.5 * (box.min.x + box.max.x);
}

// Puts each corner in the turn nearest to the one before it, unless no area is left.
void take_short_ways(Polygon& corners) {
    Polygon run_on = corners;
    for (std::size_t i = 1; i < run_on.size(); ++i)
        run_on[i].x = longitude_near(run_on[i].x, run_on[i - 1].x);
    const Box box = box_around(run_on);
    if (box.max.x > box.min.x) corners = std::move(run_on);
}

Polygon corners_of(const CGEORec& record) {
    std::vector<Vector> points = places_of(record.Points);
    if (crosses_180(record.Points)) {
        for (Vector& point : points)
            if (point.x > 0.0) point.x -= 360.0;
    }
    Polygon vertices = places_of(record.Vertices);
    if (vertices.size() < 3) {
        Polygon hull = hull_of(std::move(points));
        return hull.size() >= 3 ? hull : Polygon();
    }
    if (points.empty()) {
        take_short_ways(vertices);
    } else {
        const double middle = middle_longitude(points);
        for (Vector& vertex : vertices)
            vertex.x = longitude_near(vertex.x, middle);
    }
    return vertices;
}

bool is_around_pole(const std::vector<Position>& corners) {
    double turned = 0.0;
    bool has_north = false;
    bool has_south = false;
    double before = corners.empty() ? 0.0 : corners.back().longitude;
    for (const Position corner : corners) {
        turned += std::remainder(corner.longitude - before, 360.0);
        before = corner.longitude;
        has_north = has_north || corner.latitude > 0.0;
        has_south = has_south || corner.latitude < 0.0;
    }
    return has_north != has_south && std::fabs(turned) > 180.0;
}

// The polygon of an outline, without corners if the outline covers nothing.
Polygon polygon_of(const std::vector<Position>& corners) {
    Polygon polygon;
    if (corners.size() < 3 || is_around_pole(corners)) return polygon;
    for (const Position corner : corners)
        polygon.push_back({corner.longitude, corner.latitude});
    return polygon;
}

}  // namespace

bool Extent::contains(Position position) const {
    return position.latitude >= south && position.latitude <= north &&
           degrees_east(position.longitude, west) <= width;
}

bool Extent::overlaps(const Extent& other) const {
    if (!(south <= other.north && other.south <= north)) return false;
    return degrees_east(other.west, west) <= width || degrees_east(west, other.west) <= other.width;
}

bool Outline::covers(Position position) const {
    if (!std::isfinite(position.latitude) || !std::isfinite(position.longitude)) return false;
    const Polygon polygon = polygon_of(corners);
    if (polygon.empty()) return false;
    return contains(polygon,
                    {longitude_near(position.longitude, middle_longitude(polygon)), position.latitude});
}

bool Outline::overlaps(const Extent& extent) const {
    const Polygon polygon = polygon_of(corners);
    if (polygon.empty()) return false;
    // The extent may reach the outline in either of two turns.
    const double west = box_around(polygon).min.x;
    const double east = degrees_east(extent.west, west);
    for (const double start : {west + east, west + east - 360.0}) {
        if (overlap(polygon, {{start, extent.south}, {start + extent.width, extent.north}})) return true;
    }
    return false;
}

std::optional<Extent> Outline::extent() const {
    const Polygon polygon = polygon_of(corners);
    if (polygon.empty()) return std::nullopt;
    const Box box = box_around(polygon);
    return Extent{box.min.y, box.max.y, normalize_longitude(box.min.x),
                  std::min(box.max.x - box.min.x, 360.0)};
}

Outline outline_of(const CGEORec& record, Datum datum) {
    const bool shifts = datum == Datum::kWgs84;
    const double north = shifts ? record.LatitudeOffset : 0.0;
    const double east = shifts ? record.LongitudeOffset : 0.0;
    Outline outline;
    outline.datum = datum;
    for (const Vector corner : corners_of(record))
        outline.corners.push_back({corner.y + north, corner.x + east});
    return outline;
}

}  // namespace zellap10::plotter
