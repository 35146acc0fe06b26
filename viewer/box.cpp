#include "viewer/box.h"

#include <algorithm>
#include <cmath>

namespace viewer {

bool Box::contains(ScreenPixel pixel) const {
    return pixel.x >= upper_left.x && pixel.x <= lower_right.x && pixel.y >= upper_left.y &&
           pixel.y <= lower_right.y;
}

Box Box::grown(double by) const {
    return {{upper_left.x - by, upper_left.y - by}, {lower_right.x + by, lower_right.y + by}};
}

ScreenPixel Box::at(double right, double down) const {
    return {upper_left.x + right * (lower_right.x - upper_left.x),
            upper_left.y + down * (lower_right.y - upper_left.y)};
}

Box shared_part(const Box& a, const Box& b) {
    return {{std::max(a.upper_left.x, b.upper_left.x), std::max(a.upper_left.y, b.upper_left.y)},
            {std::min(a.lower_right.x, b.lower_right.x), std::min(a.lower_right.y, b.lower_right.y)}};
}

Box box_around(const std::vector<ScreenPixel>& pixels) {
    Box box{pixels.front(), pixels.front()};
    for (const ScreenPixel pixel : pixels) {
        box.upper_left = {std::min(box.upper_left.x, pixel.x), std::min(box.upper_left.y, pixel.y)};
        box.lower_right = {std::max(box.lower_right.x, pixel.x), std::max(box.lower_right.y, pixel.y)};
    }
    return box;
}

std::optional<std::pair<ScreenPixel, ScreenPixel>> part_inside(const Box& box, ScreenPixel from,
                                                               ScreenPixel to) {
    // The line is from + t * (to - from); each edge of the box cuts a piece off the range of t.
    double first = 0;
    double last = 1;
    const auto cut = [&](double start, double step, double least, double greatest) {
        if (step == 0) return start >= least && start <= greatest;
        const double a = (least - start) / step;
        const double b = (greatest - start) / step;
        first = std::max(first, std::min(a, b));
        last = std::min(last, std::max(a, b));
        return first <= last;
    };
    const ScreenPixel step{to.x - from.x, to.y - from.y};
    if (!cut(from.x, step.x, box.upper_left.x, box.lower_right.x)) return std::nullopt;
    if (!cut(from.y, step.y, box.upper_left.y, box.lower_right.y)) return std::nullopt;
    return std::make_pair(ScreenPixel{from.x + first * step.x, from.y + first * step.y},
                          ScreenPixel{from.x + last * step.x, from.y + last * step.y});
}

std::vector<std::pair<ScreenPixel, ScreenPixel>> parts_inside(const Box& box,
                                                              const std::vector<ScreenPixel>& line) {
    std::vector<std::pair<ScreenPixel, ScreenPixel>> parts;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (const auto part = part_inside(box, line[i - 1], line[i])) parts.push_back(*part);
    }
    return parts;
}

double apart(ScreenPixel a, ScreenPixel b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

}  // namespace viewer
