#include "zellap10/projection/polyconic.h"

#include <cmath>
#include <limits>

#include <zellap10/platform/angle.h>
#include <zellap10/projection/meridian_arc.h>

// Symbols as in the source: N radius of curvature in the prime vertical, M arc from the equator, Ma = M / a.
// Forward, with E = (lam - lam0) sin phi:
//   x = N cot phi sin E                       (18-12)
//   y = M - M0 + N cot phi (1 - cos E)        (18-13)
// Inverse, by Newton's method from phi = A = (M0 + y) / a, with B = x^2 / a^2 + A^2, K = the source's C
// (18-20) and G = the derivative Mn' (18-17):
//   P = A (K Ma + 1) - Ma - (Ma^2 + B) K / 2
//   Q = e2 sin 2phi (Ma^2 + B - 2 A Ma) K / 4 + (A - Ma) (K G - 2 / sin 2phi) - G
//   phi - P / Q is the next phi               (18-21)
//   lam = asin(x K / a) / sin phi + lam0      (18-22)
// Departures: the source divides by K in the first term of Q; the longitude uses K of the last pass, computed
// from the latitude at which that pass began.

namespace zellap10::projection {
namespace {

using platform::DEG_TO_RAD;
using platform::RAD_TO_DEG;

// RADIANS: convergence is quadratic, so the step after one of this size is lost in the rounding. Near the
// equator it is slower, and the last step leaves up to 3e-7 degrees of latitude. The K of the longitude is
// one pass older, which leaves an error of this tolerance divided by the latitude.
constexpr double kPolyconicTolRad = 0.0000001;
// Points of a chart converge in a few passes. Some points of the plane never converge; they have no position.
constexpr int kPolyconicPasses = 100;

// Arc from the equator to phi, radians, with its sine s and its cosine c; metres.
double polyconic_arc(const tagPPARMS* parms, double phi, double s, double c) {
    return meridian_arc(meridian_arc_of(parms->e2, parms->e4, parms->e6), multiples_of(phi, s, c)) * parms->a;
}

}  // namespace
}  // namespace zellap10::projection

using namespace zellap10::projection;

void polyconic_init(double lat, double lon, tagPPARMS* parms) {
    parms->lat0 = lat * DEG_TO_RAD;
    parms->lon0 = lon * DEG_TO_RAD;
    parms->poly_m0 = polyconic_arc(parms, parms->lat0, std::sin(parms->lat0), std::cos(parms->lat0));
}

void polyconic_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y) {
    const double phi = lat * DEG_TO_RAD;
    const double lam = lon * DEG_TO_RAD;
    if (phi == 0.0) {
        *x = (lam - parms->lon0) * parms->a;
        *y = -parms->poly_m0;
        return;
    }
    const double s = std::sin(phi);
    const double c = std::cos(phi);
    const double M = polyconic_arc(parms, phi, s, c);
    const double n = parms->a / std::sqrt(1.0 - s * s * parms->e2);
    const double E = (lam - parms->lon0) * s;
    const double w = c / s;
    *x = w * std::sin(E) * n;
    *y = w * (1.0 - std::cos(E)) * n + (M - parms->poly_m0);
}

void polyconic_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon) {
    const double a = parms->a;
    if (y == -parms->poly_m0) {
        *lat = 0.0;
        *lon = (x / a + parms->lon0) * RAD_TO_DEG;
        return;
    }
    const double A = (y + parms->poly_m0) / a;
    const double B = x * x / (a * a) + A * A;
    const MeridianArc arc = meridian_arc_of(parms->e2, parms->e4, parms->e6);
    double phi = A;
    for (int pass = 0; pass < kPolyconicPasses; ++pass) {
        const double before = phi;
        // K and Q magnify the rounding of the arc, so sin 4 phi is not derived from sin 2 phi.
        const Multiples at = {phi, std::sin(2.0 * phi), std::cos(2.0 * phi), std::sin(4.0 * phi)};
        const double s = std::sin(phi);
        const double K = std::sqrt(1.0 - s * s * parms->e2) * std::tan(phi);
        const double G = arc.c0 - 2.0 * arc.c2 * at.cos_2 + 4.0 * arc.c4 * at.cos_4 - 6.0 * arc.c6 * at.cos_6;
        const double S = at.sin_2;
        const double Ma = meridian_arc(arc, at);
        const double P = (Ma * K + 1.0) * A - Ma - (Ma * Ma + B) * K * 0.5;
        const double Q =
            (G * K - 2.0 / S) * (A - Ma) + (Ma * Ma + B - 2.0 * Ma * A) * parms->e2 * S * K * 0.25 - G;
        phi = phi - P / Q;
        if (!(std::fabs(phi - before) > kPolyconicTolRad)) {
            *lat = phi * RAD_TO_DEG;
            *lon = (std::asin(K * x / a) / std::sin(phi) + parms->lon0) * RAD_TO_DEG;
            return;
        }
    }
    *lat = *lon = std::numeric_limits<double>::quiet_NaN();
}
