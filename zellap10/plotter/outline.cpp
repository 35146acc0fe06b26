#include "zellap10/plotter/outline.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <zellap10/plotter/polygon.h>
#include <zellap10/plotter/turns.h>

namespace zellap10::plotter {

namespace {

Pair place_of(const CRefPoint& point) {
    return {point.Longitude, point.Latitude};
}

// Finite places of a list's points; a file may say anything.
template <class Place>
Ring places_of(const CRefPointList& points, Place place) {
    Ring places;
    for (const CRefPoint* point : points) {
        const Pair found = place(*point);
        if (std::isfinite(found.first) && std::isfinite(found.second)) places.push_back(found);
    }
    return places;
}

// Whether points go over the 180th meridian from the left of their picture to its right, as the fit sees it.
bool crosses_180(const CRefPointList& points) {
    const auto further_left = [](const CRefPoint* a, const CRefPoint* b) { return a->X < b->X; };
    const auto left = std::min_element(points.begin(), points.end(), further_left);
    const auto right = std::max_element(points.begin(), points.end(), further_left);
    return left != points.end() && (*left)->Longitude > 0.0 && (*right)->Longitude < 0.0;
}

// Positive longitudes a turn further down.
Ring moved_down(Ring places) {
    for (Pair& place : places) {
        if (place.first > 0.0) place.first -= 360.0;
    }
    return places;
}

double width_of(const Ring& places) {
    const Box box = box_around(places);
    return box.most.first - box.least.first;
}

double middle_of(const Ring& places) {
    const Box box = box_around(places);
    return 0.5 * (box.least.first + box.most.first);
}

// The longitudes of vertices in the turn of the points. Without points, over the 180th meridian where that
// makes them narrower.
void turn_to_points(Ring& vertices, const Ring& points) {
    if (points.empty()) {
        Ring down = moved_down(vertices);
        if (width_of(down) < width_of(vertices)) vertices = std::move(down);
        return;
    }
    const double middle = middle_of(points);
    for (Pair& vertex : vertices)
        vertex.first = nearest_turn(vertex.first, middle);
}

Ring ring_of(const CGEORec& record) {
    Ring points = places_of(record.Points, place_of);
    if (crosses_180(record.Points)) points = moved_down(std::move(points));
    Ring vertices = places_of(record.Vertices, place_of);
    if (vertices.size() >= 3) {
        turn_to_points(vertices, points);
        return vertices;
    }
    Ring hull = hull_of(std::move(points));
    return hull.size() >= 3 ? hull : Ring();
}

Ring ring_of(const std::vector<Position>& corners) {
    Ring ring;
    for (const Position corner : corners)
        ring.push_back({corner.longitude, corner.latitude});
    return ring;
}

Outline outline_moved(const CGEORec& record, double latitude_offset, double longitude_offset) {
    Outline outline;
    for (const Pair corner : ring_of(record))
        outline.corners.push_back({corner.second + latitude_offset, corner.first + longitude_offset});
    return outline;
}

// The outline of an inset on the chart's picture.
Ring pixels_of(const CGEORec& inset) {
    Ring ring = places_of(inset.Vertices, [&inset](const CRefPoint& vertex) {
        const auto pixel = pixel_of(inset, {vertex.Latitude, vertex.Longitude});
        constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
        return pixel ? Pair{pixel->x, pixel->y} : Pair{kNone, kNone};
    });
    if (ring.size() >= 3) return ring;
    return hull_of(places_of(inset.Points, [](const CRefPoint& point) {
        return Pair{static_cast<double>(point.X), static_cast<double>(point.Y)};
    }));
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
    if (corners.size() < 3) return false;
    const Ring ring = ring_of(corners);
    return contains(ring, {nearest_turn(position.longitude, middle_of(ring)), position.latitude});
}

bool Outline::overlaps(const Extent& extent) const {
    if (corners.size() < 3) return false;
    const Ring ring = ring_of(corners);
    // The extent may reach the outline in either of two turns.
    const double west = box_around(ring).least.first;
    const double east = degrees_east(extent.west, west);
    for (const double start : {west + east, west + east - 360.0}) {
        if (overlap(ring, {{start, extent.south}, {start + extent.width, extent.north}})) return true;
    }
    return false;
}

std::optional<Extent> Outline::extent() const {
    if (corners.empty()) return std::nullopt;
    const Box box = box_around(ring_of(corners));
    return Extent{box.least.second, box.most.second, within_a_turn(box.least.first),
                  std::min(box.most.first - box.least.first, 360.0)};
}

Outline outline_of(const CGEORec& record) {
    return outline_moved(record, 0.0, 0.0);
}

Outline wgs84_outline_of(const CGEORec& record) {
    return outline_moved(record, record.LatitudeOffset, record.LongitudeOffset);
}

bool covers(const CGEORec& record, Position position) {
    return outline_of(record).covers(position);
}

const CGEORec& record_at(const CGEORec& base, Pixel pixel) {
    const CGEORec* found = &base;
    double least = std::numeric_limits<double>::max();
    for (const CGEORec* inset : base.Insets) {
        const Ring ring = pixels_of(*inset);
        if (!contains(ring, {pixel.x, pixel.y})) continue;
        const double area = area_of(ring);
        if (area >= least) continue;
        least = area;
        found = inset;
    }
    return *found;
}

}  // namespace zellap10::plotter
