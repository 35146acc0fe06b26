#pragma once

#include <array>
#include <cmath>

#include <zellap10/datum/tables.h>
#include <zellap10/platform/angle.h>
#include <zellap10/projection/projection.h>

/// The formulas of projections, datum shifts and navigation as they are written down, each sine and each
/// power a call of its own, in any real type: in double what the library is compared with, in a wider one
/// what its rounding is measured by. Records and tables are taken as the doubles that they are.
namespace plain {

using zellap10::platform::DEG_TO_RAD;
using zellap10::platform::HALF_PI;
using zellap10::platform::QUARTER_PI;
using zellap10::platform::RAD_TO_DEG;

template <class Real>
using Pair = std::array<Real, 2>;  // latitude and longitude in degrees, or x and y in metres
template <class Real>
using Triple = std::array<Real, 3>;  // the same with a height, or x, y and z

/// Passes of an iteration: as many as are asked for, or, where that is 0, until it has settled or comes to
/// the most; then they are told.
struct Passes {
    int count = 0;
    int most = 2000;

    template <class Pass>
    void run(Pass pass) {
        const int wanted = count;
        for (count = 0; count < most;) {
            const bool settled = pass();
            if (++count == wanted || (wanted == 0 && settled)) return;
        }
    }
};

template <class Real>
Pair<Real> mercator_f(const tagPPARMS& p, const Pair<Real>& at) {
    const Real s = std::sin(at[0] * DEG_TO_RAD) * p.e;
    const Real q = std::fabs(std::tan((at[0] * Real(0.5) + 45) * DEG_TO_RAD));
    const Real w = std::pow((1 - s) / (s + 1), Real(p.e) * Real(0.5));
    return {(at[1] * DEG_TO_RAD - p.lon0) * p.a, std::log(q * w) * p.a};
}

template <class Real>
Pair<Real> mercator_i(const tagPPARMS& p, const Pair<Real>& plane, Passes& passes) {
    const Real t = std::pow(Real(2.71828182846), -(plane[1] / p.a));
    const Real h = Real(p.e) * Real(0.5);
    Real phi = 90 - 2 * (std::atan(t) * RAD_TO_DEG);
    passes.run([&] {
        const Real before = phi;
        const Real s = std::sin(phi * DEG_TO_RAD) * p.e;
        phi = 90 - 2 * (std::atan(std::pow((1 - s) / (s + 1), h) * t) * RAD_TO_DEG);
        return !(std::fabs(phi - before) > 0.0000001);
    });
    return {phi, (plane[0] / p.a) * RAD_TO_DEG + Real(p.lon0) * RAD_TO_DEG};
}

template <class Real>
Pair<Real> utm_f(const tagPPARMS& p, const Pair<Real>& at) {
    const Real phi = at[0] * DEG_TO_RAD, s = std::sin(phi), N = p.a / std::sqrt(1 - s * s * p.e2);
    const Real t = std::tan(phi), T = t * t, c = std::cos(phi), ep2 = p.utm_ep2, U = c * c * ep2;
    const Real A = (at[1] * DEG_TO_RAD - p.lon0) * c;
    const Real A2 = A * A, A3 = A2 * A, A5 = A2 * A2 * A;
    const Real M = phi * p.utm_c0 - std::sin(2 * phi) * p.utm_c2 + std::sin(4 * phi) * p.utm_c4 -
                   std::sin(6 * phi) * p.utm_c6;
    const Real x = ((5 - 18 * T + 72 * U + T * T - 58 * ep2) * A5 * 0.008333333333333333 +
                    (1 - T + U) * A3 * 0.16666666666666666 + A) *
                   N * 0.9996;
    const Real y = ((((61 - 58 * T + 600 * U + T * T - 330 * ep2) * A2 * 0.001388888888888889 +
                      ((4 * U + 9) * U + (5 - T)) * 0.041666666666666664) *
                         A2 +
                     Real(0.5)) *
                        A2 * t * N +
                    (M - p.utm_m0)) *
                   0.9996;
    return {x, y};
}

template <class Real>
Pair<Real> utm_i(const tagPPARMS& p, const Pair<Real>& plane) {
    const Real e2 = p.e2, e4 = p.e4, e6 = p.e6, ep2 = p.utm_ep2, e1 = p.utm_e1;
    const Real M = plane[1] * 1.0004001600640255 + p.utm_m0;
    const Real mu = M / ((1 - e2 * 0.25 - e4 * 0.046875 - e6 * 0.01953125) * p.a);
    const Real e1_2 = e1 * e1, e1_3 = e1_2 * e1, e1_4 = e1_2 * e1_2;
    const Real phi1 = mu + (1.5 * e1 - 0.84375 * e1_3) * std::sin(2 * mu) +
                      (1.3125 * e1_2 - 1.71875 * e1_4) * std::sin(4 * mu) +
                      1.5729166666666665 * e1_3 * std::sin(6 * mu) + 2.142578125 * e1_4 * std::sin(8 * mu);
    const Real c = std::cos(phi1), U = c * c * ep2, t = std::tan(phi1), T = t * t, s = std::sin(phi1);
    const Real W = 1 - s * s * e2, N = p.a / std::sqrt(W), R = (1 - e2) * p.a / std::pow(W, Real(1.5));
    const Real D = plane[0] / (N * 0.9996);
    const Real D2 = D * D, D3 = D2 * D, D4 = D2 * D2, D5 = D4 * D, D6 = D4 * D2;
    const Real lat =
        (phi1 -
         (t * N / R) *
             (D2 * 0.5 - (5 + 3 * T + 10 * U - 4 * (U * U) - 9 * ep2) * D4 * 0.041666666666666664 +
              (61 + 90 * T + 298 * U + 45 * (T * T) - 252 * ep2 - 3 * (U * U)) * D6 * 0.001388888888888889)) *
        RAD_TO_DEG;
    const Real lon =
        ((D - (1 + 2 * T + U) * D3 * 0.16666666666666666 +
          (5 - 2 * U + 28 * T - 3 * (U * U) + 8 * ep2 + 24 * (T * T)) * D5 * 0.008333333333333333) /
             c +
         p.lon0) *
        RAD_TO_DEG;
    return {lat, lon};
}

/// The coefficients of the meridian arc as parts of the semi-major axis, and the arc itself.
template <class Real>
struct Arc {
    Real c1, c2, c3, c4;

