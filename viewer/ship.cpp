#include "viewer/ship.h"

#include <cmath>

#include <zellap10/plotter/progress.h>
#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr double kPredictedMinutes = 6;
constexpr double kTrackStep = 2;  // pixels between points of the track that are drawn
constexpr std::size_t kMostSoftLines = 1000;

// The direction of a course on the screen, of length 1.
std::optional<ScreenPixel> direction(const Scene& scene, Position ship, std::optional<double> course) {
    const auto ahead = predict({std::nullopt, ship, 60.0, course, std::nullopt}, 0.1);  // 0.1 NM
    const auto from = scene.to_screen(ship);
    const auto to = ahead ? scene.to_screen(*ahead) : std::nullopt;
    if (!from || !to || !(apart(*from, *to) > 0)) return std::nullopt;
    const double length = apart(*from, *to);
    return ScreenPixel{(to->x - from->x) / length, (to->y - from->y) / length};
}

}  // namespace

std::vector<std::string> ship_lines(const Track& track, const std::vector<Waypoint>& route, std::size_t next,
                                    Track::Clock::time_point now) {
    const auto& fix = track.last_fix();
    if (!fix) return {"NO FIX YET"};
    std::vector<std::string> lines;
    if (const auto age = track.age(now); age > Track::kLostAfter) {
        const double seconds = std::chrono::duration<double>(age).count();
        lines.push_back("FIX LOST for " + (seconds < 100 ? std::to_string(std::lround(seconds)) + " s"
                                                         : format_duration(seconds)));
    }
    lines.push_back(format_position(fix->position));
    lines.push_back("SOG " + format_speed(fix->speed) + "  COG " + format_course(fix->course));
    if (fix->heading) lines.back() += "  HDG " + format_course(fix->heading);
    if (next >= route.size()) return lines;
    const Progress progress = progress_to(*fix, route, next);
    const std::string& name = route[next].name;
    lines.push_back("to waypoint " + std::to_string(next + 1) + (name.empty() ? "" : " " + name));
    lines.push_back("BRG " + format_course(progress.bearing) + "  DIST " +
                    format_distance(progress.distance));
    lines.push_back("XTD ---");
    if (const auto off = progress.cross_track)
        lines.back() =
            "XTD " + format_distance(std::abs(*off)) + (*off > 0 ? " to the right" : " to the left");
    lines.back() += "  TTG " + format_duration(progress.time);
    return lines;
}

void draw_track(Painter& painter, const Scene& scene, const std::vector<Track::Point>& points) {
    const Box visible = scene.box.grown(10);
    const double least = kTrackStep * (painter.is_soft() ? 1 : 3);
    std::vector<std::vector<ScreenPixel>> lines;
    std::size_t count = 0;
    bool goes_on = false;
    std::optional<ScreenPixel> last;
    for (const Track::Point& point : points) {
        const auto pixel = scene.to_screen(point.position);
        const bool joins = pixel && last && !point.starts_line;
        const double step = joins ? apart(*last, *pixel) : 0;
        if (joins && step < least && &point != &points.back()) continue;
        const bool shows = joins && step < scene.turn_pixels / 2 && part_inside(visible, *last, *pixel);
        if (shows && !goes_on) lines.push_back({*last});
        if (shows) lines.back().push_back(*pixel);
        count += shows;
        goes_on = shows;
        last = pixel;
    }
    Pen pen = scene.theme.track;
    pen.soft = count < kMostSoftLines;
    for (const auto& line : lines)
        painter.line(line, pen);
}

void draw_ship(Painter& painter, const Scene& scene, const Fix& fix, bool lost) {
    const auto ship = scene.to_screen(fix.position);
    if (!ship) return;
    const Theme& theme = scene.theme;
    const auto predicted = lost ? std::nullopt : predict(fix, kPredictedMinutes);
    const auto end = predicted ? scene.to_screen(*predicted) : std::nullopt;
    if (end && apart(*ship, *end) < scene.turn_pixels / 2) {
        if (const auto part = part_inside(scene.box.grown(10), *ship, *end)) {
            painter.line({part->first, part->second}, theme.ship);
            painter.circle(*end, 3, theme.ship);
        }
    }
    if (!scene.box.grown(30 * painter.scale()).contains(*ship)) return;
    const double size = painter.scale();
    painter.keep_free(Box{*ship, *ship}.grown(16 * size));
    const auto ahead = direction(scene, fix.position, fix.heading ? fix.heading : fix.course);
    if (ahead) {
        const auto at = [&](double forward, double right) {
            return ScreenPixel{ship->x + size * (forward * ahead->x - right * ahead->y),
                               ship->y + size * (forward * ahead->y + right * ahead->x)};
        };
        painter.polygon({at(16, 0), at(4, 6), at(-11, 6), at(-11, -6), at(4, -6)}, theme.paper.colour,
                        theme.ship);
    } else {
        painter.circle(*ship, 9, theme.ship);
    }
    painter.circle(*ship, 2, theme.ship);
    if (!lost) return;
    const double arm = 14 * size;
    painter.line({{ship->x - arm, ship->y - arm}, {ship->x + arm, ship->y + arm}}, theme.ship);
    painter.line({{ship->x - arm, ship->y + arm}, {ship->x + arm, ship->y - arm}}, theme.ship);
}

}  // namespace viewer
