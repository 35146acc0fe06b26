#include "viewer/status.h"

#include <optional>

#include <viewer/scale_bar.h>
#include <zellap10/plotter/route.h>
#include <zellap10/plotter/text.h>

namespace viewer {

using zellap10::plotter::format_course;
using zellap10::plotter::format_distance;
using zellap10::plotter::format_position;
using zellap10::plotter::leg_between;

namespace {

constexpr double kGap = 12;  // between the bar and what stands above it

// The position under the pointer, and what it refers to.
std::vector<std::string> position_lines(const Scene& scene, const std::optional<Place>& place) {
    if (!scene.chart.is_open()) return {"", ""};
    if (!place) return {scene.pointer ? "no position here" : "", scene.chart.trouble};
    const CGEORec& record = *place->record;
    std::vector<std::string> parts;
    if (place->inset) parts.push_back("inset " + std::string(record.Name));
    if (!record.Datum.IsEmpty()) parts.push_back(std::string(record.Datum));
    if (record.LatitudeOffset != 0 || record.LongitudeOffset != 0)
        parts.push_back("in WGS 84 " + format_position(place->wgs84()));
    std::string below;
    for (const std::string& part : parts)
        below += (below.empty() ? "" : ", ") + part;
    return {format_position(place->chart_datum), below};
}

// Course and distance from the last waypoint to the pointer, and the route's length.
std::vector<std::string> route_lines(const Scene& scene, const std::optional<Place>& place) {
    if (scene.route.empty()) return {"", ""};
    const std::size_t count = scene.route.size();
    std::string above;
    if (place) {
        const auto leg = leg_between(scene.route.back(), place->wgs84());
        above = "from waypoint " + std::to_string(count) + ": " + format_course(leg.course) + "  " +
                format_distance(leg.distance);
    }
    if (count == 1) return {above, "route: 1 waypoint"};
    return {above, "route: " + std::to_string(count) + " waypoints, " +
                       format_distance(zellap10::plotter::route_over(scene.route).distance)};
}

// The figures of a scale in groups of three; another text as it is.
std::string grouped(std::string scale) {
    if (scale.find_first_not_of("0123456789") != std::string::npos) return scale;
    for (std::size_t i = scale.size(); i > 3; i -= 3)
        scale.insert(i - 3, " ");
    return scale;
}

std::vector<std::string> chart_lines(const Scene& scene) {
    const std::string reduction = std::to_string(scene.camera.part().reduction);
    std::string below = "view 1" + std::string(reduction == "1" ? ":" : "/") + reduction + ", " + scene.place;
    if (scene.chart.sheet.chart() && !scene.chart.record().Scale.IsEmpty())
        below = "scale 1:" + grouped(std::string(scene.chart.record().Scale)) + ", " + below;
    return {scene.chart.name, below};
}

std::vector<std::string> broken(const std::string& text) {
    constexpr std::size_t kLongest = 76;
    std::vector<std::string> lines;
    std::string rest = text;
    while (rest.size() > kLongest) {
        const std::size_t blank = rest.rfind(' ', kLongest);
        const bool has_blank = blank != std::string::npos && blank > 0;
        lines.push_back(rest.substr(0, has_blank ? blank : kLongest));
        rest.erase(0, has_blank ? blank + 1 : kLongest);
    }
    lines.push_back(rest);
    return lines;
}

}  // namespace

Status status_of(const Scene& scene) {
    const auto place =
        scene.pointer ? scene.chart.place_at(scene.camera.to_chart(*scene.pointer)) : std::nullopt;
    return {position_lines(scene, place), route_lines(scene, place), chart_lines(scene)};
}

void draw_status(Painter& painter, const Scene& scene) {
    const ScreenSize window = scene.window;
    const double top = window.height - kBarHeight;
    painter.box({0, top}, {window.width, kBarHeight}, {0, scene.theme.paper.colour, 1});

    const Status status = status_of(scene);
    TextStyle style{scene.theme.paper, {0, 0.5}, 14};
    style.paper.cover = 0;
    const double middle = top + kBarHeight / 2.0;
    painter.text({6, middle}, status.pointer, style);
    style.anchor.x = 0.5;
    painter.text({window.width / 2.0, middle}, status.route, style);
    style.anchor.x = 1;
    painter.text({window.width - 6.0, middle}, status.chart, style);
    draw_scale_bar(painter, scene.camera, scene.chart, {window.width - kGap, top - kGap}, scene.theme);
}

void draw_notice(Painter& painter, ScreenPixel middle, const std::vector<std::string>& lines,
                 const TextStyle& style) {
    std::vector<std::string> all;
    for (const std::string& line : lines) {
        const std::vector<std::string> parts = broken(line);
        all.insert(all.end(), parts.begin(), parts.end());
    }
    painter.text(middle, all, style);
}

}  // namespace viewer
