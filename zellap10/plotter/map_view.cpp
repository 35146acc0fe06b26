#include "zellap10/plotter/map_view.h"

#include <algorithm>
#include <cmath>

#include <zellap10/plotter/web_mercator.h>

namespace zellap10::plotter {

namespace {

using platform::DEG_TO_RAD;
using platform::PI_11;
using platform::RAD_TO_DEG;

constexpr double kMostLatitude = 89.0;  // on the screen, beyond the centres of views
constexpr double kLeastMetres = 1e-4;
constexpr double kMostMetres = 1e7;
constexpr double kLeastPixelsAround = 1.0;
constexpr double kMostPixelsAround = kMetresAround / kLeastMetres;
constexpr int kMostPixels = 32767;
constexpr int kMostZoom = 24;
constexpr int kMostTileSize = 4096;

double or_zero(double number) {
    return std::isfinite(number) ? number : 0.0;
}

double turned(double longitude) {
    return std::fabs(longitude) <= 180.0 ? longitude : std::remainder(longitude, 360.0);
}

double cosine_of_latitude(double latitude) {
    return std::cos(latitude * DEG_TO_RAD);
}

double pixels_around_at(double latitude, double metres_per_pixel) {
    return kMetresAround * cosine_of_latitude(latitude) /
           std::clamp(metres_per_pixel, kLeastMetres, kMostMetres);
}

double held(double latitude) {
    return std::clamp(latitude, -kWebMercatorLatitude, kWebMercatorLatitude);
}

// Meridional parts of b less those of a, in radians. Nothing cancels for near latitudes:
// asinh(tan b) - asinh(tan a) = asinh((sin b - sin a) / (cos a cos b))
double parts_between(double a_rad, double b_rad) {
    return std::asinh(2.0 * std::cos(0.5 * (a_rad + b_rad)) * std::sin(0.5 * (b_rad - a_rad)) /
                      (std::cos(a_rad) * std::cos(b_rad)));
}

// The way from a latitude over meridional parts, as a difference of latitudes; its inverse. With
// t = tan(pi / 4 + a / 2) = (1 + sin a) / cos a it is 2 (atan(t exp(parts)) - atan(t)).
double latitude_over(double a_rad, double parts) {
    const double t = (1.0 + std::sin(a_rad)) / std::cos(a_rad);
    const double growth = std::expm1(parts);
    return 2.0 * std::atan2(t * growth, 1.0 + t * t * (1.0 + growth));
}

}  // namespace

MapView::MapView(Position centre, double metres_per_pixel, ScreenSize size, double course_up)
    : MapView(Exact{}, centre, pixels_around_at(held(or_zero(centre.latitude)), metres_per_pixel), size,
              course_up) {}

MapView::MapView(Exact, Position centre, double pixels_around, ScreenSize size, double course_up)
    : centre_{held(or_zero(centre.latitude)), turned(or_zero(centre.longitude))},
      pixels_around_(std::clamp(or_zero(pixels_around), kLeastPixelsAround, kMostPixelsAround)),
      size_{std::clamp(size.width, 0, kMostPixels), std::clamp(size.height, 0, kMostPixels)},
      course_up_(std::fmod(or_zero(course_up), 360.0)) {
    if (course_up_ < 0.0) course_up_ += 360.0;
    if (course_up_ == 360.0) course_up_ = 0.0;
    sine_ = std::sin(course_up_ * DEG_TO_RAD);
    cosine_ = std::cos(course_up_ * DEG_TO_RAD);
}

std::optional<MapView> MapView::of_tile(int zoom, int x, int y, int tile_size) {
    if (zoom < 0 || zoom > kMostZoom || tile_size < 1 || tile_size > kMostTileSize) return std::nullopt;
    const int tiles = 1 << zoom;
    if (x < 0 || y < 0 || x >= tiles || y >= tiles) return std::nullopt;
    const Position centre{mercator_latitude(0.5 - (y + 0.5) / tiles), (x + 0.5) / tiles * 360.0 - 180.0};
    return MapView(Exact{}, centre, static_cast<double>(tile_size) * tiles, {tile_size, tile_size}, 0.0);
}

ScreenPixel MapView::middle() const {
    return {0.5 * (size_.width - 1), 0.5 * (size_.height - 1)};
}

double MapView::metres_per_pixel() const {
    return kMetresAround * cosine_of_latitude(centre_.latitude) / pixels_around_;
}

std::optional<ScreenPixel> MapView::to_screen(Position position) const {
    if (!(std::fabs(position.latitude) <= kMostLatitude) || !std::isfinite(position.longitude))
        return std::nullopt;
    const double east = turned(position.longitude - centre_.longitude) / 360.0 * pixels_around_;
    const double south = parts_between(position.latitude * DEG_TO_RAD, centre_.latitude * DEG_TO_RAD) /
                         (2.0 * PI_11) * pixels_around_;
    const ScreenPixel centre = middle();
    return ScreenPixel{centre.x + east * cosine_ + south * sine_, centre.y - east * sine_ + south * cosine_};
}

std::optional<Position> MapView::to_position(ScreenPixel pixel) const {
    const ScreenPixel centre = middle();
    const double right = pixel.x - centre.x;
    const double down = pixel.y - centre.y;
    const double east = right * cosine_ - down * sine_;
    const double south = right * sine_ + down * cosine_;
    const double latitude =
        centre_.latitude +
        latitude_over(centre_.latitude * DEG_TO_RAD, -south / pixels_around_ * (2.0 * PI_11)) * RAD_TO_DEG;
    const double longitude = centre_.longitude + east / pixels_around_ * 360.0;
    if (!(std::fabs(latitude) <= kMostLatitude) || !std::isfinite(longitude)) return std::nullopt;
    return Position{latitude, turned(longitude)};
}

Extent MapView::extent() const {
    // The projection is linear except for the latitude, which grows with its row: the corners are farthest.
    const double right = 0.5 * size_.width;
    const double down = 0.5 * size_.height;
    const double east = std::fabs(right * cosine_) + std::fabs(down * sine_);
    const double south = std::fabs(right * sine_) + std::fabs(down * cosine_);
    const auto latitude_at = [this](double north) {
        const double over =
            latitude_over(centre_.latitude * DEG_TO_RAD, north / pixels_around_ * (2.0 * PI_11));
        return std::clamp(centre_.latitude + over * RAD_TO_DEG, -kMostLatitude, kMostLatitude);
    };
    const double degrees = east / pixels_around_ * 360.0;
    return {latitude_at(-south), latitude_at(south), turned(centre_.longitude - std::min(degrees, 180.0)),
            std::min(2.0 * degrees, 360.0)};
}

MapView MapView::moved_by(double dx, double dy) const {
    const ScreenPixel centre = middle();
    const std::optional<Position> moved = to_position({centre.x + dx, centre.y + dy});
    return moved ? MapView(Exact{}, *moved, pixels_around_, size_, course_up_) : *this;
}

MapView MapView::zoomed(double factor, ScreenPixel about) const {
    const MapView zoomed(Exact{}, centre_, pixels_around_ * factor, size_, course_up_);
    const double part = 1.0 - pixels_around_ / zoomed.pixels_around_;
    const ScreenPixel centre = middle();
    const MapView moved = moved_by((about.x - centre.x) * part, (about.y - centre.y) * part);
    return {Exact{}, moved.centre_, zoomed.pixels_around_, size_, course_up_};
}

MapView MapView::turned_to(double course_up) const {
    return {Exact{}, centre_, pixels_around_, size_, course_up};
}

MapView MapView::resized(ScreenSize size) const {
    return {Exact{}, centre_, pixels_around_, size, course_up_};
}

}  // namespace zellap10::plotter
