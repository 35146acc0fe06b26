#pragma once

#include <optional>

#include <zellap10/georef/geo_record.h>
#include <zellap10/plotter/linear.h>

namespace zellap10::plotter {

/// A longitude as the fit has it: over the 180th meridian positive ones lie a turn further down.
inline double as_fitted(const CGEORec& record, double longitude) {
    return record.Wraps180 != 0 && longitude > 0.0 ? longitude - 360.0 : longitude;
}

/// The pixel of a reference point.
inline Pair pixel_of_point(const CRefPoint& point) {
    return {static_cast<double>(point.X), static_cast<double>(point.Y)};
}

/// Direct mode: longitude and latitude of a pixel by one of the two regions, wherever the pixel stands; over
/// the 180th meridian the longitude is as the fit has it.
Pair position_by(const CGEORec& record, int region, Pair pixel);

/// Direct mode: the pixel of a longitude and latitude, the longitude in the turn of the fit.
std::optional<Pair> direct_pixel_of(const CGEORec& record, Pair position);

}  // namespace zellap10::plotter
