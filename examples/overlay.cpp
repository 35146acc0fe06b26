#include "examples/overlay.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/route.h>

namespace {

using zellap10::plotter::Extent;
using zellap10::plotter::Georeference;
using zellap10::plotter::Outline;
using zellap10::plotter::outline_of;
using zellap10::plotter::Position;
using zellap10::plotter::ScreenPixel;

constexpr int kPieces = 96;  // of a meridian or a parallel
constexpr int kPiecesOfLeg = 800;
constexpr int kFewestLines = 3;      // across the longer extent of a grid
constexpr double kFarAway = 1e6;     // picture pixels, past which nothing is drawn
constexpr double kRingRadius = 7;    // of a reference point, picture pixels
constexpr double kCornerRadius = 4;  // of a vertex
constexpr double kWaypointRadius = 10;
constexpr double kTurn = 2 * 3.14159265359;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr Position kNowhere = {kNan, kNan};

struct Pen {
    double red, green, blue;  // 0 to 1
    double width;             // picture pixels
    double dash = 0;          // picture pixels on, and as many off; 0 for a whole line
};

constexpr Pen kGridPen = {0.88, 0.12, 0.12, 1, 8};
constexpr Pen kOutlinePen = {0.94, 0.51, 0, 1.5};
constexpr Pen kPointPen = {0, 0.59, 0.24, 2};
constexpr Pen kRoutePen = {0.12, 0.24, 0.86, 3};

// Draws by one georeference, in the chart's own datum.
class Plot {
public:
    Plot(Image& image, const Georeference& georeference)
        : image_(image), cairo_(image.cairo()), georeference_(georeference) {}

    // Broken where a position has no place.
    void line(const std::vector<Position>& positions, const Pen& pen) {
        bool drawing = false;
        for (const Position& position : positions) {
            const std::optional<ScreenPixel> spot = spot_of(position);
            if (spot && drawing) cairo_line_to(cairo_, spot->x, spot->y);
            if (spot && !drawing) cairo_move_to(cairo_, spot->x, spot->y);
            drawing = spot.has_value();
        }
        stroke(pen);
    }

    void ring(const Position& position, double radius, const Pen& pen) {
        const std::optional<ScreenPixel> spot = spot_of(position);
        if (!spot) return;
        cairo_arc(cairo_, spot->x, spot->y, radius, 0, kTurn);
        stroke(pen);
    }

private:
    // In cairo's coordinates, which count from the corner of a pixel and not from its middle.
    std::optional<ScreenPixel> spot_of(const Position& position) const {
        const auto pixel = georeference_.pixel_of_chart_datum(position);
        if (!pixel) return {};
        const ScreenPixel spot = image_.window().to_screen(*pixel);
        if (!(std::fabs(spot.x) < kFarAway && std::fabs(spot.y) < kFarAway)) return {};
        return ScreenPixel{spot.x + 0.5, spot.y + 0.5};
    }

    void stroke(const Pen& pen) {
        cairo_set_source_rgb(cairo_, pen.red, pen.green, pen.blue);
        cairo_set_line_width(cairo_, pen.width);
        cairo_set_dash(cairo_, &pen.dash, pen.dash > 0 ? 1 : 0, 0);
        cairo_stroke(cairo_);
    }

    Image& image_;
    cairo_t* cairo_;
    const Georeference& georeference_;
};

void draw_grid(Plot& plot, const Extent& extent, double step) {
    if (!(extent.north - extent.south <= 180)) return;  // no place on earth
    const auto along = [](double from, double length, int piece) { return from + length * piece / kPieces; };
    for (double n = std::ceil(extent.west / step); n * step <= extent.west + extent.width; ++n) {
        std::vector<Position> meridian;
        for (int i = 0; i <= kPieces; ++i)
            meridian.push_back({along(extent.south, extent.north - extent.south, i), n * step});
        plot.line(meridian, kGridPen);
    }
    for (double n = std::ceil(extent.south / step); n * step <= extent.north; ++n) {
        std::vector<Position> parallel;
        for (int i = 0; i <= kPieces; ++i)
            parallel.push_back({n * step, along(extent.west, extent.width, i)});
        plot.line(parallel, kGridPen);
    }
}

void draw_outline(Plot& plot, std::vector<Position> corners) {
    if (corners.empty()) return;
    for (const Position& corner : corners)
        plot.ring(corner, kCornerRadius, kOutlinePen);
    corners.push_back(corners.front());
    plot.line(corners, kOutlinePen);
}

// What of a route in WGS 84 the outline covers.
void draw_route(Plot& plot, const Georeference& georeference, const std::vector<Waypoint>& route) {
    const auto placed = [&](const Position& wgs84) {
        return georeference.covers(wgs84) ? georeference.to_chart_datum(wgs84) : kNowhere;
    };
    for (std::size_t i = 0; i < route.size(); ++i) {
        plot.ring(placed(route[i].position), kWaypointRadius, kRoutePen);
        if (i == 0) continue;
        std::vector<Position> leg = rhumb_line(route[i - 1].position, route[i].position, kPiecesOfLeg);
        std::transform(leg.begin(), leg.end(), leg.begin(), placed);
        plot.line(leg, kRoutePen);
    }
}

void draw_record(Image& image, const CGEORec& record, const std::vector<Waypoint>& route) {
    const auto georeference = Georeference::from(record);
    if (!georeference) return;
    Plot plot(image, *georeference);
    const Outline& outline = georeference->chart_datum_outline();
    if (const auto extent = outline.extent()) draw_grid(plot, *extent, grid_step(record) / 60.0);
    draw_outline(plot, outline.corners);
    for (const CRefPoint* point : record.Points)
        plot.ring({point->Latitude, point->Longitude}, kRingRadius, kPointPen);
    draw_route(plot, *georeference, route);
}

// Adds a rectangle of the chart to cairo's path.
void add_rectangle(Image& image, const PixelRect& rect) {
    const ScreenPixel upper_left = image.window().to_screen({rect.left - 0.5, rect.top - 0.5});
    const ScreenPixel lower_right = image.window().to_screen({rect.right - 0.5, rect.bottom - 0.5});
    cairo_rectangle(image.cairo(), upper_left.x + 0.5, upper_left.y + 0.5, lower_right.x - upper_left.x,
                    lower_right.y - upper_left.y);
}

}  // namespace

double grid_step(const CGEORec& record) {
    const Extent extent = outline_of(record, zellap10::plotter::Datum::kChart).extent().value_or(Extent{});
    const double longer = 60 * std::max(extent.width, extent.north - extent.south);
    for (const double minutes : {60.0, 30.0, 10.0, 5.0, 1.0, 0.5}) {
        if (longer / minutes >= kFewestLines) return minutes;
    }
    return 0.1;
}

void draw_overlay(Image& image, const CGEORec& base, const std::vector<Waypoint>& route) {
    cairo_t* const cairo = image.cairo();
    cairo_save(cairo);
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_EVEN_ODD);
    for (const CGEORec* inset : base.Insets) {
        cairo_rectangle(cairo, 0, 0, image.width(), image.height());
        add_rectangle(image, inset->InsetRect);
        cairo_clip(cairo);
    }
    draw_record(image, base, route);
    cairo_restore(cairo);
    for (const CGEORec* inset : base.Insets) {
        cairo_save(cairo);
        add_rectangle(image, inset->InsetRect);
        cairo_clip(cairo);
        draw_record(image, *inset, route);
        cairo_restore(cairo);
    }
}
