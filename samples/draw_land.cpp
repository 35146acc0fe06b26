#include <algorithm>

#include <samples/draw.h>

namespace samples {

namespace {

constexpr double kContourWidth = 2;
constexpr double kShoreWidth = 3;

std::vector<Line> lines_of(const std::vector<std::vector<Position>>& places, const Layout& layout) {
    std::vector<Line> lines;
    for (const std::vector<Position>& place : places) {
        Line line(place.size());
        std::transform(place.begin(), place.end(), line.begin(), layout.to_pixel);
        lines.push_back(std::move(line));
    }
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
    // A tint is what lies within its distance of the shore: a stroke of twice the width, under the next one.
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

}  // namespace samples
