#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <zellap10/plotter/position.h>

// Viewer and plotter are one vocabulary.
namespace viewer {

using namespace zellap10::plotter;

/// A part of the window; the edges belong to it.
struct Box {
    ScreenPixel upper_left;
    ScreenPixel lower_right;

    bool is_empty() const { return !(upper_left.x < lower_right.x && upper_left.y < lower_right.y); }
    bool contains(ScreenPixel pixel) const;
    Box grown(double by) const;
    ScreenPixel at(double right, double down) const;  ///< from 0, 0 at the upper left to 1, 1
};

/// What two boxes share; may be empty.
Box shared_part(const Box& a, const Box& b);

/// The smallest box around some pixels, one at least.
Box box_around(const std::vector<ScreenPixel>& pixels);

/// The part of a straight line that lies in a box (Liang-Barsky).
std::optional<std::pair<ScreenPixel, ScreenPixel>> part_inside(const Box& box, ScreenPixel from,
                                                               ScreenPixel to);

/// The parts of a line of many pixels that lie in a box, each straight.
std::vector<std::pair<ScreenPixel, ScreenPixel>> parts_inside(const Box& box,
                                                              const std::vector<ScreenPixel>& line);

/// Pixels between two places.
double apart(ScreenPixel a, ScreenPixel b);

}  // namespace viewer
