#include <algorithm>
#include <cmath>
#include <string>

#include <samples/draw.h>

namespace samples {

namespace {

enum class Side { kSouth, kEast, kNorth, kWest };

constexpr int kPiecesPerSide = 64;    // of a side or a line across, which may be curves
constexpr double kStepInside = 0.01;  // degrees, to find which way is out
constexpr double kLineWidth = 2;

// Of the border, in sizes of the lettering, counted outward from the area.
constexpr double kBarsFrom = 0.35;
constexpr double kBarsTo = 0.65;
constexpr double kFiguresAbove = 1.9;  // of the sides that run east
constexpr double kFiguresAside = 2.5;
constexpr double kEdge = 4.2;
constexpr double kEdgeWidth = 0.2;

bool runs_east(Side side) {
    return side == Side::kSouth || side == Side::kNorth;
}

// The position on a side at a longitude or latitude, whichever changes along that side, and so many degrees
// inside the area.
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

// One pixel straight out of a side.
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

// From `from` to `to` along a side, moved outward, the ends included.
Line along_side(const Layout& layout, Side side, double from, double to, double distance, int pieces) {
    Line line;
    for (int i = 0; i <= pieces; ++i) {
        line.push_back(outside(layout, side, from + (to - from) * i / pieces, distance));
    }
    return line;
}

// The corner in which one side ends and the next begins, moved out of both.
Pixel corner(const Layout& layout, Side side, double along, Side next, double next_along, double distance) {
    const Pixel on_first = outside(layout, side, along, distance);
    const Pixel out = outward_of(layout, next, next_along);
    return {on_first.x + distance * out.x, on_first.y + distance * out.y};
}

std::string degrees_text(int minutes) {
    const int rest = std::abs(minutes) % 60;
    if (rest != 0) return std::to_string(rest) + "'";
    return std::to_string(std::abs(minutes) / 60) + "°";
}

// The figure of a longitude or latitude: whole degrees with their hemisphere, else the minutes alone unless
// the degrees stand nowhere on the side.
std::string figure_text(bool longitude, int minutes, bool in_full) {
    if (longitude && minutes > 180 * 60) minutes -= 360 * 60;
    std::string text = degrees_text(minutes);
    if (minutes % 60 != 0 && in_full) text.insert(0, degrees_text(minutes / 60 * 60));
    if ((minutes % 60 != 0 && !in_full) || minutes == 0 || (longitude && minutes == 180 * 60)) return text;
    if (longitude) return text + (minutes > 0 ? "E" : "W");
    return text + (minutes > 0 ? "N" : "S");
}

// The first whole step at or above a number of degrees, in minutes.
int first_step(double degrees, int step) {
    return static_cast<int>(std::ceil(degrees * 60 / step - 1e-9)) * step;
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
    const double middle = (kBarsFrom + kBarsTo) / 2 * sheet.em;
    const double half = (kBarsTo - kBarsFrom) / 2 * sheet.em;
    for (int minutes = first_step(from, step) - step; minutes < to * 60; minutes += step) {
        if ((minutes / step) % 2 != 0) continue;
        const double start = std::max(from, minutes / 60.0);
        const double end = std::min(to, (minutes + step) / 60.0);
        Line bar = along_side(layout, side, start, end, middle - half, 2);
        const Line back = along_side(layout, side, end, start, middle + half, 2);
        bar.insert(bar.end(), back.begin(), back.end());
        if (start < end) canvas.fill(bar, sheet.inks.black);
    }
}

void draw_ticks(Canvas& canvas, const Sheet& sheet, const Layout& layout, Side side) {
    const auto [from, to] = span_of(layout.area, side);
    const Graduation& graduation = sheet.graduation;
    for (int minutes = first_step(from, graduation.tick); minutes <= to * 60; minutes += graduation.tick) {
        double length = kBarsFrom;
        if (minutes % graduation.bar == 0) length = kBarsTo;
        if (minutes % graduation.line == 0) length = 1;
        canvas.stroke({outside(layout, side, minutes / 60.0, 0),
                       outside(layout, side, minutes / 60.0, length * sheet.em)},
                      sheet.inks.black, kLineWidth);
    }
}

void draw_figures(Canvas& canvas, const Sheet& sheet, const Layout& layout, Side side) {
    const auto [from, to] = span_of(layout.area, side);
    const int step = sheet.graduation.figure;
    const double away = runs_east(side) ? kFiguresAbove : kFiguresAside;
    const bool in_full = first_step(from, 60) > to * 60;
    for (int minutes = first_step(from, step); minutes <= to * 60; minutes += step) {
        TextStyle style;
        style.at = outside(layout, side, minutes / 60.0, away * sheet.em);
        style.colour = sheet.inks.black;
        style.face = minutes % 60 == 0 ? Typeface::kBold : Typeface::kUpright;
        style.size = minutes % 60 == 0 ? sheet.em : sheet.em * (in_full ? 0.65 : 0.8);
        canvas.text(figure_text(runs_east(side), minutes, in_full), style);
    }
}

}  // namespace

Line area_outline(const Layout& layout, double outward) {
    const Area& area = layout.area;
    struct Course {
        Side side, next;
        double from, to, next_from;
    };
    const Course courses[] = {
        {Side::kSouth, Side::kEast, area.west, area.east, area.south},
        {Side::kEast, Side::kNorth, area.south, area.north, area.east},
        {Side::kNorth, Side::kWest, area.east, area.west, area.north},
        {Side::kWest, Side::kSouth, area.north, area.south, area.west},
    };
    Line outline;
    for (const Course& c : courses) {
        Line side = along_side(layout, c.side, c.from, c.to, outward, kPiecesPerSide);
        outline.insert(outline.end(), side.begin() + 1, side.end() - 1);
        outline.push_back(corner(layout, c.side, c.to, c.next, c.next_from, outward));
    }
    return outline;
}

Line frame_outline(const Sheet& sheet, const Layout& layout) {
    return area_outline(layout, kEdge * sheet.em);
}

void draw_grid(Canvas& canvas, const Sheet& sheet, const Layout& layout) {
    const Area& area = layout.area;
    const int step = sheet.graduation.line;
    canvas.clip(area_outline(layout, 0));
    for (int minutes = first_step(area.west, step); minutes <= area.east * 60; minutes += step) {
        Line meridian;
        for (int i = 0; i <= kPiecesPerSide; ++i) {
            const double lat = area.south + (area.north - area.south) * i / kPiecesPerSide;
            meridian.push_back(layout.to_pixel({minutes / 60.0, lat}));
        }
        canvas.stroke(meridian, sheet.inks.grid, kLineWidth);
    }
    for (int minutes = first_step(area.south, step); minutes <= area.north * 60; minutes += step) {
        Line parallel;
        for (int i = 0; i <= kPiecesPerSide; ++i) {
            const double lon = area.west + (area.east - area.west) * i / kPiecesPerSide;
            parallel.push_back(layout.to_pixel({lon, minutes / 60.0}));
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
