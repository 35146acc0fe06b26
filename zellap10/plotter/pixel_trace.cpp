#include "zellap10/plotter/pixel_trace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zellap10::plotter {

namespace {

using PixelNear = std::function<Vector(Vector, Vector)>;

constexpr double kTolerance = 0.25;         // pixels between an edge and its chord
constexpr double kShortEdge = 16.0;         // pixels; the bend of shorter edges is smaller than that
constexpr int kMostDivisions = 8;           // of an edge, into 256 pieces
constexpr std::size_t kMostExtra = 8192;    // corners added to a polygon
constexpr std::size_t kManyCorners = 1000;  // neighbours of so many are near each other

struct Place {
    Vector position;
    Vector pixel;
};

Vector middle_of(Vector a, Vector b) {
    return {0.5 * (a.x + b.x), 0.5 * (a.y + b.y)};
}

double length(Vector vector) {
    return std::hypot(vector.x, vector.y);
}

double distance_from_line(Vector point, Vector a, Vector b) {
    const Vector along = b - a;
    const Vector off = point - a;
    return std::fabs(along.x * off.y - along.y * off.x) / length(along);
}

class Tracer {
public:
    explicit Tracer(const PixelNear& pixel_near) : pixel_near_(pixel_near) {}

    void add_corner(Vector pixel) { pixels_.push_back({pixel.x, pixel.y}); }

    // Adds what is needed between two corners. A long edge is divided at least once, because the middle of
    // one that bends both ways may lie on the chord.
    void add_between(const Place& a, const Place& b, int depth = 0) {
        if (depth == kMostDivisions || extra_ == kMostExtra) return;
        if (!(length(b.pixel - a.pixel) > kShortEdge)) return;
        const Vector position = middle_of(a.position, b.position);
        const Vector pixel = pixel_near_(position, middle_of(a.pixel, b.pixel));
        if (!is_finite(pixel)) return;
        if (depth > 0 && distance_from_line(pixel, a.pixel, b.pixel) <= kTolerance) return;
        ++extra_;
        const Place middle{position, pixel};
        add_between(a, middle, depth + 1);
        add_corner(pixel);
        add_between(middle, b, depth + 1);
    }

    std::vector<ChartPixel> pixels() { return std::move(pixels_); }

private:
    const PixelNear& pixel_near_;
    std::vector<ChartPixel> pixels_;
    std::size_t extra_ = 0;
};

}  // namespace

std::vector<ChartPixel> trace_pixels(const std::vector<Vector>& corners,
                                     const std::function<Vector(Vector)>& pixel_of,
                                     const PixelNear& pixel_near) {
    const bool follows = corners.size() > kManyCorners;
    std::vector<Place> places;
    for (const Vector corner : corners) {
        Place place{corner, {}};
        const bool has_start = follows && !places.empty();
        if (has_start) place.pixel = pixel_near(corner, places.back().pixel);
        if (!has_start || !is_finite(place.pixel)) place.pixel = pixel_of(corner);
        if (is_finite(place.pixel)) places.push_back(place);
    }
    Tracer tracer(pixel_near);
    for (std::size_t i = 0; i < places.size(); ++i) {
        tracer.add_corner(places[i].pixel);
        tracer.add_between(places[i], places[(i + 1) % places.size()]);
    }
    return tracer.pixels();
}

}  // namespace zellap10::plotter
