#pragma once

namespace zellap10::projection {

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

/// Arc from the equator to a latitude, in the unit of the coefficients; (3-21) too:
///   c0 phi - c2 sin 2phi + c4 sin 4phi - c6 sin 6phi
/// The terms of 17 m and 0.02 m take their sines from the two that are at hand: the last place of three arcs
/// in a million changes by that, and a forward projection takes two thirds of the time.
///
/// @param phi      latitude, RADIANS
/// @param sin_phi  its sine
/// @param sin_2phi the sine of twice phi
inline double meridian_arc(const MeridianArc& arc, double phi, double sin_phi, double sin_2phi) {
    const double cos_2phi = 1.0 - 2.0 * (sin_phi * sin_phi);
    const double cos_4phi = 1.0 - 2.0 * (sin_2phi * sin_2phi);
    const double sin_4phi = 2.0 * sin_2phi * cos_2phi;
    const double sin_6phi = sin_4phi * cos_2phi + cos_4phi * sin_2phi;
    return arc.c0 * phi - arc.c2 * sin_2phi + arc.c4 * sin_4phi - arc.c6 * sin_6phi;
}

}  // namespace zellap10::projection
