#pragma once

/// @file
///
/// The area that a chart or an inset covers on the earth.

#include <optional>
#include <vector>

#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// A part of the earth between two parallels and two meridians, its edges included. It may cross the 180th
/// meridian.
struct Extent {
    double south = 0.0;  ///< DEGREES, north positive
    double north = 0.0;  ///< DEGREES, not below south
    double west = 0.0;   ///< DEGREES, from -180 to 180
    double width = 0.0;  ///< DEGREES eastward from west, 0 to 360

    /// Whether it contains a position. The longitude may be in any turn.
    [[nodiscard]] bool contains(Position position) const;

    /// Whether they have a position in common. At a pole, different longitudes count as different positions:
    /// two extents that meet only at a pole overlap only if their longitudes do.
    [[nodiscard]] bool overlaps(const Extent& other) const;
};

/// A polygon on the earth. It includes its edges, which are straight in latitude and longitude.
///
/// An outline around a pole covers nothing, overlaps nothing and has no extent. An outline runs around a pole
/// if its corners are on one side of the equator and its longitudes add up to a full turn, each edge taken
/// the short way.
struct Outline {
    /// The corners in order. An edge joins the last to the first. Longitudes go past 180 or -180 if the
    /// outline crosses that meridian.
    std::vector<Position> corners;
    Datum datum = Datum::kWgs84;  ///< of the corners

    /// Whether it contains a position in its datum. The longitude may be in any turn. Positions that are not
    /// finite are not covered.
    [[nodiscard]] bool covers(Position position) const;

    /// Whether they have a position in common. See Extent::overlaps for areas that meet only at a
    /// pole.
    [[nodiscard]] bool overlaps(const Extent& extent) const;

    /// The smallest extent around it; empty if it has no corners or runs around a pole.
    [[nodiscard]] std::optional<Extent> extent() const;
};

/// The outline of a record: the polygon of its vertices, or the convex hull of its reference points if it has
/// fewer than three vertices. It has no corners if the record has neither three vertices nor three points
/// that are not on one line. The record needs no fit, so that a chart opened for information only is enough.
///
/// Vertices are placed in the turn nearest to the middle of the reference points, so that an edge of 180
/// degrees or more is possible. Without reference points each edge goes the short way. An edge of exactly 180
/// degrees goes the way that the file's longitudes give. If the outline then has no area, all longitudes are
/// used as in the file. Vertices and points off the earth are ignored.
[[nodiscard]] Outline outline_of(const CGEORec& record, Datum datum = Datum::kWgs84);

}  // namespace zellap10::plotter
