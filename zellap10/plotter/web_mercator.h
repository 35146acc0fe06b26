#pragma once

#include <cmath>

#include <zellap10/platform/angle.h>

/// @file
///
/// Spherical Mercator (EPSG:3857) in turns: the plane is 1 wide and 1 high from 180 west, 85.0511 north.

namespace zellap10::plotter {

/// The latitude at which the plane of web maps is as high as it is wide, DEGREES.
constexpr double kWebMercatorLatitude = 85.05112877980659;

/// The circumference of the sphere, metres. Its radius is the equatorial radius of WGS 84.
constexpr double kMetresAround = 2.0 * platform::PI_11 * 6378137.0;

/// Turns from the equator to the north. The equator has 0 and 85.0511 degrees north have 0.5.
inline double mercator_turns(double latitude) {
    return std::asinh(std::tan(latitude * platform::DEG_TO_RAD)) / (2.0 * platform::PI_11);
}

/// The latitude, DEGREES. The inverse of mercator_turns.
inline double mercator_latitude(double turns) {
    return std::atan(std::sinh(turns * (2.0 * platform::PI_11))) * platform::RAD_TO_DEG;
}

}  // namespace zellap10::plotter
