#pragma once

#include <optional>
#include <vector>

#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/vector.h>

namespace zellap10::plotter {

/// The longitude used by the fit: on a chart across the 180th meridian, positive longitudes are reduced by
/// 360.
inline double as_fitted(const CGEORec& record, double longitude) {
    return record.Wraps180 != 0 && longitude > 0.0 ? longitude - 360.0 : longitude;
}

inline Vector pixel_of_point(const CRefPoint& point) {
    return {static_cast<double>(point.X), static_cast<double>(point.Y)};
}

/// Direct mode: longitude and latitude of a pixel by the polynomials of one region. The longitude is that of
/// the fit.
Vector position_by(const CGEORec& record, int region, Vector pixel);

/// A pixel and its longitude and latitude.
struct NewtonStart {
    Vector pixel;
    Vector position;
};

/// Reference points from which Newton's method may start: all of them, or if there are many some that are
/// spread over the chart.
std::vector<NewtonStart> newton_starts(const CGEORec& record);

/// Where Newton's method starts for a longitude and latitude: the pixel of wpxy, or the start that is nearer
/// to the position if wpxy misses by more than that.
Vector start_for(const CGEORec& record, const std::vector<NewtonStart>& starts, Vector position);

/// Direct mode: the pixel of a longitude and latitude, the longitude in the turn of the fit.
///
/// @param start  a pixel near it
std::optional<Vector> direct_pixel_of(const CGEORec& record, Vector position, Vector start);

}  // namespace zellap10::plotter
