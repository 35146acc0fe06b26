#include <algorithm>
#include <cmath>

#include <samples/draw.h>

namespace samples {

namespace {

constexpr double kLongestEdge = 0.2;  // degrees
constexpr double kContourWidth = 2;
constexpr double kShoreWidth = 3;
constexpr double kPierWidth = 14;
constexpr double kPierEdge = 3;

// Long edges are cuts along meridians and parallels. They are divided, because they may be curves.
Line line_of(const std::vector<Position>& places, const Layout& layout) {
    Line line;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Position from = places[i > 0 ? i - 1 : 0];
        const Position to = places[i];
        const double length = std::max(std::fabs(to.lon - from.lon), std::fabs(to.lat - from.lat));
        const int pieces = std::max(1, static_cast<int>(std::ceil(length / kLongestEdge)));
        for (int piece = 1; piece <= pieces; ++piece) {
            const double part = static_cast<double>(piece) / pieces;
            line.push_back(layout.wgs84_to_pixel(
                {from.lon + (to.lon - from.lon) * part, from.lat + (to.lat - from.lat) * part}));
        }
    }
    return line;
}

std::vector<Line> lines_of(const std::vector<std::vector<Position>>& outlines, const Layout& layout) {
    std::vector<Line> lines;
    for (const std::vector<Position>& outline : outlines)
        lines.push_back(line_of(outline, layout));
    return lines;
}

void stroke_all(Canvas& canvas, const std::vector<Line>& lines, int colour, double width) {
    for (const Line& line : lines)
        canvas.stroke(line, colour, width);
}

}  // namespace

void draw_land(Canvas& canvas, const Sheet& sheet, const Layout& layout, const Coast& coast) {
    const std::vector<Line> shores = lines_of(coast.shores, layout);
    canvas.clip(area_outline(layout, 0));
    // A tint covers its distance on both sides of the shore. The next one and the land are drawn over it.
    for (std::size_t i = 0; i < sheet.tint_miles.size(); ++i) {
        const double width = 2 * sheet.tint_miles[i] * layout.pixels_per_mile;
        if (sheet.inks.contour != 0) {
            stroke_all(canvas, shores, sheet.inks.contour, width + 2 * kContourWidth);
        }
        stroke_all(canvas, shores, sheet.inks.tints[i], width);
    }
    for (const Line& ring : lines_of(coast.land, layout))
        canvas.fill(ring, sheet.inks.land);
    stroke_all(canvas, shores, sheet.inks.shore, kShoreWidth);
    canvas.end_clip();
}

void draw_piers(Canvas& canvas, const Sheet& sheet, const Layout& layout) {
    const std::vector<Line> piers = lines_of(sheet.piers, layout);
    canvas.clip(area_outline(layout, 0));
    stroke_all(canvas, piers, sheet.inks.shore, kPierWidth + 2 * kPierEdge);
    stroke_all(canvas, piers, sheet.inks.land, kPierWidth);
    canvas.end_clip();
}

}  // namespace samples
