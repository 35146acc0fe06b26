#pragma once

#include <optional>

#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/position.h>

/// @file
///
/// The view of a moving map: which part of the earth the screen shows, how large, and which course is up.

namespace zellap10::plotter {

/// A view in the spherical Mercator projection of web maps (EPSG:3857), so that a web tile is a view too.
///
/// A view is a value. Positions are WGS 84; screen pixel (0, 0) is the centre of the upper left pixel, and
/// the view's centre lies in the middle of the screen. If a view is wider than the earth, the earth repeats.
///
/// A position converted to the screen and back moves by at most 1e-6 pixel, for latitudes up to 85 degrees
/// and 0.01 metres per pixel or more. Below that, the precision of a double is the limit.
class MapView {
public:
    /// Values out of range are set to the nearest limit; NaN and infinity count as 0.
    ///
    /// @param centre            WGS 84; latitude -85.0511 to 85.0511, where web maps end
    /// @param metres_per_pixel  on the ground at the centre, 0.0001 to 1e7
    /// @param size              width and height of the screen, 0 to 32767
    /// @param course_up         the true course that points up, DEGREES, in any turn
    MapView(Position centre, double metres_per_pixel, ScreenSize size, double course_up = 0.0);

    /// The view of a web tile. A larger view made from it by `resized` contains the pixels of the tile.
    ///
    /// @param zoom       0 to 24; the earth is 2^zoom tiles wide
    /// @param x, y       0 to 2^zoom - 1, from the west and from the north
    /// @param tile_size  pixels along an edge, 1 to 4096
    /// @return           the view; empty if a number is out of range
    [[nodiscard]] static std::optional<MapView> of_tile(int zoom, int x, int y, int tile_size = 256);

    /// The screen pixel of a position, inside the screen or outside, in the turn nearest to the centre.
    ///
    /// @return  empty beyond 89 degrees of latitude and for NaN
    [[nodiscard]] std::optional<ScreenPixel> to_screen(Position position) const;

    /// The position at a screen pixel; the longitude is from -180 to 180.
    ///
    /// @return  empty beyond 89 degrees of latitude and for NaN
    [[nodiscard]] std::optional<Position> to_position(ScreenPixel pixel) const;

    /// The smallest extent around the screen, to the outer edges of its pixels; a full turn if the view is
    /// wider than the earth.
    [[nodiscard]] Extent extent() const;

    [[nodiscard]] Position centre() const { return centre_; }      ///< WGS 84
    [[nodiscard]] ScreenSize size() const { return size_; }        ///< of the screen
    [[nodiscard]] double course_up() const { return course_up_; }  ///< DEGREES, from 0 up to 360

    /// Metres on the ground per pixel, at the centre. At the same pixels_around they decrease towards a pole.
    [[nodiscard]] double metres_per_pixel() const;

    /// The length of the equator in screen pixels: the scale of the projection. A pan does not change it.
    [[nodiscard]] double pixels_around() const { return pixels_around_; }

    /// The view whose centre is `dx` pixels to the right of this centre and `dy` pixels below it. The scale
    /// of the projection does not change: a move by whole pixels shows the same pixels at another place.
    [[nodiscard]] MapView moved_by(double dx, double dy) const;

    /// The view at another scale. The position at one screen pixel stays there.
    ///
    /// @param factor  above 1 to enlarge
    /// @param about   the screen pixel whose position stays
    [[nodiscard]] MapView zoomed(double factor, ScreenPixel about) const;

    /// The view with another course up, about the same centre.
    [[nodiscard]] MapView turned_to(double course_up) const;

    /// The view on another screen, about the same centre and at the same scale.
    [[nodiscard]] MapView resized(ScreenSize size) const;

private:
    struct Exact {};  // pixels around the equator are given, not metres per pixel
    MapView(Exact, Position centre, double pixels_around, ScreenSize size, double course_up);

    [[nodiscard]] ScreenPixel middle() const;

    Position centre_;
    double pixels_around_;
    ScreenSize size_;
    double course_up_;
    double sine_;  // of the course up
    double cosine_;
};

}  // namespace zellap10::plotter
