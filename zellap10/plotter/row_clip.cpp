#include <algorithm>
#include <cmath>

#include <zellap10/plotter/row_clip.h>

namespace zellap10::plotter {

namespace {

double cross_product(Vector a, Vector b) {
    return a.x * b.y - a.y * b.x;
}

// Sutherland-Hodgman: the part of a polygon on one side of a line, where `side` of a point is not negative.
template <class Side>
void cut(Polygon& polygon, Side side) {
    Polygon result;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Vector from = polygon[i];
        const Vector to = polygon[(i + 1) % polygon.size()];
        const double at_from = side(from);
        const double at_to = side(to);
        if (at_from >= 0.0) result.push_back(from);
        if ((at_from >= 0.0) == (at_to >= 0.0)) continue;
        const double share = at_from / (at_from - at_to);
        result.push_back({from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share});
    }
    polygon = std::move(result);
}

Polygon cut_to(const PixelOutline& outline, const Box& box) {
    Polygon polygon;
    for (const ChartPixel corner : outline.corners_around({box.min.x, box.min.y}, {box.max.x, box.max.y}))
        polygon.push_back({corner.x, corner.y});
    cut(polygon, [&box](Vector point) { return point.x - box.min.x; });
    cut(polygon, [&box](Vector point) { return box.max.x - point.x; });
    cut(polygon, [&box](Vector point) { return point.y - box.min.y; });
    cut(polygon, [&box](Vector point) { return box.max.y - point.y; });
    return polygon;
}

// The pixels whose places are from the first number to before the second.
RowSpan span_between(double first, double end, int side) {
    const auto held = [side](double place) {
        return static_cast<int>(std::ceil(std::clamp(place, 0.0, static_cast<double>(side))));
    };
    return {held(first), held(end)};
}

void intersect(const std::vector<RowSpan>& a, const std::vector<RowSpan>& b, std::vector<RowSpan>& result) {
    result.clear();
    for (std::size_t i = 0, k = 0; i < a.size() && k < b.size();) {
        const RowSpan both{std::max(a[i].first, b[k].first), std::min(a[i].end, b[k].end)};
        if (both.first < both.end) result.push_back(both);
        (a[i].end < b[k].end ? i : k)++;
    }
}

std::vector<RowSpan> outside(const std::vector<RowSpan>& spans, int side) {
    std::vector<RowSpan> result;
    int first = 0;
    for (const RowSpan& span : spans) {
        if (first < span.first) result.push_back({first, span.first});
        first = span.end;
    }
    if (first < side) result.push_back({first, side});
    return result;
}

}  // namespace

bool ChartArea::contains(ChartPixel pixel) const {
    return outline.contains(pixel) && pixel.x >= -0.5 && pixel.y >= -0.5 && pixel.x < width - 0.5 &&
           pixel.y < height - 0.5 && !holes.contain(pixel);
}

CellClip::CellClip(const ChartArea& area, const GridCell& cell)
    : cell_(cell), box_(box_around({cell.corners[0], cell.corners[1], cell.corners[2], cell.corners[3]})) {
    // The crossings with the edges of the box are then outside the cell.
    const double margin = 1.0 + 0.01 * std::max(box_.max.x - box_.min.x, box_.max.y - box_.min.y);
    box_.min = box_.min - Vector{margin, margin};
    box_.max = box_.max + Vector{margin, margin};
    const double right = area.width - 0.5;
    const double bottom = area.height - 0.5;
    add_part(PixelOutline({{-0.5, -0.5}, {right, -0.5}, {right, bottom}, {-0.5, bottom}}), false);
    add_part(area.outline, false);
    for (const PixelOutline* hole : area.holes.around({box_.min.x, box_.min.y}, {box_.max.x, box_.max.y}))
        add_part(*hole, true);
}

void CellClip::add_part(const PixelOutline& outline, bool is_hole) {
    if (is_empty_) return;
    const bool apart = outline.corners().size() < 3 || outline.upper_left().x > box_.max.x ||
                       outline.upper_left().y > box_.max.y || outline.lower_right().x < box_.min.x ||
                       outline.lower_right().y < box_.min.y;
    Polygon polygon = apart ? Polygon() : cut_to(outline, box_);
    const double box_area = (box_.max.x - box_.min.x) * (box_.max.y - box_.min.y);
    if (polygon.size() < 3) {
        is_empty_ = !is_hole;
    } else if (area_of(polygon) >= box_area * (1.0 - 1e-9)) {
        is_empty_ = is_hole;
    } else {
        parts_.push_back({std::move(polygon), is_hole});
    }
}

// Even-odd rule along the line of a row.
void CellClip::cross(const Polygon& polygon, Vector start, Vector step) {
    crossings_.clear();
    const double length = step.x * step.x + step.y * step.y;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Vector from = polygon[i] - start;
        const Vector to = polygon[(i + 1) % polygon.size()] - start;
        const double at_from = cross_product(step, from);
        const double at_to = cross_product(step, to);
        if ((at_from > 0.0) == (at_to > 0.0)) continue;
        const double share = at_from / (at_from - at_to);
        const Vector at{from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
        crossings_.push_back((at.x * step.x + at.y * step.y) / length);
    }
    std::sort(crossings_.begin(), crossings_.end());
    part_spans_.clear();
    for (std::size_t i = 0; i + 1 < crossings_.size(); i += 2) {
        const RowSpan span = span_between(crossings_[i], crossings_[i + 1], cell_.side);
        if (span.first < span.end) part_spans_.push_back(span);
    }
}

const std::vector<RowSpan>& CellClip::spans(int row) {
    spans_.clear();
    if (is_empty_) return spans_;
    spans_.push_back({0, cell_.side});
    if (parts_.empty()) return spans_;
    const Vector start = cell_.at(0.0, row);
    const Vector end = cell_.at(cell_.side, row);
    const Vector step{(end.x - start.x) / cell_.side, (end.y - start.y) / cell_.side};
    for (const Part& part : parts_) {
        cross(part.polygon, start, step);
        if (part.is_hole) part_spans_ = outside(part_spans_, cell_.side);
        intersect(spans_, part_spans_, merged_);
        std::swap(spans_, merged_);
    }
    return spans_;
}

}  // namespace zellap10::plotter
