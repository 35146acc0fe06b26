#include "viewer/scale_bar.h"

#include <cmath>

#include <zellap10/plotter/route.h>
#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr double kLongest = 200;  // pixels
constexpr double kHeight = 6;

double round_number(double value) {
    const double power = std::pow(10, std::floor(std::log10(value)));
    for (const double factor : {5, 2}) {
        if (factor * power <= value) return factor * power;
    }
    return power;
}

// In the middle of the scene; 0 if there is no position.
double miles_per_pixel(const Scene& scene) {
    constexpr double kPixels = 10;
    const ScreenPixel middle = scene.box.at(0.5, 0.5);
    const auto here = scene.to_position(middle);
    const auto there = scene.to_position({middle.x + kPixels, middle.y});
    return here && there ? leg_between(*here, *there).distance / kPixels : 0;
}

}  // namespace

double bar_length(double miles) {
    if (miles >= 0.1) return round_number(miles);
    return round_number(miles * kMetresPerNauticalMile) / kMetresPerNauticalMile;
}

void draw_scale_bar(Painter& painter, const Scene& scene, ScreenPixel at) {
    const double miles = miles_per_pixel(scene);
    if (!(miles > 0) || !std::isfinite(miles)) return;
    const double scale = painter.scale();
    const double length = bar_length(miles * kLongest * scale);
    const double width = std::round(length / miles);
    const double half = std::round(width / 2);
    const double height = std::round(kHeight * scale);

    const Paper& paper = scene.theme.paper;
    const ScreenPixel corner{std::round(at.x) - width, std::round(at.y) - height};
    painter.text({corner.x + half, corner.y - 2}, {format_distance(length)}, {paper, {0.5, 1}});
    const auto fill = [&](double left, double top, double right, double bottom, Argb colour) {
        painter.box({{corner.x + left, corner.y + top}, {corner.x + right, corner.y + bottom}}, colour);
    };
    fill(-2, -2, width + 2, height + 2, paper.colour);
    fill(0, 0, width, height, paper.ink);
    fill(half, 1, width - 1, height - 1, paper.colour);
    painter.keep_free({{corner.x - 2, corner.y - 2}, {at.x + 2, at.y + 2}});
}

}  // namespace viewer
