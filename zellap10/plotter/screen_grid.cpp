#include <algorithm>
#include <cmath>
#include <utility>

#include <zellap10/plotter/screen_grid.h>
#include <zellap10/plotter/web_mercator.h>

namespace zellap10::plotter {

namespace {

// Fractions of a pixel that planes have: fine enough for charts that are reduced by thousands, coarse enough
// for rounding errors of moved views.
constexpr double kFractions = 65536.0;

constexpr int kMostEvaluations = 4000;

struct Place {
    std::int64_t whole;
    double fraction;
};

Place place_of(double pixels) {
    const double whole = std::floor(pixels);
    const double fraction = std::round((pixels - whole) * kFractions) / kFractions;
    return {static_cast<std::int64_t>(whole) + (fraction == 1.0 ? 1 : 0), fraction == 1.0 ? 0.0 : fraction};
}

Vector middle_of(Vector a, Vector b) {
    return {0.5 * (a.x + b.x), 0.5 * (a.y + b.y)};
}

using Node = std::optional<Vector>;

class CellFinder {
public:
    CellFinder(const ScreenPlane& plane, const Georeference& georeference)
        : plane_(plane), georeference_(georeference), extent_(georeference.extent()) {}

    std::vector<GridCell> cells;

    // Corners in the order of GridCell.
    void add(std::int64_t left, std::int64_t top, int side) {
        if (extent_ && meets_extent(left, top, side))
            divide(left, top, side,
                   {node(left, top), node(left + side, top), node(left, top + side),
                    node(left + side, top + side)});
    }

private:
    struct Corners {
        Node of[4];
        bool complete() const { return of[0] && of[1] && of[2] && of[3]; }
    };

    Node node(std::int64_t column, std::int64_t row) {
        if (evaluations_ >= kMostEvaluations) return std::nullopt;
        ++evaluations_;
        const std::optional<Position> position = plane_.position_of(column, row);
        if (!position) return std::nullopt;
        const std::optional<ChartPixel> pixel = georeference_.pixel_of(*position);
        if (!pixel) return std::nullopt;
        const Vector result{pixel->x, pixel->y};
        return std::fabs(result.x) < 1e9 && std::fabs(result.y) < 1e9 ? Node(result) : std::nullopt;
    }

    bool meets_extent(std::int64_t left, std::int64_t top, int side) const {
        const std::optional<Extent> cell = extent_of(plane_, left, top, side);
        return !cell || cell->overlaps(*extent_);
    }

    // Compares the interpolation with the middles of the edges and of the cell, where that of a map with
    // constant second derivatives is farthest off.
    void divide(std::int64_t left, std::int64_t top, int side, const Corners& corners) {
        const Node* const c = corners.of;
        if (side == 1) {
            if (corners.complete()) cells.push_back({left, top, 1, {*c[0], *c[1], *c[2], *c[3]}});
            return;
        }
        const int half = side / 2;
        const Node above = node(left + half, top);
        const Node before = node(left, top + half);
        const Node middle = node(left + half, top + half);
        const Node after = node(left + side, top + half);
        const Node below = node(left + half, top + side);
        if (evaluations_ >= kMostEvaluations) return;
        if (corners.complete() && above && before && middle && after && below) {
            const Vector sides = middle_of(middle_of(*c[0], *c[1]), middle_of(*c[2], *c[3]));
            const double error = std::max(
                {distance(*above, middle_of(*c[0], *c[1])), distance(*before, middle_of(*c[0], *c[2])),
                 distance(*after, middle_of(*c[1], *c[3])), distance(*below, middle_of(*c[2], *c[3])),
                 distance(*middle, sides)});
            if (error <= kGridTolerance) {
                cells.push_back({left, top, side, {*c[0], *c[1], *c[2], *c[3]}});
                return;
            }
        }
        divide_if_needed(left, top, half, {c[0], above, before, middle});
        divide_if_needed(left + half, top, half, {above, c[1], middle, after});
        divide_if_needed(left, top + half, half, {before, middle, c[2], below});
        divide_if_needed(left + half, top + half, half, {middle, after, below, c[3]});
    }

