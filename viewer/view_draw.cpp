// What a view draws.

#include <algorithm>
#include <cmath>
#include <utility>

#include <viewer/files.h>
#include <viewer/grid.h>
#include <viewer/route_lines.h>
#include <viewer/scale_bar.h>
#include <viewer/ship.h>
#include <viewer/view.h>
#include <zellap10/plotter/text.h>

namespace viewer {

namespace {

constexpr double kGap = 12;           // between the bar and what is above it
constexpr double kLeastInset = 50;    // pixels; nothing is plotted on smaller ones
constexpr double kLeastOutline = 12;  // pixels, of a hidden chart
constexpr std::size_t kMostOutlines = 400;
constexpr double kPointCell = 16;         // pixels; of reference points closer together one is drawn
constexpr int kMostPoints = 300;          // drawn, about; with more the cells are larger
constexpr double kArm = 7;                // of the cross of a reference point
constexpr std::size_t kMostProblems = 3;  // that are shown at once

std::vector<ScreenPixel> on_screen(const Georeference& georeference, const Viewport& viewport) {
    std::vector<ScreenPixel> outline;
    for (const ChartPixel corner : georeference.pixel_outline().corners())
        outline.push_back(viewport.to_screen(corner));
    return outline;
}

void draw_points(Painter& painter, const CGEORec& record, const Viewport& viewport, const Scene& scene) {
    const ChartPixel first = viewport.to_chart(scene.box.upper_left);
    const ChartPixel last = viewport.to_chart(scene.box.lower_right);
    const auto is_visible = [&](const CRefPoint* point) {
        return point->X >= first.x && point->X <= last.x && point->Y >= first.y && point->Y <= last.y;
    };
    double cell = kPointCell * painter.scale();
    if (std::count_if(record.Points.begin(), record.Points.end(), is_visible) > kMostPoints)
        cell = std::max(cell, std::sqrt(1.0 * viewport.width * viewport.height / kMostPoints));
    cell *= viewport.reduction;
    // Cells begin at the corner of the chart, so that a pan does not change which points are drawn.
    const ChartPixel origin{std::floor(first.x / cell) * cell, std::floor(first.y / cell) * cell};
    const auto place_of = [&](double from, double to) {
        return static_cast<std::size_t>((to - from) / cell);
    };
    const std::size_t columns = place_of(origin.x, last.x) + 1;
    std::vector<bool> taken(columns * (place_of(origin.y, last.y) + 1));
    const double arm = kArm * painter.scale();
    for (const CRefPoint* point : record.Points) {
        if (!is_visible(point)) continue;
        const ChartPixel pixel{static_cast<double>(point->X), static_cast<double>(point->Y)};
        const std::size_t place = place_of(origin.y, pixel.y) * columns + place_of(origin.x, pixel.x);
        if (taken[place]) continue;
        taken[place] = true;
        const ScreenPixel at = viewport.to_screen(pixel);
        painter.line({{at.x - arm, at.y}, {at.x + arm, at.y}}, scene.theme.point);
        painter.line({{at.x, at.y - arm}, {at.x, at.y + arm}}, scene.theme.point);
        painter.label({at.x + 4, at.y - 4}, static_cast<const char*>(point->Name),
                      {scene.theme.paper, {0, 1}, 11}, Rank::kPoint);
    }
}

}  // namespace

void View::draw(const Bitmap& bitmap) {
    look_for_charts();
    look_for_fixes();
    const Theme& theme = theme_for(scheme_);
    draft_ = false;
    Bitmap chart_part = bitmap;
    chart_part.height = map_.size().height;
    if (sheet_) {
        complete_ = sheet_->draw(scheme_, theme.background, chart_part);
    } else {
        auto result = quilt_.draw_draft(map_, scheme_, theme.background, chart_part);
        complete_ = result.complete && list_.complete;
        draft_ = result.draft;
        shown_ = std::move(result.charts);
    }
    Painter painter(bitmap, scale_, !draft_);
    const Scene scene = map_scene(map_, theme);
    painter.clip_to(scene.box);
    if (shows_outlines_ && !sheet_) draw_hidden(painter, scene);
    if (sheet_)
        draw_sheet_lines(painter, scene.box);
    else
        draw_lines(painter, scene);
    painter.end_clips();
    draw_texts(painter);
    if (complete_ && !save_path_.empty()) save_picture(painter);
}

std::optional<int> View::redraw_ms() const {
    if (draft_) return 60;
    return receiver_ ? std::optional(1000) : std::nullopt;
}

// The picture is saved as it is, without the message about that.
void View::save_picture(Painter& painter) {
    const std::string path = std::exchange(save_path_, {});
    const std::string png = painter.png();
    save_failure_ = png.empty() ? "cannot save " + path + ": out of memory" : save_file(path, png);
    message_ = save_failure_.empty() ? "Saved as " + path : save_failure_;
    if (options_.on_change) options_.on_change();
}

void View::draw_lines(Painter& painter, const Scene& scene) {
    if (shows_grid_) draw_grid(painter, scene);
    draw_track(painter, scene, track_.points());
    draw_route(painter, scene, waypoints(), receiver_ ? std::optional(target_) : std::nullopt);
    if (track_.last_fix()) draw_ship(painter, scene, *track_.last_fix(), lost_);
}

// By the georeference of the sheet up to its neat line, and by those of its insets on them.
void View::draw_sheet_lines(Painter& painter, const Box& window) {
    struct Area {
        const Georeference* georeference;
        const CGEORec* record;
        std::vector<ScreenPixel> outline;
    };
    const Viewport& viewport = sheet_->viewport();
    const Theme& theme = theme_for(scheme_);
    const auto draw = [&](const Area& area) {
        const Box box = shared_part(window, box_around(area.outline));
        if (!box.is_empty()) {
            const Scene scene = sheet_scene(*area.georeference, viewport, box, theme);
            if (shows_points_) draw_points(painter, *area.record, viewport, scene);
            draw_lines(painter, scene);
        }
        painter.end_clips();
    };
    std::vector<Area> insets;
    int index = -1;
    for (const auto& inset : sheet_->georeferences().insets()) {
        ++index;
        if (!inset) continue;
        const Box around{viewport.to_screen(inset->pixel_outline().upper_left()),
                         viewport.to_screen(inset->pixel_outline().lower_right())};
        const bool is_large = around.lower_right.x - around.upper_left.x >= kLeastInset * scale_;
        if (is_large && !shared_part(window, around).is_empty())
            insets.push_back({&*inset, &sheet_->record(index), on_screen(*inset, viewport)});
    }
    if (const auto& chart = sheet_->georeferences().chart()) {
        const Area area{&*chart, &sheet_->record(), on_screen(*chart, viewport)};
        painter.clip_to(area.outline);
        for (const Area& inset : insets)
            painter.clip_out(inset.outline);
        if (!area.outline.empty()) draw(area);
    }
    for (const Area& inset : insets) {
        painter.clip_to(inset.outline);
        draw(inset);
    }
}

// The outlines of charts of which the view shows nothing.
void View::draw_hidden(Painter& painter, const Scene& scene) {
    std::vector<const CatalogueEntry*> shown = shown_;
    std::sort(shown.begin(), shown.end());
    std::size_t drawn = 0;
    for (const CatalogueEntry* entry : list_.catalogue->overlapping(map_.extent())) {
        if (drawn == kMostOutlines) return;
        if (std::binary_search(shown.begin(), shown.end(), entry)) continue;
        std::vector<Position> corners = entry->outline.corners;
        corners.push_back(corners.front());
        for (const auto& line : lines_on_screen(scene, corners)) {
            const Box around = box_around(line);
            if (apart(around.upper_left, around.lower_right) < kLeastOutline) continue;
            ++drawn;
            const auto parts = parts_inside(scene.box.grown(10), line);
            for (const auto& [from, to] : parts)
                painter.line({from, to}, scene.theme.outline);
            if (!parts.empty())
                painter.label(parts.front().first, entry->name, {scene.theme.paper, {0, 0}, 11}, Rank::kGrid);
        }
    }
}

std::vector<std::string> View::problems() const {
    std::vector<std::string> all = list_.problems;
    for (const auto& problem : quilt_.problems())
        all.push_back(short_path(problem.path) + ": " + problem.text);
    if (sheet_ && sheet_->is_damaged()) all.push_back(sheet_->name() + ": Lines of it cannot be read.");
    return all;
}

// The position under the pointer, and below it the chart there.
std::vector<std::string> View::pointer_lines(std::optional<Position> place) {
    if (!pointer_ || !is_on_chart(*pointer_)) return {"", sheet_ ? sheet_->name() : ""};
    const std::string above = place ? format_position(*place) : "no position here";
    if (!sheet_) {
        const auto hit = quilt_.at(map_, *pointer_);
        if (!hit) return {above, "no chart here"};
        const CatalogueEntry& entry = *hit->entry;
        const std::string name = entry.name.empty() ? short_path(entry.path) : entry.name;
        if (!entry.metres_per_pixel) return {above, name};
        return {above, name + ", " + size_text(map_.metres_per_pixel() / *entry.metres_per_pixel)};
    }
    const ChartPixel pixel = sheet_->viewport().to_chart(*pointer_);
    const auto inset = sheet_->georeferences().inset_at(pixel);
    const auto georeference = sheet_->georeferences().georeference_at(pixel);
    const auto own = georeference ? georeference->chart_datum_position_of(pixel) : std::nullopt;
    std::string below = sheet_->name();
    const CGEORec& owner = sheet_->record(inset);
    if (inset) below += ", inset " + std::string(owner.Name);
    const bool differs = owner.LatitudeOffset != 0 || owner.LongitudeOffset != 0;
    if (own && differs)
        below += ", " + (owner.Datum.IsEmpty() ? "chart datum" : std::string(owner.Datum)) + " " +
                 format_position(*own);
    return {above, below};
}

Status View::status() {
    std::string modes;
    const auto add = [&modes](bool is_on, const char* name) {
        if (is_on) modes += std::string(modes.empty() ? "" : "  ") + name;
    };
    add(route_mode_, "ROUTE");
    add(follows_ && receiver_, "FOLLOW");
    add(course_up_, "COURSE UP");
    add(sheet_ != nullptr, "AS PRINTED");
    add(!complete_, "...");
    const double up = map_.course_up();
    std::string above = up == 0 ? "north up" : format_course(up) + " up";
    if (sheet_) above = size_text(sheet_->viewport().reduction);
    const auto place =
        pointer_ && is_on_chart(*pointer_) ? scene_at(*pointer_).to_position(*pointer_) : std::nullopt;
    return {
        pointer_lines(place), route_lines(waypoints(), place), {above, modes.empty() ? "F1: help" : modes}};
}

void View::draw_texts(Painter& painter) {
    const Theme& theme = theme_for(scheme_);
    const double gap = kGap * scale_;
    const ScreenPixel lower_right{window_.width - gap, map_.size().height - gap};
    draw_status(painter, window_, status(), theme);
    draw_scale_bar(painter, scene_at(middle()), lower_right);
    if (receiver_) {
        std::vector<std::string> ship = ship_lines(track_, waypoints(), target_, options_.now());
        if (!receiver_status_.empty()) ship.push_back(receiver_status_);
        painter.text({window_.width - gap, gap}, ship,
                     {lost_ ? theme.warning : theme.paper, {1, 0}, 15, Typeface::kBold});
    }
    auto lines = hides_problems_ ? std::vector<std::string>() : problems();
    if (lines.size() > kMostProblems) {
        const std::size_t more = lines.size() - kMostProblems;
        lines.resize(kMostProblems);
        lines.push_back("and " + std::to_string(more) + " more problems");
    }
    if (!lines.empty()) draw_notice(painter, {gap, lower_right.y}, lines, {theme.warning, {0, 1}, 13});
    painter.draw_labels();
    draw_notices(painter);
}

// Above everything else.
void View::draw_notices(Painter& painter) {
    const Theme& theme = theme_for(scheme_);
    const ScreenPixel centre = middle();
    const auto notice = [&](double y, const std::vector<std::string>& lines) {
        draw_notice(painter, {centre.x, y}, lines, {theme.warning, {0.5, 0.5}, 15});
    };
    if (!message_.empty()) notice(centre.y / 2, {message_});
    if (list_.complete && list_.catalogue->entries().empty() && !sheet_)
        notice(centre.y, {"No chart with positions was found."});
    if (shows_help_) painter.text(centre, help_lines(), {theme.paper, {0.5, 0.5}, 14, Typeface::kFixed});
    if (!prompt_) return;
    std::vector<std::string> lines{prompt_->question + prompt_->text + "_"};
    if (!prompt_->reason.empty()) lines.push_back(prompt_->reason);
    notice(centre.y / 2, lines);
}

}  // namespace viewer
