#include <examples/overlay.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kPieces = 96;  // of a meridian or a parallel
constexpr int kPiecesOfLeg = 800;
constexpr int kFewestLines = 3;        // across the longer extent of a grid
constexpr double kFarAway = 1e6;       // pixels, past which nothing is drawn
constexpr double kRingRadius = 7;      // of a reference point, picture pixels
constexpr double kDiamondRadius = 11;  // of a waypoint
constexpr double kPi = 3.14159265359;

struct Pen {
    Rgb colour;
    int width = 1;  // picture pixels
    int dash = 0;   // picture pixels on, and as many off; 0 for a whole line
};

constexpr Pen kGridPen = {{225, 30, 30}, 1, 8};
constexpr Pen kOutlinePen = {{240, 130, 0}, 1, 0};
constexpr Pen kVertexPen = {{240, 130, 0}, 3, 0};
constexpr Pen kPointPen = {{0, 150, 60}, 2, 0};
constexpr Pen kRoutePen = {{30, 60, 220}, 3, 0};

struct Spot {
    double x = 0;
    double y = 0;
};

// Degrees; on a record over the 180th meridian longitudes above 0 are taken down by a turn, as its own fit
// does, so that they run on.
double running_on(const CGEORec& record, double lon) {
    return record.Wraps180 != 0 && lon > 0 ? lon - 360 : lon;
}

struct Extent {
    double south = std::numeric_limits<double>::max();
    double north = std::numeric_limits<double>::lowest();
    double west = std::numeric_limits<double>::max();
    double east = std::numeric_limits<double>::lowest();

    bool holds(double lat, double lon) const {
        return lat >= south && lat <= north && lon >= west && lon <= east;
    }
};

Extent extent_of(const CGEORec& record) {
    Extent extent;
    for (const CRefPoint* point : record.Vertices.IsEmpty() ? record.Points : record.Vertices) {
        const double lon = running_on(record, point->Longitude);
        extent.south = std::min(extent.south, point->Latitude);
        extent.north = std::max(extent.north, point->Latitude);
        extent.west = std::min(extent.west, lon);
        extent.east = std::max(extent.east, lon);
    }
    return extent;
}

bool is_in(const std::vector<PixelRect>& rects, double x, double y) {
    return std::any_of(rects.begin(), rects.end(), [&](const PixelRect& rect) {
        return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
    });
}

// Draws on one picture, in its own pixels.
class Plotter {
public:
    Plotter(const View& view, const CGEORec& record) : view_(view), record_(record) {}

    /// The middle of chart pixel 0 lies half a pixel inside the first block of a reduced picture.
    Spot spot_of(double lat, double lon) const {
        double x = 0;
        double y = 0;
        record_.wpxy(lon, lat, &x, &y);
        return {(x - view_.left + 0.5) / view_.factor - 0.5, (y - view_.top + 0.5) / view_.factor - 0.5};
    }

    void line(const std::vector<Spot>& spots, const Pen& pen) const {
        int drawn = 0;
        for (std::size_t i = 1; i < spots.size(); ++i)
            drawn = piece(spots[i - 1], spots[i], pen, drawn);
    }

    void ring(Spot middle, double radius, int corners, const Pen& pen) const {
        std::vector<Spot> spots;
        for (int i = 0; i <= corners; ++i) {
            const double angle = 2 * kPi * i / corners;
            spots.push_back({middle.x + radius * std::cos(angle), middle.y + radius * std::sin(angle)});
        }
        line(spots, pen);
    }

private:
    int piece(Spot from, Spot to, const Pen& pen, int drawn) const {
        const double reach =
            std::max({std::fabs(from.x), std::fabs(from.y), std::fabs(to.x), std::fabs(to.y)});
        if (!(reach < kFarAway)) return drawn;
        const double length = std::max(std::fabs(to.x - from.x), std::fabs(to.y - from.y));
        const int steps = std::max(1, static_cast<int>(std::ceil(length)));
        for (int i = 0; i <= steps; ++i) {
            const double part = static_cast<double>(i) / steps;
            if (i > 0) ++drawn;
            if (pen.dash > 0 && (drawn / pen.dash) % 2 != 0) continue;
            dot({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part}, pen);
        }
        return drawn;
    }

    void dot(Spot spot, const Pen& pen) const {
        const int first_x = static_cast<int>(std::lround(spot.x)) - pen.width / 2;
        const int first_y = static_cast<int>(std::lround(spot.y)) - pen.width / 2;
        for (int y = first_y; y < first_y + pen.width; ++y) {
            for (int x = first_x; x < first_x + pen.width; ++x) {
                if (is_open(x, y)) view_.picture.row(y)[x] = pen.colour;
            }
        }
    }

