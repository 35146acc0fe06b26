#pragma once

#include <vector>

#include <zellap10/plotter/vector.h>

namespace zellap10::plotter {

/// The corners of a polygon in order. An edge joins the last to the first.
using Polygon = std::vector<Vector>;

/// A rectangle parallel to the axes.
struct Box {
    Vector min;
    Vector max;
};

/// The smallest box around points.
///
/// @param points  at least one
Box box_around(const Polygon& points);

/// Finds out whether a polygon contains a point, edge by edge, by counting the edges that a ray to the right
/// crosses. Points on an edge are inside. Edges that are entirely above or below the point may be left out.
class ContainsTest {
public:
    explicit ContainsTest(Vector point) : point_(point) {}
    void add_edge(Vector a, Vector b);
    bool contains() const { return on_edge_ || crosses_; }

private:
    Vector point_;
    bool crosses_ = false;  // an odd number of edges
    bool on_edge_ = false;
};

/// Whether a polygon contains a point. With fewer than three corners it contains none.
bool contains(const Polygon& polygon, Vector point);

/// Whether a polygon and a box have a point in common.
bool overlap(const Polygon& polygon, const Box& box);

double area_of(const Polygon& polygon);

/// The convex hull of points, without those on its edges. It has fewer than three corners if all points are
/// on a line.
Polygon hull_of(std::vector<Vector> points);

/// Whether points span an area. Points on a line do not, and neither do points that are not finite.
bool span_area(const std::vector<Vector>& points);

}  // namespace zellap10::plotter
