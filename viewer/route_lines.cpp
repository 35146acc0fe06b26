#include "viewer/route_lines.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr int kPieces = 32;            // of a leg at most, and of a piece of it that is divided
constexpr int kDeepest = 3;            // divisions of divisions
constexpr double kLongestPiece = 100;  // pixels; a rhumb line bends less than a pixel on it
constexpr std::size_t kMostSoftLegs = 300;
constexpr double kNear = 200;          // pixels around the scene
constexpr double kRadius = 6;          // of a waypoint
constexpr double kCrowded = 4;         // pixels to the waypoint drawn last
constexpr double kLeastLabelled = 60;  // of a leg, pixels

using Parts = std::vector<std::pair<ScreenPixel, ScreenPixel>>;

// The middle of some parts that follow one another; empty if they are too short for a label.
std::optional<ScreenPixel> middle_of(const Parts& parts, double shortest) {
    double left = 0;  // to the middle
    for (const auto& [from, to] : parts)
        left += apart(from, to) / 2;
    if (2 * left < shortest) return std::nullopt;
    for (const auto& [from, to] : parts) {
        const double here = apart(from, to);
        if (here > 0 && here >= left) {
            const double t = left / here;
            return ScreenPixel{from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)};
        }
        left -= here;
    }
    return std::nullopt;
}

// Follows a rhumb line, in pieces. Those that come near the scene are divided again until they are short,
// because the line may be bent.
class LegTracer {
public:
    explicit LegTracer(const Scene& scene) : scene_(scene), near_(scene.box.grown(kNear)) {}

    // Empty if the leg is certainly out of sight: it bends less than its own length.
    std::vector<Position> trace(Position from, Position to) {
        const auto a = scene_.to_screen(from);
        const auto b = scene_.to_screen(to);
        double pieces = kPieces;
        if (a && b && is_straight(*a, *b)) {
            const double length = apart(*a, *b);
            if (!part_inside(scene_.box.grown(length), *a, *b)) return {};
            pieces = std::min(pieces, 1 + length / kLongestPiece);
        }
        line_ = {from};
        divide(from, to, static_cast<int>(pieces), 0);
        return std::move(line_);
    }

private:
    bool is_straight(ScreenPixel a, ScreenPixel b) const { return apart(a, b) < scene_.turn_pixels / 2; }
    void divide(Position from, Position to, int pieces, int depth) {
        Position before = from;
        for (const Position position : rhumb_line(from, to, pieces)) {
            const auto a = scene_.to_screen(before);
            const auto b = scene_.to_screen(position);
            const bool is_long = a && b && apart(*a, *b) > kLongestPiece && is_straight(*a, *b);
            if (is_long && depth < kDeepest && part_inside(near_, *a, *b))
                divide(before, position, kPieces, depth + 1);
            else
                line_.push_back(position);
            before = position;
        }
    }

    const Scene& scene_;
    Box near_;
    std::vector<Position> line_;
};

// The parts of a leg that the scene shows.
Parts parts_of_leg(const Scene& scene, Position from, Position to) {
    Parts shown;
    for (const auto& line : lines_on_screen(scene, LegTracer(scene).trace(from, to))) {
        const Parts parts = parts_inside(scene.box.grown(kReach), line);
        shown.insert(shown.end(), parts.begin(), parts.end());
    }
    return shown;
}

void draw_leg(Painter& painter, const Scene& scene, Position from, Position to, const Pen& pen) {
    const Parts shown = parts_of_leg(scene, from, to);
    std::vector<ScreenPixel> line;
    for (const auto& [a, b] : shown) {
        if (!line.empty() && apart(line.back(), a) > 0) {
            painter.line(line, pen);
            line.clear();
        }
        if (line.empty()) line.push_back(a);
        line.push_back(b);
    }
    painter.line(line, pen);
    const auto middle = middle_of(shown, kLeastLabelled * painter.scale());
    if (!middle) return;
    const auto leg = leg_between(from, to);
    painter.label(*middle, format_course(leg.course) + "  " + format_distance(leg.distance),
                  {scene.theme.paper, {0.5, 0.5}}, Rank::kLeg);
}

double distance_to(const std::pair<ScreenPixel, ScreenPixel>& part, ScreenPixel pixel) {
    const auto& [a, b] = part;
    const ScreenPixel way{b.x - a.x, b.y - a.y};
    const double square = way.x * way.x + way.y * way.y;
    const double along = (pixel.x - a.x) * way.x + (pixel.y - a.y) * way.y;
    const double t = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
    return apart({a.x + t * way.x, a.y + t * way.y}, pixel);
}

}  // namespace

void draw_route(Painter& painter, const Scene& scene, const std::vector<Waypoint>& waypoints,
                std::optional<std::size_t> target) {
    Pen pen = scene.theme.route;
    pen.soft = waypoints.size() < kMostSoftLegs;
    for (std::size_t i = 1; i < waypoints.size(); ++i)
        draw_leg(painter, scene, waypoints[i - 1].position, waypoints[i].position, pen);
    const double radius = kRadius * painter.scale();
    const Box visible = scene.box.grown(2 * radius);
    std::optional<ScreenPixel> last;
    for (std::size_t i = 0; i < waypoints.size(); ++i) {
        const auto pixel = scene.to_screen(waypoints[i].position);
        if (!pixel || !visible.contains(*pixel)) continue;
        if (target == i) painter.circle(*pixel, kRadius + 4, pen);
        if (last && apart(*last, *pixel) < kCrowded) continue;
        last = pixel;
        painter.circle(*pixel, kRadius, pen);
        const std::string& name = waypoints[i].name;
        painter.label({pixel->x + radius, pixel->y - radius},
                      std::to_string(i + 1) + (name.empty() ? "" : " " + name),
                      {scene.theme.paper, {0, 1}, 13, Typeface::kBold}, Rank::kWaypoint);
    }
}

std::optional<std::size_t> waypoint_at(const Scene& scene, const std::vector<Waypoint>& waypoints,
                                       ScreenPixel pixel, double reach) {
    for (std::size_t i = waypoints.size(); i-- > 0;) {
        const auto place = scene.to_screen(waypoints[i].position);
        if (place && apart(*place, pixel) <= reach) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> leg_at(const Scene& scene, const std::vector<Waypoint>& waypoints,
                                  ScreenPixel pixel, double reach) {
    for (std::size_t i = 1; i < waypoints.size(); ++i) {
        for (const auto& part : parts_of_leg(scene, waypoints[i - 1].position, waypoints[i].position)) {
            if (distance_to(part, pixel) <= reach) return i - 1;
        }
    }
    return std::nullopt;
}

}  // namespace viewer
