#include "samples/sheet.h"

#include <cmath>

#include <samples/coast.h>
#include <samples/draw.h>

namespace samples {

namespace {

constexpr double kMargin = 5.5;       // around the area, in sizes of the lettering
constexpr double kInsetMargin = 4.3;  // likewise; an inset ends at its frame

int margin_of(const Sheet& sheet, double margin) {
    return static_cast<int>(std::lround(margin * sheet.em));
}

void draw(Canvas& canvas, const Sheet& sheet, const Layout& layout, const Coast& coast) {
    canvas.fill(frame_outline(sheet, layout), sheet.inks.paper);
    draw_land(canvas, sheet, layout, coast);
    draw_grid(canvas, sheet, layout);
    draw_piers(canvas, sheet, layout);
    draw_rose(canvas, sheet, layout);
    draw_places(canvas, sheet, layout);
    draw_title(canvas, sheet, layout);
    draw_border(canvas, sheet, layout);
}

}  // namespace

Layout layout_of(const Sheet& sheet) {
    return projected_layout(sheet.area, sheet.projection, sheet.scale, {0, 0}, margin_of(sheet, kMargin));
}

std::vector<Layout> inset_layouts_of(const Sheet& sheet, const Layout& layout) {
    std::vector<Layout> layouts;
    for (const Sheet& inset : sheet.insets) {
        layouts.push_back(projected_layout(inset.area, inset.projection, inset.scale,
                                           layout.to_pixel(inset.corner), margin_of(inset, kInsetMargin)));
    }
    return layouts;
}

Canvas draw_sheet(const Sheet& sheet, const std::string& coast_dir) {
    const Coast coast = read_coast(coast_dir + "/" + sheet.coast + ".txt", sheet.covered);
    const Layout layout = layout_of(sheet);
    const std::vector<Layout> inset_layouts = inset_layouts_of(sheet, layout);
    Canvas canvas(layout.width, layout.height, sheet.inks.paper);
    draw(canvas, sheet, layout, coast);
    for (std::size_t i = 0; i < sheet.insets.size(); ++i)
        draw(canvas, sheet.insets[i], inset_layouts[i], coast);
    return canvas;
}

}  // namespace samples
