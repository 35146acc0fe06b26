#pragma once

#include <array>
#include <cmath>

#include <zellap10/datum/tables.h>
#include <zellap10/platform/angle.h>
#include <zellap10/projection/projection.h>

/// The published formulas of projections, datum shifts and meridional parts in long double, to measure the
/// rounding error of the library. Each sine and each power is a call of its own.
namespace plain {

using zellap10::platform::DEG_TO_RAD;
using zellap10::platform::QUARTER_PI;
using zellap10::platform::RAD_TO_DEG;

using Wide = long double;
using Pair = std::array<Wide, 2>;    // latitude and longitude in degrees, or x and y in metres
using Triple = std::array<Wide, 3>;  // the same with a height, or x, y and z

/// The meridian arc from the equator to a latitude in radians, as a part of the semi-major axis.
inline Wide arc(const tagPPARMS& p, Wide phi) {
    const Wide e2 = p.e2, e4 = p.e4, e6 = p.e6;
    return (1 - e2 * 0.25 - e4 * 0.046875 - e6 * 0.01953125) * phi -
           (e2 * 0.375 + e4 * 0.09375 + e6 * 0.0439453125) * std::sin(2 * phi) +
           (e4 * 0.05859375 + e6 * 0.0439453125) * std::sin(4 * phi) -
           e6 * 0.011393229166666666 * std::sin(6 * phi);
}

inline Wide prime_vertical_radius(const tagPPARMS& p, Wide phi) {
    return p.a / std::sqrt(1 - std::sin(phi) * std::sin(phi) * p.e2);
}

inline Pair mercator_f(const tagPPARMS& p, const Pair& at) {
    const Wide s = std::sin(at[0] * DEG_TO_RAD) * p.e;
    const Wide q = std::fabs(std::tan((at[0] / 2 + 45) * DEG_TO_RAD));
    return {(at[1] * DEG_TO_RAD - p.lon0) * p.a,
            std::log(q * std::pow((1 - s) / (s + 1), p.e / Wide(2))) * p.a};
}

inline Pair utm_f(const tagPPARMS& p, const Pair& at) {
    const Wide phi = at[0] * DEG_TO_RAD, N = prime_vertical_radius(p, phi);
    const Wide t = std::tan(phi), T = t * t, c = std::cos(phi), ep2 = p.utm_ep2, U = c * c * ep2;
    const Wide A = (at[1] * DEG_TO_RAD - p.lon0) * c, A2 = A * A;
    const Wide M = phi * p.utm_c0 - std::sin(2 * phi) * p.utm_c2 + std::sin(4 * phi) * p.utm_c4 -
                   std::sin(6 * phi) * p.utm_c6;
    const Wide fifth = (5 - 18 * T + 72 * U + T * T - 58 * ep2) / 120 * A2 * A2 * A;
    const Wide sixth = (61 - 58 * T + 600 * U + T * T - 330 * ep2) / 720 * A2;
    return {
        (fifth + (1 - T + U) * A2 * A / 6 + A) * N * 0.9996L,
        (((sixth + ((4 * U + 9) * U + (5 - T)) / 24) * A2 + 0.5L) * A2 * t * N + (M - p.utm_m0)) * 0.9996L};
}

inline Pair utm_i(const tagPPARMS& p, const Pair& plane) {
    const Wide e2 = p.e2, e1 = p.utm_e1, e1_2 = e1 * e1, ep2 = p.utm_ep2;
    const Wide mu = (plane[1] / 0.9996L + p.utm_m0) /
                    ((1 - e2 * 0.25 - p.e4 * Wide(0.046875) - p.e6 * Wide(0.01953125)) * p.a);
    const Wide phi = mu + (1.5L - 27 * e1_2 / 32) * e1 * std::sin(2 * mu) +
                     (21 - 27.5L * e1_2) / 16 * e1_2 * std::sin(4 * mu) +
                     151 * e1_2 * e1 / 96 * std::sin(6 * mu) + 1097 * e1_2 * e1_2 / 512 * std::sin(8 * mu);
    const Wide c = std::cos(phi), U = c * c * ep2, t = std::tan(phi), T = t * t,
               N = prime_vertical_radius(p, phi);
    const Wide R = (1 - e2) * N * N * N / (p.a * Wide(p.a)), D = plane[0] / (N * 0.9996L), D2 = D * D;
    const Wide fourth = (5 + 3 * T + 10 * U - 4 * U * U - 9 * ep2) * D2 / 24;
    const Wide sixth = (61 + 90 * T + 298 * U + 45 * T * T - 252 * ep2 - 3 * U * U) * D2 * D2 / 720;
    const Wide third = (1 + 2 * T + U) * D2 / 6;
    const Wide fifth = (5 - 2 * U + 28 * T - 3 * U * U + 8 * ep2 + 24 * T * T) * D2 * D2 / 120;
    return {(phi - t * N / R * D2 * (0.5L - fourth + sixth)) * RAD_TO_DEG,
            (D * (1 - third + fifth) / c + p.lon0) * RAD_TO_DEG};
}

inline Pair polyconic_f(const tagPPARMS& p, const Pair& at) {
    const Wide phi = at[0] * DEG_TO_RAD, dlam = at[1] * DEG_TO_RAD - p.lon0, w = 1 / std::tan(phi);
    const Wide E = dlam * std::sin(phi), N = prime_vertical_radius(p, phi);
    return {w * std::sin(E) * N, w * (1 - std::cos(E)) * N + (arc(p, phi) * p.a - p.poly_m0)};
}

inline Wide lambert_t(const tagPPARMS& p, Wide phi) {
    const Wide s = std::sin(phi) * p.e;
    return std::tan(QUARTER_PI - phi / 2) / std::pow((1 - s) / (s + 1), p.e / Wide(2));
}

inline Pair lambert_f(const tagPPARMS& p, const Pair& at) {
    const Wide rho = std::pow(lambert_t(p, at[0] * DEG_TO_RAD), Wide(p.lam_n)) * p.lam_F * p.a;
    const Wide theta = (at[1] * DEG_TO_RAD - p.lon0) * p.lam_n;
    return {std::sin(theta) * rho, p.lam_rho0 - std::cos(theta) * rho};
}

/// The radius of the latitude of origin on a cone with two different standard parallels.
inline Wide lambert_rho0(const tagPPARMS& p, double lat0, double lat1, double lat2) {
    const auto m = [&](Wide phi) { return std::cos(phi) * prime_vertical_radius(p, phi) / p.a; };
    const Wide phi0 = lat0 * Wide(DEG_TO_RAD), phi1 = lat1 * Wide(DEG_TO_RAD), phi2 = lat2 * Wide(DEG_TO_RAD);
    const Wide n = (std::log(m(phi1)) - std::log(m(phi2))) /
                   (std::log(lambert_t(p, phi1)) - std::log(lambert_t(p, phi2)));
    return std::pow(lambert_t(p, phi0), n) * m(phi1) / (std::pow(lambert_t(p, phi1), n) * n) * p.a;
}

/// Molodensky's formulae between a datum and WGS 84.
inline Triple molodensky(const Triple& at, bool to_wgs, int datum) {
    const zellap10::datum::DatumFigures on = zellap10::datum::datum_figures(datum);
    const Wide wgs_a = 6378137.0, wgs_f = 0.0033528106647474805;
    const Wide sign = to_wgs ? 1 : -1, dx = sign * on.dx, dy = sign * on.dy, dz = sign * on.dz;
    const Wide a = to_wgs ? Wide(on.a) : wgs_a, f = to_wgs ? Wide(on.f) : wgs_f;
    const Wide e2 = to_wgs ? Wide(on.e2) : Wide(0.0066943799901413165);
    const Wide da = sign * (wgs_a - on.a), df = sign * (wgs_f - on.f);
    const Wide phi = at[0] * DEG_TO_RAD, lam = at[1] * DEG_TO_RAD, h = at[2];
    const Wide s = std::sin(phi), c = std::cos(phi), W = 1 - s * s * e2;
    const Wide Rn = a / std::sqrt(W), Rm = (1 - e2) * a / std::pow(W, 1.5L);
    const Wide dphi = (-std::cos(lam) * s * dx - std::sin(lam) * s * dy + c * dz + Rn * c * s * e2 / a * da +
                       (Rm / (1 - f) + (1 - f) * Rn) * c * s * df) /
                      (Rm + h);
    const Wide dlam = (std::cos(lam) * dy - std::sin(lam) * dx) / ((Rn + h) * c);
    const Wide dh =
        (std::sin(lam) * dy + std::cos(lam) * dx) * c + s * dz - da * a / Rn + (1 - f) * Rn * (s * s) * df;
    return {(phi + dphi) * RAD_TO_DEG, (lam + dlam) * RAD_TO_DEG, h + dh};
}

inline Triple llhxyz(const Triple& at, int datum) {
    const zellap10::datum::DatumFigures on = zellap10::datum::datum_figures(datum);
    const Wide phi = at[0] * DEG_TO_RAD, lam = at[1] * DEG_TO_RAD, h = at[2];
    const Wide N = on.a / std::sqrt(1 - std::sin(phi) * std::sin(phi) * on.e2);
    return {std::cos(lam) * (N + h) * std::cos(phi), std::sin(lam) * (N + h) * std::cos(phi),
            ((1 - Wide(on.e2)) * N + h) * std::sin(phi)};
}

/// Meridional parts of a latitude in radians.
inline Wide m_parts(Wide phi) {
    const Wide s = std::sin(phi);
    return 7915.704486L * std::log10(std::fabs(std::tan(phi / 2 + QUARTER_PI))) - 23.268932L * s +
           0.0525L * (s * s * s) + 0.000213L * (s * s * s * s * s);
}

}  // namespace plain
