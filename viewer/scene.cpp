#include "viewer/scene.h"

#include <cmath>
#include <limits>

namespace viewer {

namespace {

constexpr double kFarAway = 1e6;  // pixels; nothing is drawn farther outside

}  // namespace

Scene map_scene(const MapView& view, const Theme& theme) {
    return {[view](Position position) { return view.to_screen(position); },
            [view](ScreenPixel pixel) { return view.to_position(pixel); },
            view.pixels_around(),
            {{0, 0}, {view.size().width - 1.0, view.size().height - 1.0}},
            theme};
}

Scene sheet_scene(const Georeference& georeference, const Viewport& viewport, const Box& box,
                  const Theme& theme) {
    const auto to_screen = [georeference, viewport](Position position) -> std::optional<ScreenPixel> {
        const auto pixel = georeference.pixel_of(position);
        const auto at = pixel ? std::optional(viewport.to_screen(*pixel)) : std::nullopt;
        return at && std::abs(at->x) < kFarAway && std::abs(at->y) < kFarAway ? at : std::nullopt;
    };
    return {to_screen,
            [georeference, viewport](ScreenPixel pixel) {
                return georeference.position_of(viewport.to_chart(pixel));
            },
            std::numeric_limits<double>::infinity(), box, theme};
}

std::vector<std::vector<ScreenPixel>> lines_on_screen(const Scene& scene,
                                                      const std::vector<Position>& positions) {
    std::vector<std::vector<ScreenPixel>> lines;
    std::optional<ScreenPixel> last;
    for (const Position position : positions) {
        const auto pixel = scene.to_screen(position);
        if (pixel && (!last || apart(*last, *pixel) > scene.turn_pixels / 2)) lines.emplace_back();
        if (pixel) lines.back().push_back(*pixel);
        last = pixel;
    }
    return lines;
}

}  // namespace viewer
