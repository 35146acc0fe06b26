#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <viewer/types.h>

namespace viewer {

/// A part of the window; the edges belong to it.
struct Box {
    ScreenPixel upper_left;
    ScreenPixel lower_right;

    bool is_empty() const { return !(upper_left.x < lower_right.x && upper_left.y < lower_right.y); }
};

/// What two boxes share; may be empty.
Box shared_part(const Box& a, const Box& b);

/// What of the straight line from one spot to another lies in a box.
std::optional<std::pair<ScreenPixel, ScreenPixel>> part_inside(const Box& box, ScreenPixel from,
                                                               ScreenPixel to);

/// The parts of a line of many spots that lie in a box, each straight.
std::vector<std::pair<ScreenPixel, ScreenPixel>> parts_inside(const Box& box,
                                                              const std::vector<ScreenPixel>& line);

}  // namespace viewer
