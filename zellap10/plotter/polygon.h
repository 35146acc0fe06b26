#pragma once

#include <vector>

#include <zellap10/plotter/linear.h>

namespace zellap10::plotter {

/// The corners of an area in their order; the last is joined to the first.
using Ring = std::vector<Pair>;

/// The smallest rectangle around a ring.
struct Box {
    Pair least;
    Pair most;
};

/// @param ring  one corner or more
Box box_around(const Ring& ring);

/// Whether a place lies inside a ring or on its edge; nothing does where there are fewer than three corners.
bool contains(const Ring& ring, Pair place);

/// Whether a ring and a box have a place in common.
bool overlap(const Ring& ring, const Box& box);

/// The area inside a ring.
double area_of(const Ring& ring);

/// The convex hull of places, without those on its edges; fewer than three where all lie on a line.
Ring hull_of(std::vector<Pair> places);

}  // namespace zellap10::plotter
