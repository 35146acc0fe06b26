#pragma once

#include <optional>
#include <vector>

#include <zellap10/plotter/position.h>

/// What a chart or an inset covers, of the earth and of the picture.
///
/// A record's outline is the polygon of its vertices; with fewer than three of them it is the convex hull of
/// its reference points. Its edges are straight in latitude and longitude. What lies on an edge is covered.
/// An outline around a pole covers nothing.

namespace zellap10::plotter {

/// A part of the earth between two parallels and two meridians, its edges included; also over the 180th
/// meridian.
struct Extent {
    double south = 0.0;  ///< DEGREES, north positive
    double north = 0.0;  ///< DEGREES, not below south
    double west = 0.0;   ///< DEGREES, from -180 to 180
    double width = 0.0;  ///< DEGREES eastward from west, 0 to 360; past the 180th meridian too

    /// Whether a position lies in it or on its edge, whatever turn its longitude is in.
    bool contains(Position position) const;

    /// Whether they have a place in common.
    bool overlaps(const Extent& other) const;
};

/// A polygon on the earth.
struct Outline {
    /// Its corners in their order; the last is joined to the first. Longitudes run on, past 180 or -180 where
    /// the outline crosses that meridian.
    std::vector<Position> corners;

    /// Whether a position lies in it or on its edge, whatever turn its longitude is in.
    bool covers(Position position) const;

    /// Whether they have a place in common.
    bool overlaps(const Extent& extent) const;

    /// The smallest extent around it; none without corners.
    std::optional<Extent> extent() const;
};

/// The outline of a record in the chart's own datum, without corners where it has neither three vertices nor
/// three points off one line. The record needs no fit: a chart opened for information only will do.
Outline outline_of(const CGEORec& record);

/// The outline in WGS 84, by the record's two offsets.
Outline wgs84_outline_of(const CGEORec& record);

/// Whether a record covers a position in the chart's own datum.
bool covers(const CGEORec& record, Position position);

/// The record that a pixel of a chart belongs to: that of the inset whose outline the pixel lies in, of the
/// smallest of them where there are several, and else the chart's own. An inset's pixels are those of its
/// fitted outline, not InsetRect, whose margin of 80 pixels is the chart's.
///
/// @param base   the record of the chart, as GetBaseGeoRec gives it
/// @param pixel  any pixel
/// @return       base or one of its insets, good until the chart is closed
const CGEORec& record_at(const CGEORec& base, Pixel pixel);

}  // namespace zellap10::plotter
