#pragma once

#include <cmath>

namespace zellap10::projection {

/// The sines and cosines of 2, 4 and 6 times an angle; those of 4 and 6 are computed from those of 2.
struct Multiples {
    double angle;  // RADIANS
    double sin_2 = std::sin(2.0 * angle);
    double cos_2 = std::cos(2.0 * angle);
    double sin_4 = 2.0 * sin_2 * cos_2;
    double cos_4 = 1.0 - 2.0 * (sin_2 * sin_2);
    double sin_6 = sin_4 * cos_2 + cos_4 * sin_2;
    double cos_6 = cos_4 * cos_2 - sin_4 * sin_2;
};

/// The multiples of an angle whose sine and cosine are known.
inline Multiples multiples_of(double angle, double sine, double cosine) {
    return {angle, 2.0 * sine * cosine, 1.0 - 2.0 * (sine * sine)};
}

/// Coefficients of the meridian arc's series, as parts of the semi-major axis.
struct MeridianArc {
    double c0, c2, c4, c6;
};

/// Source: Snyder (1987), eq. (3-21); the fractions are 1/4, 3/64, 5/256; 3/8, 3/32, 45/1024; 15/256,
/// 45/1024; 35/3072.
///
/// @param e2, e4, e6  the eccentricity to the 2nd, 4th and 6th
inline MeridianArc meridian_arc_of(double e2, double e4, double e6) {
    return {1.0 - e2 * 0.25 - e4 * 0.046875 - e6 * 0.01953125, e2 * 0.375 + e4 * 0.09375 + e6 * 0.0439453125,
            e4 * 0.05859375 + e6 * 0.0439453125, e6 * 0.011393229166666666};
}

/// Arc from the equator to a latitude, in the unit of the coefficients; (3-21) too.
inline double meridian_arc(const MeridianArc& arc, const Multiples& phi) {
    return arc.c0 * phi.angle - arc.c2 * phi.sin_2 + arc.c4 * phi.sin_4 - arc.c6 * phi.sin_6;
}

}  // namespace zellap10::projection
