#include "viewer/plot.h"

#include <algorithm>
#include <vector>

#include <viewer/grid.h>
#include <viewer/route_lines.h>

namespace viewer {

namespace {

Box window_box(const Camera& camera) {
    return {{0, 0}, {camera.window().width - 1.0, camera.window().height - 1.0}};
}

Box chart_box(const Camera& camera) {
    return {camera.to_window({0, 0}),
            camera.to_window({camera.chart().width - 1.0, camera.chart().height - 1.0})};
}

std::vector<ScreenPixel> spots_of(const Camera& camera, const std::vector<ChartPixel>& outline) {
    std::vector<ScreenPixel> spots;
    for (const ChartPixel& pixel : outline)
        spots.push_back(camera.to_window(pixel));
    return spots;
}

Box box_around(const std::vector<ScreenPixel>& spots) {
    Box box{spots.front(), spots.front()};
    for (const ScreenPixel& spot : spots) {
        box.upper_left = {std::min(box.upper_left.x, spot.x), std::min(box.upper_left.y, spot.y)};
        box.lower_right = {std::max(box.lower_right.x, spot.x), std::max(box.lower_right.y, spot.y)};
    }
    return box;
}

void draw_by(Painter& painter, const Scene& scene, const Georeference& georeference, const CGEORec& record,
             const Box& box) {
    if (scene.grid) draw_grid(painter, scene.camera, georeference, box, scene.theme);
    draw_route(painter, scene.camera, georeference, scene.route, scene.theme);
    if (scene.points) draw_points(painter, scene.camera, record, scene.theme);
}

}  // namespace

void draw_plot(Painter& painter, const Scene& scene) {
    const Box window = window_box(scene.camera);
    const Sheet& sheet = scene.chart.sheet;
    std::vector<std::vector<ScreenPixel>> outlines;
    std::vector<Box> boxes;
    for (const auto& inset : sheet.insets()) {
        outlines.emplace_back();
        if (inset) outlines.back() = spots_of(scene.camera, inset->pixel_outline().corners());
        boxes.push_back(outlines.back().empty() ? Box{} : shared_part(window, box_around(outlines.back())));
    }
    if (sheet.chart()) {
        const Box box = shared_part(window, chart_box(scene.camera));
        painter.clip_to(box);
        for (std::size_t i = 0; i < outlines.size(); ++i) {
            if (!boxes[i].is_empty()) painter.clip_out(outlines[i]);
        }
        draw_by(painter, scene, *sheet.chart(), scene.chart.record(), box);
        painter.end_clips();
    }
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        if (boxes[i].is_empty()) continue;
        painter.clip_to(outlines[i]);
        draw_by(painter, scene, *sheet.insets()[i], scene.chart.record(static_cast<int>(i)), boxes[i]);
        painter.end_clips();
    }
}

}  // namespace viewer
