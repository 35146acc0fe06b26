#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <samples/draw.h>

namespace samples {

namespace {

constexpr double kLineWidth = 2;

// A star with five points, one up.
Line star(Pixel middle, double radius) {
    Line points;
    for (int i = 0; i < 10; ++i) {
        const double angle = i * kPi / 5;
        const double r = i % 2 == 0 ? radius : radius * 0.4;
        points.push_back({middle.x + r * std::sin(angle), middle.y - r * std::cos(angle)});
    }
    return points;
}

// A drop from the light down to the right.
Line flare(Pixel tip, double length) {
    Line points = {tip};
    for (int i = 0; i <= 12; ++i) {
        const double angle = -kPi / 2 + i * kPi / 12;
        const double along = length * (0.8 + 0.2 * std::cos(angle));
        const double across = length * 0.2 * std::sin(angle);
        points.push_back({tip.x + 0.7071 * (along - across), tip.y + 0.7071 * (along + across)});
    }
    return points;
}

struct Lettering {
    double size;  // in sizes of the plain lettering
    Typeface face;
    bool water;
};

Lettering lettering_of(Mark mark) {
    switch (mark) {
        case Mark::kTown:
            return {0.85, Typeface::kUpright, false};
        case Mark::kLight:
            return {0.7, Typeface::kUpright, false};
        case Mark::kIsland:
            return {0.85, Typeface::kItalic, false};
        case Mark::kSmallWater:
            return {0.75, Typeface::kItalic, true};
        case Mark::kWater:
            return {1.1, Typeface::kItalic, true};
        default:
            return {2.4, Typeface::kItalic, true};
    }
}

void draw_mark(Canvas& canvas, const Sheet& sheet, const Place& place, Pixel at) {
    if (place.mark == Mark::kTown) {
        canvas.circle(at, 0.1 * sheet.em, sheet.inks.paper, 0.2 * sheet.em);
        canvas.circle(at, 0.2 * sheet.em, sheet.inks.black, 0.1 * sheet.em);
    }
    if (place.mark == Mark::kLight) {
        canvas.fill(flare(at, 1.1 * sheet.em), sheet.inks.flare);
        canvas.fill(star(at, 0.3 * sheet.em), sheet.inks.black);
    }
}

void align_name(const Sheet& sheet, const Place& place, Pixel at, TextStyle& style) {
    const double aside = 0.5 * sheet.em;
    const double apart = 0.85 * sheet.em;
    style.at = at;
    switch (place.side) {
        case Beside::kOn:
            break;
        case Beside::kRight:
            style.at.x += aside;
            style.align = Align::kLeft;
            break;
        case Beside::kLeft:
            style.at.x -= aside;
            style.align = Align::kRight;
            break;
        case Beside::kAbove:
            style.at.y -= apart;
            break;
        case Beside::kBelow:
            style.at.y += apart;
            break;
    }
}

bool is_inside(const Area& area, Position place) {
    return place.lon > area.west && place.lon < area.east && place.lat > area.south && place.lat < area.north;
}

}  // namespace

void draw_places(Canvas& canvas, const Sheet& sheet, const Layout& layout) {
    for (const Place& place : sheet.places) {
        const Pixel at = layout.wgs84_to_pixel({place.lon, place.lat});
        if (!is_inside(sheet.area, layout.to_position(at))) continue;
        const Lettering lettering = lettering_of(place.mark);
        draw_mark(canvas, sheet, place, at);
        TextStyle style;
        style.size = lettering.size * sheet.em;
        style.face = lettering.face;
        style.colour = lettering.water ? sheet.inks.water_name : sheet.inks.black;
        align_name(sheet, place, at, style);
        canvas.text(place.name, style);
    }
}

void draw_rose(Canvas& canvas, const Sheet& sheet, const Layout& layout) {
    if (!sheet.rose) return;
    const Pixel middle = layout.to_pixel(*sheet.rose);
    const Pixel north = layout.to_pixel({sheet.rose->lon, sheet.rose->lat + 0.01});
    const double grid_north = std::atan2(north.x - middle.x, middle.y - north.y);
    const double radius = 5.5 * sheet.em;
    const auto at = [&](int bearing, double r) {
        const double angle = grid_north + bearing * kPi / 180;
        return Pixel{middle.x + r * std::sin(angle), middle.y - r * std::cos(angle)};
    };
    canvas.circle(middle, radius, sheet.inks.magenta, kLineWidth);
    for (int bearing = 0; bearing < 360; bearing += 2) {
        const double length = bearing % 30 == 0 ? 0.85 : bearing % 10 == 0 ? 0.9 : 0.95;
        canvas.stroke({at(bearing, radius), at(bearing, length * radius)}, sheet.inks.magenta, kLineWidth);
    }
    for (int bearing = 0; bearing < 360; bearing += 30) {
        TextStyle style;
        style.at = at(bearing, radius + 0.7 * sheet.em);
        style.size = 0.6 * sheet.em;
        style.colour = sheet.inks.magenta;
        canvas.text(std::to_string(bearing), style);
    }
    for (int bearing = 0; bearing < 360; bearing += 90) {
        const Line half = {at(bearing, 0.8 * radius), at(bearing + 45, 0.08 * radius), at(0, 0)};
        const Line other = {at(bearing, 0.8 * radius), at(bearing - 45, 0.08 * radius), at(0, 0)};
        canvas.fill(half, sheet.inks.magenta);
        canvas.stroke_closed(other, sheet.inks.magenta, kLineWidth);
    }
    canvas.fill(star(at(0, radius + 1.7 * sheet.em), 0.5 * sheet.em), sheet.inks.magenta);
}

void draw_title(Canvas& canvas, const Sheet& sheet, const Layout& layout) {
    std::vector<TextStyle> styles;
    Pixel at = layout.to_pixel(sheet.title.middle);
    const Pixel first = at;
    double half_width = 0;
    for (const std::string& line : sheet.title.lines) {
        TextStyle style;
        style.at = at;
        style.size = styles.empty() ? 2.2 * sheet.em : 0.8 * sheet.em;
        style.face = styles.empty() ? Typeface::kBold : Typeface::kUpright;
        style.colour = sheet.inks.black;
        half_width = std::max(half_width, canvas.text_width(line, style) / 2);
        at.y += styles.empty() ? 2.2 * sheet.em : 1.3 * sheet.em;
        styles.push_back(style);
    }
    if (styles.empty()) return;
    styles.back().face = Typeface::kBold;
    styles.back().colour = sheet.inks.magenta;
    half_width += sheet.em;
    const double top = first.y - 1.6 * sheet.em;
    const double bottom = at.y - 0.5 * sheet.em;
    canvas.fill({{first.x - half_width, top},
                 {first.x + half_width, top},
                 {first.x + half_width, bottom},
                 {first.x - half_width, bottom}},
                sheet.title.background);
    for (std::size_t i = 0; i < styles.size(); ++i)
        canvas.text(sheet.title.lines[i], styles[i]);
}

}  // namespace samples
