#include "zellap10/projection/lambert.h"

#include <cmath>

#include <zellap10/platform/angle.h>
#include <zellap10/projection/conformal_sine.h>

// Symbols as in the source, numbers of its equations:
//   t = tan(pi/4 - phi/2) / ((1 - e sin phi) / (1 + e sin phi))^(e/2)   (15-9)
//   m = cos phi / sqrt(1 - e^2 sin^2 phi)                               (14-15)
//   n = (ln m1 - ln m2) / (ln t1 - ln t2), or sin phi1                  (15-8)
//   F = m1 / (n t1^n)                                                   (15-10)
//   rho = a F t^n, theta = n (lam - lam0)                               (15-7), (14-4)
//   x = rho sin theta, y = rho0 - rho cos theta                         (14-1), (14-2)
//   rho = +-sqrt(x^2 + (rho0 - y)^2), t = (rho / (a F))^(1/n)           (14-10), (15-11)
//   phi = pi/2 - 2 atan(t ((1 - e sin phi) / (1 + e sin phi))^(e/2))    (7-9)

namespace zellap10::projection {
namespace {

using platform::DEG_TO_RAD;
using platform::HALF_PI;
using platform::QUARTER_PI;
using platform::RAD_TO_DEG;

// RADIANS: each pass reduces the error by e2, about 1/150, so the last leaves about 7e-10, which is 4 mm.
constexpr double kLambertTolRad = 0.0000001;
// The ellipsoids of the earth need four at most.
constexpr int kLambertPasses = 20;

double lambert_t(double phi, const tagPPARMS* parms) {
    const double s = std::sin(phi) * parms->e;
    return std::tan(QUARTER_PI - phi * 0.5) / std::pow((1.0 - s) / (s + 1.0), parms->e * 0.5);
}

double lambert_m(double phi, const tagPPARMS* parms) {
    const double s = std::sin(phi);
    return std::cos(phi) / std::sqrt(1.0 - s * parms->e2 * s);
}

}  // namespace
}  // namespace zellap10::projection

using namespace zellap10::projection;

void lambert_init(double lat0, double lon0, double lat1, double lat2, tagPPARMS* parms) {
    parms->lat0 = lat0 * DEG_TO_RAD;
    parms->lon0 = lon0 * DEG_TO_RAD;
    const double phi1 = lat1 * DEG_TO_RAD;
    const double t0 = lambert_t(parms->lat0, parms);
    const double t1 = lambert_t(phi1, parms);
    const double m1 = lambert_m(phi1, parms);
    double n = std::sin(phi1);
    if (lat1 != lat2) {
        const double phi2 = lat2 * DEG_TO_RAD;
        const double t2 = lambert_t(phi2, parms);
        const double m2 = lambert_m(phi2, parms);
        n = (std::log(m1) - std::log(m2)) / (std::log(t1) - std::log(t2));
    }
    parms->lam_n = n;
    parms->lam_F = m1 / (std::pow(t1, n) * n);
    parms->lam_rho0 = std::pow(t0, n) * parms->lam_F * parms->a;
}

void lambert_f(const tagPPARMS* parms, double lat, double lon, double* x, double* y) {
    const double t = lambert_t(lat * DEG_TO_RAD, parms);
    const double rho = std::pow(t, parms->lam_n) * parms->lam_F * parms->a;
    const double theta = (lon * DEG_TO_RAD - parms->lon0) * parms->lam_n;
    *x = std::sin(theta) * rho;
    *y = parms->lam_rho0 - std::cos(theta) * rho;
}

void lambert_i(const tagPPARMS* parms, double x, double y, double* lat, double* lon) {
    const double n = parms->lam_n;
    const double Y = parms->lam_rho0 - y;
    double rho = std::sqrt(Y * Y + x * x);
    if (n < 0.0) rho = -rho;
    const double t0 = std::pow(rho / (parms->lam_F * parms->a), 1.0 / n);
    const double theta = n > 0.0 ? std::atan2(x, Y) : std::atan2(-x, -Y);
    const double h = parms->e * 0.5;
    double t = t0;
    double phi = HALF_PI - 2.0 * std::atan(t);
    for (int pass = 0; pass < kLambertPasses; ++pass) {
        const double before = phi;
        const double s = sine_of_latitude(t) * parms->e;
        t = std::pow((1.0 - s) / (s + 1.0), h) * t0;
        phi = HALF_PI - 2.0 * std::atan(t);
        if (!(std::fabs(phi - before) > kLambertTolRad)) break;
    }
    *lat = phi * RAD_TO_DEG;
    *lon = (theta / n + parms->lon0) * RAD_TO_DEG;
}