    void divide_if_needed(std::int64_t left, std::int64_t top, int side, const Corners& corners) {
        if (meets_extent(left, top, side)) divide(left, top, side, corners);
    }

    const ScreenPlane& plane_;
    const Georeference& georeference_;
    const std::optional<Extent>& extent_;
    int evaluations_ = 0;
};

}  // namespace

ScreenPlane::ScreenPlane(const MapView& view)
    : pixels_around_(view.pixels_around()),
      course_up_(view.course_up()),
      sine_(std::sin(course_up_ * platform::DEG_TO_RAD)),
      cosine_(std::cos(course_up_ * platform::DEG_TO_RAD)) {
    // North is up at right angles exactly.
    if (course_up_ == 90.0 || course_up_ == 270.0) cosine_ = 0.0;
    if (course_up_ == 180.0) sine_ = 0.0;
    const double east = view.centre().longitude / 360.0 * pixels_around_;
    const double south = -mercator_turns(view.centre().latitude) * pixels_around_;
    const Place column = place_of(east * cosine_ + south * sine_ - 0.5 * (view.size().width - 1));
    const Place row = place_of(-east * sine_ + south * cosine_ - 0.5 * (view.size().height - 1));
    left_ = column.whole;
    top_ = row.whole;
    column_fraction_ = column.fraction;
    row_fraction_ = row.fraction;
}

std::optional<Position> ScreenPlane::position_of(std::int64_t column, std::int64_t row) const {
    const double x = static_cast<double>(column) + column_fraction_;
    const double y = static_cast<double>(row) + row_fraction_;
    const double east = (x * cosine_ - y * sine_) / pixels_around_;
    const double south = (x * sine_ + y * cosine_) / pixels_around_;
    const Position position{mercator_latitude(-south), normalize_longitude(east * 360.0)};
    if (!(std::fabs(position.latitude) <= 89.0)) return std::nullopt;
    return position;
}

bool ScreenPlane::is_same(const ScreenPlane& other) const {
    return pixels_around_ == other.pixels_around_ && course_up_ == other.course_up_ &&
           column_fraction_ == other.column_fraction_ && row_fraction_ == other.row_fraction_;
}

Vector GridCell::at(double x, double y) const {
    const double right = x / side;
    const double down = y / side;
    const auto across = [right](Vector a, Vector b) {
        return Vector{a.x + (b.x - a.x) * right, a.y + (b.y - a.y) * right};
    };
    const Vector upper = across(corners[0], corners[1]);
    const Vector lower = across(corners[2], corners[3]);
    return {upper.x + (lower.x - upper.x) * down, upper.y + (lower.y - upper.y) * down};
}

// The plane is linear in longitude, and in latitude but for its scale: corners are farthest.
std::optional<Extent> extent_of(const ScreenPlane& plane, std::int64_t left, std::int64_t top, int side) {
    Extent extent{90.0, -90.0, 0.0, 0.0};
    double west = 0.0;
    double east = 0.0;
    std::optional<Position> first;
    for (const auto& [column, row] : {std::pair(0, 0), {side, 0}, {0, side}, {side, side}}) {
        const std::optional<Position> corner = plane.position_of(left + column, top + row);
        if (!corner) return std::nullopt;
        if (!first) first = corner;
        extent.south = std::min(extent.south, corner->latitude);
        extent.north = std::max(extent.north, corner->latitude);
        const double over = longitude_near(corner->longitude, first->longitude) - first->longitude;
        west = std::min(west, over);
        east = std::max(east, over);
    }
    if (east - west > 170.0) return std::nullopt;
    extent.west = normalize_longitude(first->longitude + west);
    extent.width = east - west;
    return extent;
}

std::vector<GridCell> cells_of(const ScreenPlane& plane, const Georeference& georeference, std::int64_t left,
                               std::int64_t top) {
    CellFinder finder(plane, georeference);
    finder.add(left, top, kBlockSide);
    return std::move(finder.cells);
}

}  // namespace zellap10::plotter
