#include "samples/layout.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <zellap10/projection/projection.h>

namespace samples {

namespace {

constexpr int kDatum = 17;  // the row of the datum table that every record of a chart uses
constexpr int kPiecesPerSide = 64;
constexpr double kMetresPerInch = 0.0254;
constexpr double kDegreesPerMile = 1.0 / 60;

// Converts between positions and pixels: projects, turns, scales and moves.
class SheetTransform {
public:
    SheetTransform(const Projection& projection, const Scale& scale) : projection_(projection) {
        project_init2(code(), projection.origin_lat, projection.central_meridian, projection.first_parallel,
                      projection.second_parallel, kDatum, &parms_);
        metres_per_pixel_ = scale.denominator * kMetresPerInch / scale.du;
        if (projection.kind == ProjectionKind::kMercator) metres_per_pixel_ /= parms_.merc_k;
        cos_skew_ = std::cos(scale.skew_degrees * kPi / 180);
        sin_skew_ = std::sin(scale.skew_degrees * kPi / 180);
    }

    void move(double x, double y) {
        left_ += x;
        top_ += y;
    }

    Pixel to_pixel(Position place) const {
        return wgs84_to_pixel({place.lon + projection_.lon_offset, place.lat + projection_.lat_offset});
    }

    Pixel wgs84_to_pixel(Position place) const {
        double east = 0;
        double north = 0;
        project_f(code(), &parms_, place.lat, place.lon, &east, &north);
        return {left_ + (east * cos_skew_ - north * sin_skew_) / metres_per_pixel_,
                top_ - (east * sin_skew_ + north * cos_skew_) / metres_per_pixel_};
    }

    Position to_position(Pixel at) const {
        const double across = (at.x - left_) * metres_per_pixel_;
        const double up = (top_ - at.y) * metres_per_pixel_;
        Position place;
        project_i(code(), &parms_, across * cos_skew_ + up * sin_skew_, up * cos_skew_ - across * sin_skew_,
                  &place.lat, &place.lon);
        return {place.lon - projection_.lon_offset, place.lat - projection_.lat_offset};
    }

private:
    int code() const { return static_cast<int>(projection_.kind); }

    Projection projection_;
    PPARMS parms_;
    double metres_per_pixel_ = 1;
    double cos_skew_ = 1;
    double sin_skew_ = 0;
    double left_ = 0;
    double top_ = 0;
};

struct Box {
    double left = std::numeric_limits<double>::max();
    double top = std::numeric_limits<double>::max();
    double right = std::numeric_limits<double>::lowest();
    double bottom = std::numeric_limits<double>::lowest();

    void include(Pixel at) {
        left = std::min(left, at.x);
        top = std::min(top, at.y);
        right = std::max(right, at.x);
        bottom = std::max(bottom, at.y);
    }
};

Box box_of(const Area& area, const SheetTransform& transform) {
    Box box;
    for (int i = 0; i <= kPiecesPerSide; ++i) {
        const double part = static_cast<double>(i) / kPiecesPerSide;
        const double lon = area.west + (area.east - area.west) * part;
        const double lat = area.south + (area.north - area.south) * part;
        for (const Position place : {Position{lon, area.south}, Position{lon, area.north},
                                     Position{area.west, lat}, Position{area.east, lat}}) {
            box.include(transform.to_pixel(place));
        }
    }
    return box;
}

}  // namespace

Layout projected_layout(const Area& area, const Projection& projection, const Scale& scale, Pixel corner,
                        int margin) {
    SheetTransform transform(projection, scale);
    const Box box = box_of(area, transform);
    transform.move(corner.x + margin - box.left, corner.y + margin - box.top);
    Layout layout;
    layout.area = area;
    layout.width = static_cast<int>(std::lround(box.right - box.left)) + 1 + 2 * margin;
    layout.height = static_cast<int>(std::lround(box.bottom - box.top)) + 1 + 2 * margin;
    layout.to_pixel = [=](Position place) { return transform.to_pixel(place); };
    layout.wgs84_to_pixel = [=](Position place) { return transform.wgs84_to_pixel(place); };
    layout.to_position = [=](Pixel at) { return transform.to_position(at); };
    const Position middle = {(area.west + area.east) / 2, (area.south + area.north) / 2};
    const Pixel low = layout.to_pixel(middle);
    const Pixel high = layout.to_pixel({middle.lon, middle.lat + kDegreesPerMile});
    layout.pixels_per_mile = std::hypot(high.x - low.x, high.y - low.y);
    return layout;
}

}  // namespace samples
