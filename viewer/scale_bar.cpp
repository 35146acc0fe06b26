#include "viewer/scale_bar.h"

#include <cmath>

#include <zellap10/plotter/route.h>
#include <zellap10/plotter/text.h>

namespace viewer {

using zellap10::plotter::kMetresPerNauticalMile;

namespace {

constexpr double kLongest = 200;  // window pixels
constexpr int kHeight = 6;

double round_number(double value) {
    const double power = std::pow(10, std::floor(std::log10(value)));
    for (const double factor : {5, 2}) {
        if (factor * power <= value) return factor * power;
    }
    return power;
}

}  // namespace

double miles_a_pixel(const Camera& camera, const Chart& chart) {
    constexpr double kPixels = 100;
    const ScreenPixel middle = camera.middle();
    const auto here = chart.place_at(camera.to_chart(middle));
    if (!here) return 0;
    const auto there =
        here->georeference.chart_datum_position_of(camera.to_chart({middle.x + kPixels, middle.y}));
    return there ? zellap10::plotter::leg_between(here->chart_datum, *there).distance / kPixels : 0;
}

double bar_length(double miles) {
    if (miles >= 0.1) return round_number(miles);
    return round_number(miles * kMetresPerNauticalMile) / kMetresPerNauticalMile;
}

void draw_scale_bar(Painter& painter, const Camera& camera, const Chart& chart, ScreenPixel at,
                    const Theme& theme) {
    const double miles = miles_a_pixel(camera, chart);
    if (!(miles > 0) || !std::isfinite(miles)) return;
    const double length = bar_length(miles * kLongest);
    const double width = length / miles;

    const TextStyle style{theme.paper, {0.5, 1}};
    const std::string text = zellap10::plotter::format_distance(length);
    const ScreenPixel corner{std::round(at.x - width), std::round(at.y - kHeight)};
    painter.text({corner.x + width / 2, corner.y - 2}, {text}, style);
    const int whole = static_cast<int>(std::round(width));
    const int half = whole / 2;
    painter.box({corner.x - 2, corner.y - 2}, {whole + 4, kHeight + 4}, {0, theme.paper.colour, 1});
    painter.box(corner, {half, kHeight}, {0, theme.paper.ink, 1});
    painter.box({corner.x + half, corner.y + kHeight - 1}, {whole - half, 1}, {0, theme.paper.ink, 1});
    painter.box({corner.x + half, corner.y}, {whole - half, 1}, {0, theme.paper.ink, 1});
    painter.box({corner.x + whole - 1, corner.y}, {1, kHeight}, {0, theme.paper.ink, 1});
}

}  // namespace viewer
