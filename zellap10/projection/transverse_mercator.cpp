#include "zellap10/projection/transverse_mercator.h"

#include <cmath>

#include <zellap10/platform/angle.h>
#include <zellap10/projection/meridian_arc.h>

// Symbols as in the source: N and R radii of curvature in the prime vertical and in the meridian, M arc from
// the equator, e1 and mu of the footpoint series, ep2 second eccentricity squared; T = tan^2 phi, U = ep2
// cos^2 phi (the source's C), A = (lam - lam0) cos phi, D = x / (N k0). Powers are built by plain
// multiplication from the square up: A^3 = A^2 A, A^4 = A^2 A^2, A^5 = A^4 A, A^6 = A^4 A^2.

namespace zellap10::projection {
namespace {

using platform::DEG_TO_RAD;
using platform::RAD_TO_DEG;

// Scale on the central meridian, and its reciprocal.
constexpr double kScale = 0.9996;
constexpr double kOverScale = 1.0004001600640255;
static_assert(kOverScale == 1.0 / kScale, "one figure twice");

constexpr double kOver6 = 0.16666666666666666;
constexpr double kOver24 = 0.041666666666666664;
constexpr double kOver120 = 0.008333333333333333;
constexpr double kOver720 = 0.001388888888888889;

// Arc from the equator to phi, radians, with its sine s and its cosine c; metres.
double arc_to(const tagPPARMS* parms, double phi, double s, double c) {
    return meridian_arc({parms->utm_c0, parms->utm_c2, parms->utm_c4, parms->utm_c6},
                        multiples_of(phi, s, c));
}

// The latitude on the central meridian that has the rectifying latitude mu; (3-26).
double footpoint(double e1, const Multiples& mu) {
    const double e1_2 = e1 * e1;
    const double e1_3 = e1_2 * e1;
    const double e1_4 = e1_2 * e1_2;
    return mu.angle + (1.5 * e1 - 0.84375 * e1_3) * mu.sin_2 + (1.3125 * e1_2 - 1.71875 * e1_4) * mu.sin_4 +
           1.5729166666666665 * e1_3 * mu.sin_6 + 2.142578125 * e1_4 * (2.0 * mu.sin_4 * mu.cos_4);
}

}  // namespace
}  // namespace zellap10::projection

using namespace zellap10::projection;

void utm_init(double lat, double lon, tagPPARMS* parms) {
    parms->lat0 = lat * DEG_TO_RAD;
    parms->lon0 = lon * DEG_TO_RAD;
    const MeridianArc arc = meridian_arc_of(parms->e2, parms->e4, parms->e6);
    parms->utm_c0 = arc.c0 * parms->a;
    parms->utm_c2 = arc.c2 * parms->a;
    parms->utm_c4 = arc.c4 * parms->a;
    parms->utm_c6 = arc.c6 * parms->a;
    parms->utm_m0 = arc_to(parms, parms->lat0, std::sin(parms->lat0), std::cos(parms->lat0));
    const double r = std::sqrt(1.0 - parms->e2);
    parms->utm_e1 = (1.0 - r) / (r + 1.0);
    parms->utm_ep2 = parms->e2 / (1.0 - parms->e2);
}

void utm_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y) {
    const double ep2 = parms->utm_ep2;
    const double phi = lat * DEG_TO_RAD;
    const double lam = lon * DEG_TO_RAD;
    const double s = std::sin(phi);
    const double c = std::cos(phi);
    const double n = parms->a / std::sqrt(1.0 - s * s * parms->e2);
    const double t = s / c;
    const double T = t * t;
    const double U = c * c * ep2;
    const double A = (lam - parms->lon0) * c;
    const double A2 = A * A;
    const double A3 = A2 * A;
    const double A5 = A2 * A2 * A;
    const double M = arc_to(parms, phi, s, c);
    *x =
        ((5.0 - 18.0 * T + 72.0 * U + T * T - 58.0 * ep2) * A5 * kOver120 + (1.0 - T + U) * A3 * kOver6 + A) *
        n * kScale;
    *y = ((((61.0 - 58.0 * T + 600.0 * U + T * T - 330.0 * ep2) * A2 * kOver720 +
            ((4.0 * U + 9.0) * U + (5.0 - T)) * kOver24) *
               A2 +
           0.5) *
              A2 * t * n +
          (M - parms->utm_m0)) *
         kScale;
}

void utm_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon) {
    const double ep2 = parms->utm_ep2;
    const double M = y * kOverScale + parms->utm_m0;
    const double mu = M / (meridian_arc_of(parms->e2, parms->e4, parms->e6).c0 * parms->a);
    const double phi1 = footpoint(parms->utm_e1, {mu});
    const double s = std::sin(phi1);
    const double c = std::cos(phi1);
    const double U = c * c * ep2;
    const double t = s / c;
    const double T = t * t;
    const double W = 1.0 - s * s * parms->e2;
    const double root = std::sqrt(W);
    const double n = parms->a / root;
    const double R = (1.0 - parms->e2) * parms->a / (W * root);
    const double D = x / (n * kScale);
    const double D2 = D * D;
    const double D3 = D2 * D;
    const double D4 = D2 * D2;
    const double D5 = D4 * D;
    const double D6 = D4 * D2;
    *lat = (phi1 -
            (t * n / R) * (D2 * 0.5 - (5.0 + 3.0 * T + 10.0 * U - 4.0 * (U * U) - 9.0 * ep2) * D4 * kOver24 +
                           (61.0 + 90.0 * T + 298.0 * U + 45.0 * (T * T) - 252.0 * ep2 - 3.0 * (U * U)) * D6 *
                               kOver720)) *
           RAD_TO_DEG;
    *lon = ((D - (1.0 + 2.0 * T + U) * D3 * kOver6 +
             (5.0 - 2.0 * U + 28.0 * T - 3.0 * (U * U) + 8.0 * ep2 + 24.0 * (T * T)) * D5 * kOver120) /
                c +
            parms->lon0) *
           RAD_TO_DEG;
}