    bool is_open(int x, int y) const {
        if (x < 0 || y < 0 || x >= view_.picture.width || y >= view_.picture.height) return false;
        const double chart_x = view_.left + (x + 0.5) * view_.factor - 0.5;
        const double chart_y = view_.top + (y + 0.5) * view_.factor - 0.5;
        if (is_in(view_.excluded, chart_x, chart_y)) return false;
        return view_.included.empty() || is_in(view_.included, chart_x, chart_y);
    }

    const View& view_;
    const CGEORec& record_;
};

void draw_grid(const Plotter& plotter, const Extent& extent, int step_minutes) {
    const double step = step_minutes / 60.0;
    for (double n = std::ceil(extent.west / step); n * step <= extent.east; ++n) {
        std::vector<Spot> meridian;
        for (int i = 0; i <= kPieces; ++i) {
            const double lat = extent.south + (extent.north - extent.south) * i / kPieces;
            meridian.push_back(plotter.spot_of(lat, n * step));
        }
        plotter.line(meridian, kGridPen);
    }
    for (double n = std::ceil(extent.south / step); n * step <= extent.north; ++n) {
        std::vector<Spot> parallel;
        for (int i = 0; i <= kPieces; ++i) {
            const double lon = extent.west + (extent.east - extent.west) * i / kPieces;
            parallel.push_back(plotter.spot_of(n * step, lon));
        }
        plotter.line(parallel, kGridPen);
    }
}

void draw_outline(const Plotter& plotter, const CGEORec& record) {
    std::vector<Spot> outline;
    for (const CRefPoint* vertex : record.Vertices)
        outline.push_back(plotter.spot_of(vertex->Latitude, vertex->Longitude));
    if (outline.empty()) return;
    for (const Spot& corner : outline)
        plotter.ring(corner, 4 * std::sqrt(2.0), 4, kVertexPen);
    outline.push_back(outline.front());
    plotter.line(outline, kOutlinePen);
}

// A course is a straight line on few projections, so a leg is drawn in pieces; those outside the extent are
// not drawn.
void draw_leg(const Plotter& plotter, const CGEORec& record, const Waypoint& from, const Waypoint& to) {
    const Extent extent = extent_of(record);
    double bearing = 0;
    const double miles = m_b_d(from.lat, from.lon, to.lat, to.lon, &bearing);
    std::vector<Spot> leg;
    for (int piece = 0; piece <= kPiecesOfLeg; ++piece) {
        double lat = from.lat;
        double lon = from.lon;
        m_advance_d(&lat, &lon, miles * piece / kPiecesOfLeg, bearing);
        if (lon > 180) lon -= 360;
        if (lon < -180) lon += 360;
        if (extent.holds(lat, running_on(record, lon))) {
            leg.push_back(plotter.spot_of(lat, lon));
        } else {
            plotter.line(leg, kRoutePen);
            leg.clear();
        }
    }
    plotter.line(leg, kRoutePen);
}

void draw_route(const Plotter& plotter, const CGEORec& record, const std::vector<Waypoint>& route) {
    for (std::size_t i = 1; i < route.size(); ++i)
        draw_leg(plotter, record, route[i - 1], route[i]);
    const Extent extent = extent_of(record);
    for (const Waypoint& waypoint : route) {
        if (!extent.holds(waypoint.lat, running_on(record, waypoint.lon))) continue;
        plotter.ring(plotter.spot_of(waypoint.lat, waypoint.lon), kDiamondRadius, 4, kRoutePen);
    }
}

}  // namespace

int grid_step(const CGEORec& record) {
    const Extent extent = extent_of(record);
    const double longer = 60 * std::max(extent.east - extent.west, extent.north - extent.south);
    for (const int minutes : {60, 30, 10, 5}) {
        if (longer / minutes >= kFewestLines) return minutes;
    }
    return 1;
}

void draw_overlay(const View& view, const CGEORec& record, const std::vector<Waypoint>& route) {
    const Plotter plotter(view, record);
    draw_grid(plotter, extent_of(record), grid_step(record));
    draw_outline(plotter, record);
    for (const CRefPoint* point : record.Points)
        plotter.ring(plotter.spot_of(point->Latitude, point->Longitude), kRingRadius, 24, kPointPen);
    draw_route(plotter, record, route);
}
