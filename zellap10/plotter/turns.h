#pragma once

#include <cmath>

namespace zellap10::plotter {

/// A longitude from -180 to 180, as it stands where it lies there already.
inline double within_a_turn(double longitude) {
    return std::fabs(longitude) <= 180.0 ? longitude : std::remainder(longitude, 360.0);
}

/// A longitude in the turn that lies nearest to another, as it stands where that is no more than half a turn
/// off.
inline double nearest_turn(double longitude, double middle) {
    const double east = longitude - middle;
    return std::fabs(east) <= 180.0 ? longitude : middle + std::remainder(east, 360.0);
}

/// How far east of a meridian a longitude lies, from 0 to 360.
inline double degrees_east(double longitude, double meridian) {
    const double east = std::fmod(longitude - meridian, 360.0);
    return east < 0.0 ? east + 360.0 : east;
}

}  // namespace zellap10::plotter
