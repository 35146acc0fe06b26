#include <samples/sheet.h>

#include <cmath>

#include <samples/coast.h>
#include <samples/draw.h>

namespace samples {

namespace {

constexpr double kMargin = 5.5;  // around the area, in sizes of the lettering

}  // namespace

Canvas draw_sheet(const Sheet& sheet, const std::string& coast_dir) {
    const Coast coast = read_coast(coast_dir + "/" + sheet.file + ".txt", sheet.covered);
    const Layout layout =
        linear_layout(sheet.area, sheet.width, static_cast<int>(std::lround(kMargin * sheet.em)));
    Canvas canvas(layout.width, layout.height, sheet.inks.paper);
    draw_land(canvas, sheet, layout, coast);
    draw_grid(canvas, sheet, layout);
    draw_rose(canvas, sheet, layout);
    draw_places(canvas, sheet, layout);
    draw_title(canvas, sheet, layout);
    draw_border(canvas, sheet, layout);
    return canvas;
}

}  // namespace samples
