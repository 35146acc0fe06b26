#include "zellap10/plotter/polygon.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace zellap10::plotter {

namespace {

// Twice the area of a triangle: above 0 where its corners turn to the left, first to the right and second up.
double turn(Pair a, Pair b, Pair c) {
    const Pair along = b - a;
    const Pair aside = c - a;
    return along.first * aside.second - along.second * aside.first;
}

bool is_between(double value, double end, double other_end) {
    return value >= std::min(end, other_end) && value <= std::max(end, other_end);
}

bool is_inside(const Box& box, Pair place) {
    return is_between(place.first, box.least.first, box.most.first) &&
           is_between(place.second, box.least.second, box.most.second);
}

// Calls `use` with both ends of each edge, until it answers true.
template <class Use>
bool any_edge(const Ring& ring, Use use) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (use(ring[i], ring[(i + 1) % ring.size()])) return true;
    }
    return false;
}

// Whether all corners of a box lie on one side of the line through two places.
bool lies_aside(const Box& box, Pair a, Pair b) {
    const double turns[] = {turn(a, b, box.least), turn(a, b, box.most),
                            turn(a, b, {box.least.first, box.most.second}),
                            turn(a, b, {box.most.first, box.least.second})};
    return *std::min_element(turns, turns + 4) > 0.0 || *std::max_element(turns, turns + 4) < 0.0;
}

bool edge_meets(const Box& box, Pair a, Pair b) {
    if (std::max(a.first, b.first) < box.least.first || std::min(a.first, b.first) > box.most.first ||
        std::max(a.second, b.second) < box.least.second || std::min(a.second, b.second) > box.most.second) {
        return false;
    }
    return !lies_aside(box, a, b);
}

}  // namespace

Box box_around(const Ring& ring) {
    Box box{ring.front(), ring.front()};
    for (const Pair corner : ring) {
        box.least = {std::min(box.least.first, corner.first), std::min(box.least.second, corner.second)};
        box.most = {std::max(box.most.first, corner.first), std::max(box.most.second, corner.second)};
    }
    return box;
}

bool contains(const Ring& ring, Pair place) {
    if (ring.size() < 3) return false;
    // A ray to the right crosses the edges an odd number of times from inside.
    bool inside = false;
    const bool on_edge = any_edge(ring, [&](Pair a, Pair b) {
        const double side = turn(a, b, place);
        if (side == 0.0 && is_inside({a, b}, place)) return true;
        if ((a.second > place.second) != (b.second > place.second) && (side > 0.0) == (b.second > a.second))
            inside = !inside;
        return false;
    });
    return on_edge || inside;
}

bool overlap(const Ring& ring, const Box& box) {
    return contains(ring, box.least) ||
           (ring.size() >= 3 && any_edge(ring, [&box](Pair a, Pair b) { return edge_meets(box, a, b); }));
}

double area_of(const Ring& ring) {
    double twice = 0.0;
    any_edge(ring, [&](Pair a, Pair b) {
        twice += turn(ring.front(), a, b);
        return false;
    });
    return 0.5 * std::fabs(twice);
}

Ring hull_of(std::vector<Pair> places) {
    const auto before = [](Pair a, Pair b) {
        return a.first < b.first || (a.first == b.first && a.second < b.second);
    };
    std::sort(places.begin(), places.end(), before);
    // The lower side from left to right, then the upper one back; each keeps to the left.
    Ring hull;
    for (int side = 0; side < 2; ++side) {
        const std::size_t start = hull.size();
        for (const Pair place : places) {
            while (hull.size() >= start + 2 && turn(hull[hull.size() - 2], hull.back(), place) <= 0.0)
                hull.pop_back();
            hull.push_back(place);
        }
        if (!hull.empty()) hull.pop_back();
        std::reverse(places.begin(), places.end());
    }
    return hull;
}

}  // namespace zellap10::plotter
