#include "viewer/status.h"

#include <cmath>
#include <cstddef>

#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr std::size_t kLongestLine = 76;  // bytes
constexpr std::size_t kLongestPath = 48;
constexpr std::size_t kMostLines = 8;

bool starts_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

// With one digit after the point, in any locale.
std::string tenths(double value) {
    const long rounded = std::lround(value * 10);
    return std::to_string(rounded / 10) + "." + std::to_string(rounded % 10);
}

}  // namespace

void draw_status(Painter& painter, ScreenSize window, const Status& status, const Theme& theme) {
    const double height = kBarHeight * painter.scale();
    const double top = window.height - height;
    const Box bar{{0, top}, {static_cast<double>(window.width), static_cast<double>(window.height)}};
    painter.box(bar, theme.paper.colour);
    TextStyle style{theme.paper, {0, 0.5}, 14};
    style.paper.cover = 0;
    const double middle = top + height / 2;
    const double right = painter.text({6, middle}, status.pointer, style).lower_right.x;
    style.anchor.x = 1;
    const double left = painter.text({window.width - 6.0, middle}, status.view, style).upper_left.x;
    style.anchor.x = 0.5;
    painter.text({(left + right) / 2, middle}, status.route, style);
    painter.keep_free(bar);
}

std::vector<std::string> route_lines(const std::vector<Waypoint>& waypoints,
                                     std::optional<Position> pointer) {
    if (waypoints.empty()) return {"", ""};
    std::string above;
    if (pointer) {
        const auto leg = leg_between(waypoints.back().position, *pointer);
        above = "from waypoint " + std::to_string(waypoints.size()) + ": " + format_course(leg.course) +
                "  " + format_distance(leg.distance);
    }
    if (waypoints.size() == 1) return {above, "route: 1 waypoint"};
    std::vector<Position> positions;
    for (const Waypoint& waypoint : waypoints)
        positions.push_back(waypoint.position);
    return {above, "route: " + std::to_string(waypoints.size()) + " waypoints, " +
                       format_distance(route_over(positions).distance)};
}

std::string size_text(double reduction) {
    if (!(reduction >= 1.0 / 99 && reduction < 1e6)) return "";
    if (std::abs(std::log(reduction)) < 0.02) return "full size";
    return reduction > 1 ? "1/" + tenths(reduction) + " of its size"
                         : "enlarged " + tenths(1 / reduction) + " times";
}

std::string short_path(const std::string& path) {
    if (path.size() <= kLongestPath) return path;
    std::size_t start = path.size() - kLongestPath;
    while (start < path.size() && !starts_character(path[start]))
        ++start;
    return "..." + path.substr(start);
}

std::vector<std::string> wrapped(const std::string& text) {
    std::vector<std::string> lines;
    std::string rest = text;
    while (rest.size() > kLongestLine) {
        std::size_t end = rest.rfind(' ', kLongestLine);
        const bool at_blank = end != std::string::npos && end > 0;
        if (!at_blank) end = kLongestLine;
        while (!at_blank && end > kLongestLine - 4 && !starts_character(rest[end]))
            --end;
        lines.push_back(rest.substr(0, end));
        rest.erase(0, end + (at_blank ? 1 : 0));
    }
    lines.push_back(rest);
    // The end of a message has the reason.
    constexpr std::ptrdiff_t kHalf = kMostLines / 2;
    if (lines.size() > kMostLines) {
        lines.erase(lines.begin() + kHalf, lines.end() - kHalf);
        lines[kHalf - 1] = "...";
    }
    return lines;
}

void draw_notice(Painter& painter, ScreenPixel middle, const std::vector<std::string>& texts,
                 const TextStyle& style) {
    std::vector<std::string> lines;
    for (const std::string& text : texts) {
        for (std::string& line : wrapped(text))
            lines.push_back(std::move(line));
    }
    painter.text(middle, lines, style);
}

}  // namespace viewer
