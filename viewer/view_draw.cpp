// What a view draws.

#include <algorithm>

#include <viewer/mosaic.h>
#include <viewer/painter.h>
#include <viewer/plot.h>
#include <viewer/status.h>
#include <viewer/view.h>

namespace viewer {

namespace {

void fill(const Bitmap& picture, Argb colour) {
    for (int y = 0; y < picture.height; ++y) {
        auto* line = static_cast<unsigned char*>(picture.pixels) + y * picture.stride;
        std::fill_n(reinterpret_cast<Argb*>(line), picture.width, colour);
    }
}

}  // namespace

// Draws the chart, and says to the workers what is missing of it; whether it is whole.
bool View::draw_tiles(const Bitmap& picture) {
    const Argb background = theme_for(light_).background;
    if (!chart_->is_open()) {
        tiles_.want({});
        fill(picture, background);
        return true;
    }
    const Look look{camera_, current_, light_};
    const bool whole = put_together(tiles_, look, background, picture);
    tiles_.want(missing_strips(tiles_, look));
    return whole;
}

void View::draw_over(Painter& painter) {
    const std::string place =
        "chart " + std::to_string(current_ + 1) + " of " + std::to_string(charts_.paths.size());
    const Scene scene{window_,           camera_, *chart_,     route_,       pointer_,
                      theme_for(light_), place,   shows_grid_, shows_points_};
    if (chart_->is_open()) draw_plot(painter, scene);
    draw_status(painter, scene);
    if (!chart_->is_open()) {
        const TextStyle style{scene.theme.warning, {0.5, 0.5}, 15};
        draw_notice(painter, camera_.middle(), {chart_->path, chart_->trouble}, style);
    }
}

void View::draw(const Bitmap& picture) {
    Bitmap chart_part = picture;
    chart_part.height -= kBarHeight;
    complete_ = draw_tiles(chart_part);
    Painter painter(picture);
    draw_over(painter);
    if (complete_ && !save_path_.empty()) {
        message_ = painter.save(save_path_) ? "Saved as " + save_path_ : "Cannot write " + save_path_;
        save_path_.clear();
    }
    const Theme& theme = theme_for(light_);
    const ScreenPixel middle = camera_.middle();
    if (!message_.empty())
        draw_notice(painter, {middle.x, middle.y / 2}, {message_}, {theme.warning, {0.5, 0.5}, 15});
    if (shows_help_)
        draw_notice(painter, middle, help_lines(), {theme.paper, {0.5, 0.5}, 14, Typeface::kFixed});
}

}  // namespace viewer
