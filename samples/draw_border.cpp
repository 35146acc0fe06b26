#include <algorithm>
#include <cmath>
#include <string>

#include <samples/draw.h>

namespace samples {

namespace {

enum class Side { kSouth, kEast, kNorth, kWest };

constexpr int kPiecesPerSide = 64;    // of a side or a grid line, which may be curved
constexpr double kStepInside = 0.01;  // degrees, to find the outward direction
constexpr double kLineWidth = 2;

// Distances from the area outward, in sizes of the lettering.
constexpr double kBarsFrom = 0.35;
constexpr double kBarsTo = 0.65;
constexpr double kFiguresAbove = 1.9;  // northern and southern side
constexpr double kFiguresAside = 2.5;
constexpr double kEdge = 4.2;
constexpr double kEdgeWidth = 0.2;

bool runs_east(Side side) {
    return side == Side::kSouth || side == Side::kNorth;
}

// The position on a side, moved `inside` degrees into the area. `along` is a longitude on the northern and
// southern side, else a latitude.
Position on_side(const Area& area, Side side, double along, double inside) {
    switch (side) {
        case Side::kSouth:
            return {along, area.south + inside};
        case Side::kEast:
            return {area.east - inside, along};
        case Side::kNorth:
            return {along, area.north - inside};
        default:
            return {area.west + inside, along};
    }
}

// The unit vector perpendicular to a side, outward, in pixels.
Pixel outward_of(const Layout& layout, Side side, double along) {
    const Pixel edge = layout.to_pixel(on_side(layout.area, side, along, 0));
    const Pixel inside = layout.to_pixel(on_side(layout.area, side, along, kStepInside));
    const double length = std::hypot(edge.x - inside.x, edge.y - inside.y);
    return {(edge.x - inside.x) / length, (edge.y - inside.y) / length};
}

Pixel outside(const Layout& layout, Side side, double along, double distance) {
    const Pixel edge = layout.to_pixel(on_side(layout.area, side, along, 0));
    const Pixel out = outward_of(layout, side, along);
    return {edge.x + distance * out.x, edge.y + distance * out.y};
}

// A line along a side, moved outward, both ends included.
Line along_side(const Layout& layout, Side side, double from, double to, double distance, int pieces) {
    Line line;
    for (int i = 0; i <= pieces; ++i) {
        line.push_back(outside(layout, side, from + (to - from) * i / pieces, distance));
    }
    return line;
}

// The corner between two sides, moved outward from both.
Pixel corner(const Layout& layout, Side side, double along, Side next, double next_along, double distance) {
    const Pixel on_first = outside(layout, side, along, distance);
    const Pixel out = outward_of(layout, next, next_along);
    return {on_first.x + distance * out.x, on_first.y + distance * out.y};
}

std::string degrees_text(int degrees) {
    return std::to_string(degrees) + "°";
}

// Steps of less than a degree, in minutes.
std::string minutes_text(int steps, int per_degree) {
    const int tenths = steps * 600 / per_degree;
    std::string text = std::to_string(tenths / 10);
    if (tenths % 10 != 0) text += "." + std::to_string(tenths % 10);
    return text + "'";
}

// The figure of a longitude or latitude: full degrees with their hemisphere, else the minutes. `in_full`
// adds the degrees, for a side without a full degree.
std::string figure_text(bool longitude, int steps, int per_degree, bool in_full) {
    if (longitude && steps > 180 * per_degree) steps -= 360 * per_degree;
    const int degrees = std::abs(steps) / per_degree;
    const int rest = std::abs(steps) % per_degree;
    std::string text = rest == 0 || in_full ? degrees_text(degrees) : "";
    if (rest != 0) text += minutes_text(rest, per_degree);
    if (rest != 0 || steps == 0 || (longitude && steps == 180 * per_degree)) return text;
    if (longitude) return text + (steps > 0 ? "E" : "W");
    return text + (steps > 0 ? "N" : "S");
}

// The first multiple of a step at or above a number of degrees, in parts of a degree.
int first_step(double degrees, int step, int per_degree) {
    return static_cast<int>(std::ceil(degrees * per_degree / step - 1e-9)) * step;
}

struct Span {
    double from, to;  // degrees
};

Span span_of(const Area& area, Side side) {
    return runs_east(side) ? Span{area.west, area.east} : Span{area.south, area.north};
}

void draw_bars(Canvas& canvas, const Sheet& sheet, const Layout& layout, Side side) {
    const auto [from, to] = span_of(layout.area, side);
    const int step = sheet.graduation.bar;
    const double unit = sheet.graduation.per_degree;
    const double middle = (kBarsFrom + kBarsTo) / 2 * sheet.em;
    const double half = (kBarsTo - kBarsFrom) / 2 * sheet.em;
    for (int n = first_step(from, step, sheet.graduation.per_degree) - step; n < to * unit; n += step) {
        if ((n / step) % 2 != 0) continue;
        const double start = std::max(from, n / unit);
        const double end = std::min(to, (n + step) / unit);
        Line bar = along_side(layout, side, start, end, middle - half, 2);
        const Line back = along_side(layout, side, end, start, middle + half, 2);
        bar.insert(bar.end(), back.begin(), back.end());
        if (start < end) canvas.fill(bar, sheet.inks.black);
    }
}

void draw_ticks(Canvas& canvas, const Sheet& sheet, const Layout& layout, Side side) {
    const auto [from, to] = span_of(layout.area, side);
    const Graduation& graduation = sheet.graduation;
    const double unit = graduation.per_degree;
    for (int n = first_step(from, graduation.tick, graduation.per_degree); n <= to * unit;
         n += graduation.tick) {
        double length = kBarsFrom;
        if (n % graduation.bar == 0) length = kBarsTo;
        if (n % graduation.line == 0) length = 1;
        canvas.stroke(
            {outside(layout, side, n / unit, 0), outside(layout, side, n / unit, length * sheet.em)},
            sheet.inks.black, kLineWidth);
    }
}

void draw_figures(Canvas& canvas, const Sheet& sheet, const Layout& layout, Side side) {
    const auto [from, to] = span_of(layout.area, side);
    const int step = sheet.graduation.figure;
    const int per_degree = sheet.graduation.per_degree;
    const double away = runs_east(side) ? kFiguresAbove : kFiguresAside;
    const bool in_full = first_step(from, per_degree, per_degree) > to * per_degree;
    for (int n = first_step(from, step, per_degree); n <= to * per_degree; n += step) {
        TextStyle style;
        style.at = outside(layout, side, n / static_cast<double>(per_degree), away * sheet.em);
        style.colour = sheet.inks.black;
        style.face = n % per_degree == 0 ? Typeface::kBold : Typeface::kUpright;
        style.size = n % per_degree == 0 ? sheet.em : sheet.em * (in_full ? 0.65 : 0.8);
        canvas.text(figure_text(runs_east(side), n, per_degree, in_full), style);
    }
}

}  // namespace

Line area_outline(const Layout& layout, double outward) {
    const Area& area = layout.area;
    struct Edge {
        Side side, next;
        double from, to, next_from;
    };
    const Edge edges[] = {
        {Side::kSouth, Side::kEast, area.west, area.east, area.south},
        {Side::kEast, Side::kNorth, area.south, area.north, area.east},
        {Side::kNorth, Side::kWest, area.east, area.west, area.north},
        {Side::kWest, Side::kSouth, area.north, area.south, area.west},
    };
    Line outline;
    for (const Edge& e : edges) {
        Line side = along_side(layout, e.side, e.from, e.to, outward, kPiecesPerSide);
        outline.insert(outline.end(), side.begin() + 1, side.end() - 1);
        outline.push_back(corner(layout, e.side, e.to, e.next, e.next_from, outward));
    }
    return outline;
}

Line frame_outline(const Sheet& sheet, const Layout& layout) {
    return area_outline(layout, kEdge * sheet.em);
}

void draw_grid(Canvas& canvas, const Sheet& sheet, const Layout& layout) {
    const Area& area = layout.area;
    const int step = sheet.graduation.line;
    const int per_degree = sheet.graduation.per_degree;
    const double unit = per_degree;
    canvas.clip(area_outline(layout, 0));
    for (int n = first_step(area.west, step, per_degree); n <= area.east * unit; n += step) {
        Line meridian;
        for (int i = 0; i <= kPiecesPerSide; ++i) {
            const double lat = area.south + (area.north - area.south) * i / kPiecesPerSide;
            meridian.push_back(layout.to_pixel({n / unit, lat}));
        }
        canvas.stroke(meridian, sheet.inks.grid, kLineWidth);
    }
    for (int n = first_step(area.south, step, per_degree); n <= area.north * unit; n += step) {
        Line parallel;
        for (int i = 0; i <= kPiecesPerSide; ++i) {
            const double lon = area.west + (area.east - area.west) * i / kPiecesPerSide;
            parallel.push_back(layout.to_pixel({lon, n / unit}));
        }
        canvas.stroke(parallel, sheet.inks.grid, kLineWidth);
    }
    canvas.end_clip();
}

void draw_border(Canvas& canvas, const Sheet& sheet, const Layout& layout) {
    for (const Side side : {Side::kSouth, Side::kEast, Side::kNorth, Side::kWest}) {
        draw_bars(canvas, sheet, layout, side);
        draw_ticks(canvas, sheet, layout, side);
        draw_figures(canvas, sheet, layout, side);
    }
    for (const double distance : {0.0, kBarsFrom, kBarsTo}) {
        canvas.stroke_closed(area_outline(layout, distance * sheet.em), sheet.inks.black, kLineWidth);
    }
    canvas.stroke_closed(frame_outline(sheet, layout), sheet.inks.black, kEdgeWidth * sheet.em);
}

}  // namespace samples
