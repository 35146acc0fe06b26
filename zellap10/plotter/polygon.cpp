#include "zellap10/plotter/polygon.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zellap10::plotter {

namespace {

// Twice the area of a triangle, positive if its corners turn left, x to the right and y up.
double turn(Vector a, Vector b, Vector c) {
    const Vector ab = b - a;
    const Vector ac = c - a;
    return ab.x * ac.y - ab.y * ac.x;
}

bool is_between(double value, double end, double other_end) {
    return value >= std::min(end, other_end) && value <= std::max(end, other_end);
}

// Calls `use` with both ends of each edge until it returns true.
template <class Use>
bool any_edge(const Polygon& polygon, Use use) {
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        if (use(polygon[i], polygon[(i + 1) % polygon.size()])) return true;
    }
    return false;
}

// Whether all corners of a box are on one side of the line through two points.
bool is_on_one_side(const Box& box, Vector a, Vector b) {
    const double turns[] = {turn(a, b, box.min), turn(a, b, box.max), turn(a, b, {box.min.x, box.max.y}),
                            turn(a, b, {box.max.x, box.min.y})};
    return *std::min_element(turns, turns + 4) > 0.0 || *std::max_element(turns, turns + 4) < 0.0;
}

bool edge_meets(const Box& box, Vector a, Vector b) {
    if (std::max(a.x, b.x) < box.min.x || std::min(a.x, b.x) > box.max.x || std::max(a.y, b.y) < box.min.y ||
        std::min(a.y, b.y) > box.max.y) {
        return false;
    }
    return !is_on_one_side(box, a, b);
}

}  // namespace

Box box_around(const Polygon& points) {
    Box box{points.front(), points.front()};
    for (const Vector point : points) {
        box.min = {std::min(box.min.x, point.x), std::min(box.min.y, point.y)};
        box.max = {std::max(box.max.x, point.x), std::max(box.max.y, point.y)};
    }
    return box;
}

void ContainsTest::add_edge(Vector a, Vector b) {
    const double side = turn(a, b, point_);
    if (side == 0.0 && is_between(point_.x, a.x, b.x) && is_between(point_.y, a.y, b.y)) on_edge_ = true;
    if ((a.y > point_.y) != (b.y > point_.y) && (side > 0.0) == (b.y > a.y)) crosses_ = !crosses_;
}

bool contains(const Polygon& polygon, Vector point) {
    if (polygon.size() < 3) return false;
    ContainsTest test(point);
    any_edge(polygon, [&test](Vector a, Vector b) {
        test.add_edge(a, b);
        return false;
    });
    return test.contains();
}

bool overlap(const Polygon& polygon, const Box& box) {
    return contains(polygon, box.min) ||
           (polygon.size() >= 3 &&
            any_edge(polygon, [&box](Vector a, Vector b) { return edge_meets(box, a, b); }));
}

double area_of(const Polygon& polygon) {
    double twice = 0.0;
    any_edge(polygon, [&](Vector a, Vector b) {
        twice += turn(polygon.front(), a, b);
        return false;
    });
    return 0.5 * std::fabs(twice);
}

// Andrew's monotone chain: the lower side from left to right, then the upper side back.
Polygon hull_of(std::vector<Vector> points) {
    std::sort(points.begin(), points.end(),
              [](Vector a, Vector b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    Polygon hull;
    for (int side = 0; side < 2; ++side) {
        const std::size_t start = hull.size();
        for (const Vector point : points) {
            while (hull.size() >= start + 2 && turn(hull[hull.size() - 2], hull.back(), point) <= 0.0)
                hull.pop_back();
            hull.push_back(point);
        }
        if (!hull.empty()) hull.pop_back();
        std::reverse(points.begin(), points.end());
    }
    return hull;
}

// The covariance matrix has rank 2. The ratio of its singular values is that of the lengths, squared.
bool span_area(const std::vector<Vector>& points) {
    constexpr double kFlattest = 1e-12;
    if (points.size() < 3) return false;
    const Box box = box_around(points);
    const Vector middle{0.5 * box.min.x + 0.5 * box.max.x, 0.5 * box.min.y + 0.5 * box.max.y};
    const double count = static_cast<double>(points.size());
    Vector mean;
    for (const Vector point : points)
        mean = mean + Vector{(point.x - middle.x) / count, (point.y - middle.y) / count};
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    for (const Vector point : points) {
        const Vector off = point - middle - mean;
        xx += off.x * off.x;
        xy += off.x * off.y;
        yy += off.y * off.y;
    }
    return xx * yy - xy * xy > kFlattest * (xx + yy) * (xx + yy);
}

}  // namespace zellap10::plotter