    explicit Arc(const tagPPARMS& p) {
        const Real e2 = p.e2, e4 = p.e4, e6 = p.e6;
        c1 = 1 - e2 * 0.25 - e4 * 0.046875 - e6 * 0.01953125;
        c2 = e2 * 0.375 + e4 * 0.09375 + e6 * 0.0439453125;
        c3 = e4 * 0.05859375 + e6 * 0.0439453125;
        c4 = e6 * 0.011393229166666666;
    }
    Real operator()(Real phi) const {
        return c1 * phi - c2 * std::sin(2 * phi) + c3 * std::sin(4 * phi) - c4 * std::sin(6 * phi);
    }
};

template <class Real>
Pair<Real> polyconic_f(const tagPPARMS& p, const Pair<Real>& at) {
    const Real phi = at[0] * DEG_TO_RAD, dlam = at[1] * DEG_TO_RAD - p.lon0;
    if (phi == 0) return {dlam * p.a, -p.poly_m0};
    const Real s = std::sin(phi), N = p.a / std::sqrt(1 - s * s * p.e2), E = dlam * s, w = 1 / std::tan(phi);
    return {w * std::sin(E) * N, w * (1 - std::cos(E)) * N + (Arc<Real>(p)(phi) * p.a - p.poly_m0)};
}

template <class Real>
Pair<Real> polyconic_i(const tagPPARMS& p, const Pair<Real>& plane, Passes& passes) {
    const Real x = plane[0], y = plane[1], a = p.a;
    if (y == -p.poly_m0) return {0, (x / a + p.lon0) * RAD_TO_DEG};
    const Real A = (y + p.poly_m0) / a, B = x * x / (a * a) + A * A;
    const Arc<Real> arc(p);
    Real phi = A, K = 0;
    passes.run([&] {
        const Real before = phi, s = std::sin(phi);
        K = std::sqrt(1 - s * s * p.e2) * std::tan(phi);
        const Real G = arc.c1 - 2 * arc.c2 * std::cos(2 * phi) + 4 * arc.c3 * std::cos(4 * phi) -
                       6 * arc.c4 * std::cos(6 * phi);
        const Real S = std::sin(2 * phi), Ma = arc(phi);
        const Real P = (Ma * K + 1) * A - Ma - (Ma * Ma + B) * K * 0.5;
        const Real Q = (G * K - 2 / S) * (A - Ma) + (Ma * Ma + B - 2 * Ma * A) * p.e2 * S * K * 0.25 - G;
        phi = phi - P / Q;
        return !(std::fabs(phi - before) > 0.0000001);
    });
    return {phi * RAD_TO_DEG, (std::asin(K * x / a) / std::sin(phi) + p.lon0) * RAD_TO_DEG};
}

template <class Real>
Pair<Real> lambert_f(const tagPPARMS& p, const Pair<Real>& at) {
    const Real phi = at[0] * DEG_TO_RAD, s = std::sin(phi) * p.e;
    const Real t = std::tan(QUARTER_PI - phi * Real(0.5)) / std::pow((1 - s) / (s + 1), Real(p.e) * 0.5);
    const Real rho = std::pow(t, Real(p.lam_n)) * p.lam_F * p.a;
    const Real theta = (at[1] * DEG_TO_RAD - p.lon0) * p.lam_n;
    return {std::sin(theta) * rho, p.lam_rho0 - std::cos(theta) * rho};
}

template <class Real>
Pair<Real> lambert_i(const tagPPARMS& p, const Pair<Real>& plane, Passes& passes) {
    const Real x = plane[0], Y = p.lam_rho0 - plane[1], n = p.lam_n;
    Real rho = std::sqrt(Y * Y + x * x);
    if (n < 0) rho = -rho;
    const Real t = std::pow(rho / (Real(p.lam_F) * p.a), 1 / n);
    const Real theta = n > 0 ? std::atan2(x, Y) : std::atan2(-x, -Y);
    Real phi = HALF_PI - 2 * std::atan(t);
    passes.run([&] {
        const Real before = phi, s = std::sin(phi) * p.e;
        phi = HALF_PI - 2 * std::atan(std::pow((1 - s) / (s + 1), Real(p.e) * 0.5) * t);
        return !(std::fabs(phi - before) > 0.0000001);
    });
    return {phi * RAD_TO_DEG, (theta / n + p.lon0) * RAD_TO_DEG};
}

/// The cone of Lambert: its constant n, F and the radius of the latitude of origin.
template <class Real>
Triple<Real> lambert_cone(const tagPPARMS& p, double lat0, double lat1, double lat2) {
    const auto t = [&](Real phi) {
        const Real s = std::sin(phi) * p.e;
        return std::tan(QUARTER_PI - phi * Real(0.5)) / std::pow((1 - s) / (s + 1), Real(p.e) * 0.5);
    };
    const auto m = [&](Real phi) {
        return std::cos(phi) / std::sqrt(1 - std::sin(phi) * p.e2 * std::sin(phi));
    };
    const Real phi0 = lat0 * Real(DEG_TO_RAD), phi1 = lat1 * Real(DEG_TO_RAD), phi2 = lat2 * Real(DEG_TO_RAD);
    const Real n = lat1 == lat2
                       ? std::sin(phi1)
                       : (std::log(m(phi1)) - std::log(m(phi2))) / (std::log(t(phi1)) - std::log(t(phi2)));
    const Real F = m(phi1) / (std::pow(t(phi1), n) * n);
    return {n, F, std::pow(t(phi0), n) * F * p.a};
}

/// Both directions of the Molodensky formulae: `shift` is the datum's, away from WGS-84 with its sign turned.
template <class Real>
Triple<Real> molodensky(const Triple<Real>& at, bool to_wgs, int datum) {
    const zellap10::datum::DatumFigures on = zellap10::datum::datum_figures(datum);
    const Real wgs_a = 6378137.0, wgs_f = 0.0033528106647474805;
    const Real sign = to_wgs ? 1 : -1, dx = sign * on.dx, dy = sign * on.dy, dz = sign * on.dz;
    const Real a = to_wgs ? Real(on.a) : wgs_a, f = to_wgs ? Real(on.f) : wgs_f;
    const Real e2 = to_wgs ? Real(on.e2) : Real(0.0066943799901413165);
    const Real da = sign * (wgs_a - on.a), df = sign * (wgs_f - on.f);
    const Real phi = at[0] * DEG_TO_RAD, lam = at[1] * DEG_TO_RAD, h = at[2];
    const Real W = 1 - std::sin(phi) * std::sin(phi) * e2, Rn = a / std::sqrt(W);
    const Real one_less_e2 = to_wgs ? 1 - e2 : Real(0.9933056200098587);
    const Real Rm = one_less_e2 / std::pow(W, Real(1.5)) * a;
    const Real q_rn = to_wgs ? (1 - f) * Rn : Rn * Real(0.9966471893352525);
    const Real rm_q = to_wgs ? Rm / (1 - f) : Rm * Real(1.0033640898209764);
    const Real axis = to_wgs ? (Rn * std::cos(phi) * std::sin(phi) * e2 / a) * da
                             : Rn * std::cos(phi) * std::sin(phi) * Real(1.0495823451489544e-09) * da;
    const Real dphi = (-std::cos(lam) * std::sin(phi) * dx - std::sin(lam) * std::sin(phi) * dy +
                       std::cos(phi) * dz + axis + (rm_q + q_rn) * std::cos(phi) * std::sin(phi) * df) /
                      (Rm + h);
    const Real dlam = (std::cos(lam) * dy - std::sin(lam) * dx) / ((Rn + h) * std::cos(phi));
    const Real dh = (std::sin(lam) * dy + std::cos(lam) * dx) * std::cos(phi) + std::sin(phi) * dz -
                    da * a / Rn + q_rn * (std::sin(phi) * std::sin(phi)) * df;
    return {(phi + dphi) * RAD_TO_DEG, (lam + dlam) * RAD_TO_DEG, h + dh};
}

template <class Real>
Triple<Real> llhxyz(const Triple<Real>& at, int datum) {
    const zellap10::datum::DatumFigures on = zellap10::datum::datum_figures(datum);
    const Real phi = at[0] * DEG_TO_RAD, lam = at[1] * DEG_TO_RAD, h = at[2];
    const Real N = on.a / std::sqrt(1 - std::sin(phi) * std::sin(phi) * on.e2);
    return {std::cos(lam) * (N + h) * std::cos(phi), std::sin(lam) * (N + h) * std::cos(phi),
            ((1 - Real(on.e2)) * N + h) * std::sin(phi)};
}

template <class Real>
Triple<Real> xyzllh(const Triple<Real>& at, int datum) {
    const zellap10::datum::DatumFigures on = zellap10::datum::datum_figures(datum);
    const Real x = at[0], y = at[1], z = at[2], a = on.a, e2 = on.e2, b = a - on.f * a;
    const Real p = std::sqrt(x * x + y * y), theta = std::atan(a * z / (p * b)),
               E = (a * a - b * b) / (b * b);
    const Real s = std::sin(theta), c = std::cos(theta);
    const Real phi = std::atan((z + E * b * (s * s * s)) / (p - e2 * a * (c * c * c)));
    return {phi * RAD_TO_DEG, std::atan2(y, x) * RAD_TO_DEG,
            p / std::cos(phi) - a / std::sqrt(1 - std::sin(phi) * std::sin(phi) * e2)};
}

/// Meridional parts of a latitude in radians, and the latitude in degrees of meridional parts.
template <class Real>
Real parts_of_sine(Real s) {
    return Real(23.268932) * s - Real(0.0525) * (s * s * s) - Real(0.000213) * (s * s * s * s * s);
}
template <class Real>
Real m_parts(Real phi) {
    const Real tangent = std::fabs(std::tan(phi * Real(0.5) + QUARTER_PI));
    return Real(7915.704486) * std::log10(tangent) - parts_of_sine(std::sin(phi));
}
template <class Real>
Real m_parts_inv(Real parts, int refinements = 3) {
    const auto sphere = [](Real minutes) {
        const Real power = std::pow(Real(10), Real(0.00012633114358534178) * minutes);
        return 2 * (std::atan(power) - QUARTER_PI);
    };
    Real phi = sphere(parts);
    for (int i = 0; i < refinements; ++i)
        phi = sphere(parts + parts_of_sine(std::sin(phi)));
    return phi * RAD_TO_DEG;
}

/// Minutes of parts between two latitudes in degrees, the direction of a vector, and the way along a rhumb
/// line.
template <class Real>
Real m_diff(Real lat1, Real lat2) {
    return m_parts(lat2 * DEG_TO_RAD) - m_parts(lat1 * DEG_TO_RAD);
}
template <class Real>
Real m_angle(Real x, Real y) {
    const Real t = std::atan2(y, x) * RAD_TO_DEG - 90;
    return t > 0 ? 360 - t : -t;
}
template <class Real>
Real m_distance(Real dlat, Real dlon, Real lat1, Real lat2) {
    const Real parts = dlat != 0 ? m_diff(lat1, lat2) : m_diff(lat1 - Real(0.0001), lat2 + Real(0.0001));
    const Real departure = (dlat != 0 ? dlat * 60 : Real(0.012)) * dlon * 60 / parts;
    return std::sqrt(departure * departure + dlat * 60 * (dlat * 60));
}
template <class Real>
Pair<Real> m_advance_d(Real lat, Real lon, Real distance, Real course) {
    const Real d = distance * Real(0.016666666666666666);
    const bool east = std::fabs(course - 90) < Real(0.01), west = std::fabs(course - 270) < Real(0.01);
    if (east || west) {
        const Real parallel = m_diff(lat - Real(0.0001), lat + Real(0.0001)) * (east ? d : -d) * 5000;
        return {lat, parallel * Real(0.016666666666666666) + lon};
    }
    const Real to = d * std::cos(course * DEG_TO_RAD) + lat, size = std::fabs(std::tan(course * DEG_TO_RAD));
    const bool minus = (course > 90 && course < 180) || (course > 270 && course < 360);
    return {to, m_diff(lat, to) * (minus ? -size : size) * Real(0.016666666666666666) + lon};
}

}  // namespace plain
