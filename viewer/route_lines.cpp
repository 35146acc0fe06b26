#include "viewer/route_lines.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include <viewer/box.h>
#include <zellap10/plotter/route.h>
#include <zellap10/plotter/text.h>

namespace viewer {

using zellap10::plotter::format_course;
using zellap10::plotter::format_distance;
using zellap10::plotter::Georeference;

namespace {

constexpr int kPieces = 32;            // of a leg, and of a piece of it that is divided
constexpr int kDeepest = 3;            // divisions of divisions
constexpr double kLongestPiece = 100;  // window pixels
constexpr double kNear = 200;          // window pixels around it
constexpr double kRadius = 6;          // of a waypoint
constexpr double kFarAway = 1e6;       // window pixels, past which nothing is drawn
constexpr double kArm = 7;             // of the cross of a reference point
constexpr int kMostNamed = 60;         // reference points
constexpr double kLeastLabelled = 60;  // of a leg, window pixels

std::optional<ScreenPixel> spot_of(const Camera& camera, const Georeference& georeference, Position wgs84) {
    const auto pixel = georeference.pixel_of(wgs84);
    if (!pixel) return std::nullopt;
    const ScreenPixel spot = camera.to_window(*pixel);
    if (!(std::abs(spot.x) < kFarAway && std::abs(spot.y) < kFarAway)) return std::nullopt;
    return spot;
}

bool is_in_window(const Camera& camera, ScreenPixel spot, double margin) {
    return spot.x > -margin && spot.y > -margin && spot.x < camera.window().width + margin &&
           spot.y < camera.window().height + margin;
}

using Parts = std::vector<std::pair<ScreenPixel, ScreenPixel>>;

double length_of(const std::pair<ScreenPixel, ScreenPixel>& part) {
    return std::hypot(part.second.x - part.first.x, part.second.y - part.first.y);
}

// The middle of some parts that follow one another; none where they are too short for a label.
std::optional<ScreenPixel> middle_of(const Parts& parts) {
    double length = 0;
    for (const auto& part : parts)
        length += length_of(part);
    if (length < kLeastLabelled) return std::nullopt;
    double left = length / 2;
    for (const auto& part : parts) {
        const double here = length_of(part);
        if (here > 0 && here >= left) {
            const double t = left / here;
            return ScreenPixel{part.first.x + t * (part.second.x - part.first.x),
                               part.first.y + t * (part.second.y - part.first.y)};
        }
        left -= here;
    }
    return std::nullopt;
}

// Follows a rhumb line over a record, in pieces. Those that come near the window are divided again until they
// are short, since on most charts the line is bent.
class LegTracer {
public:
    LegTracer(const Camera& camera, const Georeference& georeference)
        : camera_(camera), georeference_(georeference) {}

    void trace(const Position& from, const Position& to, int depth = 0) {
        Position before = from;
        for (const Position& position : zellap10::plotter::rhumb_line(from, to, kPieces)) {
            const auto spot = spot_of(camera_, georeference_, position);
            if (spot && last_ && depth < kDeepest && is_long_and_near(*last_, *spot))
                trace(before, position, depth + 1);
            else
                add(spot);
            before = position;
        }
    }

    /// The line, in parts where a piece of it has no pixels.
    const std::vector<std::vector<ScreenPixel>>& lines() const { return lines_; }

private:
    bool is_long_and_near(ScreenPixel a, ScreenPixel b) const {
        const Box near{{-kNear, -kNear}, {camera_.window().width + kNear, camera_.window().height + kNear}};
        return std::hypot(b.x - a.x, b.y - a.y) > kLongestPiece && part_inside(near, a, b);
    }
    void add(const std::optional<ScreenPixel>& spot) {
        if (spot && !last_) lines_.emplace_back();
        if (spot) lines_.back().push_back(*spot);
        last_ = spot;
    }

    const Camera& camera_;
    const Georeference& georeference_;
    std::optional<ScreenPixel> last_;
    std::vector<std::vector<ScreenPixel>> lines_;
};

// Draws a leg and gives what of it the window shows. What lies far away is left out.
Parts draw_leg(Painter& painter, const Camera& camera, const Georeference& georeference, const Position& from,
               const Position& to, const Pen& pen) {
    const Box window{{0, 0}, {camera.window().width - 1.0, camera.window().height - 1.0}};
    LegTracer tracer(camera, georeference);
    tracer.trace(from, to);
    Parts shown;
    for (const std::vector<ScreenPixel>& line : tracer.lines()) {
        painter.line(line, pen);
        const Parts parts = parts_inside(window, line);
        shown.insert(shown.end(), parts.begin(), parts.end());
    }
    return shown;
}

}  // namespace

void draw_route(Painter& painter, const Camera& camera, const Georeference& georeference,
                const std::vector<Position>& waypoints, const Theme& theme) {
    TextStyle style{theme.paper, {0.5, 0.5}};
    for (std::size_t i = 1; i < waypoints.size(); ++i) {
        const Parts shown =
            draw_leg(painter, camera, georeference, waypoints[i - 1], waypoints[i], theme.route);
        const auto middle = middle_of(shown);
        const auto leg = zellap10::plotter::leg_between(waypoints[i - 1], waypoints[i]);
        if (middle)
            painter.text(*middle, {format_course(leg.course) + "  " + format_distance(leg.distance)}, style);
    }
    style.anchor = {0, 1};
    style.face = Typeface::kBold;
    for (std::size_t i = 0; i < waypoints.size(); ++i) {
        const auto spot = spot_of(camera, georeference, waypoints[i]);
        if (!spot || !is_in_window(camera, *spot, 2 * kRadius)) continue;
        painter.circle(*spot, kRadius, theme.route);
        painter.text({spot->x + kRadius, spot->y - kRadius}, {std::to_string(i + 1)}, style);
    }
}

void draw_points(Painter& painter, const Camera& camera, const CGEORec& record, const Theme& theme) {
    const TextStyle style{theme.paper, {0, 1}, 11};
    for (const CRefPoint* point : record.Points) {
        const ScreenPixel spot =
            camera.to_window({static_cast<double>(point->X), static_cast<double>(point->Y)});
        if (!is_in_window(camera, spot, kArm)) continue;
        painter.line({{spot.x - kArm, spot.y}, {spot.x + kArm, spot.y}}, theme.point);
        painter.line({{spot.x, spot.y - kArm}, {spot.x, spot.y + kArm}}, theme.point);
        painter.circle(spot, kArm / 2, theme.point);
        if (record.Points.GetCount() <= kMostNamed)
            painter.text({spot.x + 4, spot.y - 4}, {static_cast<const char*>(point->Name)}, style);
    }
}

}  // namespace viewer
