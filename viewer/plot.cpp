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

std::vector<Spot> spots_of(const Camera& camera, const std::vector<Pixel>& outline) {
    std::vector<Spot> spots;
    for (const Pixel& pixel : outline)
        spots.push_back(camera.to_window(pixel));
    return spots;
}

Box box_around(const std::vector<Spot>& spots) {
    Box box{spots.front(), spots.front()};
    for (const Spot& spot : spots) {
        box.upper_left = {std::min(box.upper_left.x, spot.x), std::min(box.upper_left.y, spot.y)};
        box.lower_right = {std::max(box.lower_right.x, spot.x), std::max(box.lower_right.y, spot.y)};
    }
    return box;
}

void draw_by(Painter& painter, const Scene& scene, const CGEORec& record, const Box& box) {
    if (scene.grid) draw_grid(painter, scene.camera, record, box, scene.theme);
    draw_route(painter, scene.camera, record, scene.route, scene.theme);
    if (scene.points) draw_points(painter, scene.camera, record, scene.theme);
}

}  // namespace

void draw_plot(Painter& painter, const Scene& scene) {
    const Box window = window_box(scene.camera);
    std::vector<std::vector<Spot>> outlines;
    std::vector<Box> boxes;
    for (const Inset& inset : scene.chart.insets) {
        outlines.push_back(spots_of(scene.camera, inset.outline));
        boxes.push_back(outlines.back().empty() ? Box{} : shared_part(window, box_around(outlines.back())));
    }
    if (const CGEORec* base = scene.chart.base()) {
        const Box box = shared_part(window, chart_box(scene.camera));
        painter.clip_to(box);
        for (std::size_t i = 0; i < outlines.size(); ++i) {
            if (!boxes[i].is_empty()) painter.clip_out(outlines[i]);
        }
        draw_by(painter, scene, *base, box);
        painter.end_clips();
    }
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        if (boxes[i].is_empty()) continue;
        painter.clip_to(outlines[i]);
        draw_by(painter, scene, *scene.chart.insets[i].record, boxes[i]);
        painter.end_clips();
    }
}

}  // namespace viewer
