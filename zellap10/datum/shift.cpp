#include "zellap10/datum/shift.h"

#include <cmath>
#include <limits>

#include <zellap10/datum/tables.h>
#include <zellap10/platform/angle.h>

namespace zellap10::datum {
namespace {

using platform::DEG_TO_RAD;
using platform::RAD_TO_DEG;

// A latitude with a smaller cosine is a pole: 1e-12 rad is six micrometres on the ground, and 90 degrees by
// our pi is 1.0e-13 rad past the true right angle.
constexpr double kPoleCosine = 1e-12;

// Of WGS-84: e*e, 1 - e*e, 1 - f, 1 / (1 - f) and e*e / a, each rounded once.
constexpr double kE2 = 0.0066943799901413165;
constexpr double kOneLessE2 = 0.9933056200098587;
constexpr double kOneLessF = 0.9966471893352525;
constexpr double kOverOneLessF = 1.0033640898209764;
constexpr double kE2OverA = 1.0495823451489544e-09;

struct Position {
    double phi, lam, h;
    double sin_phi, cos_phi, sin_lam, cos_lam;
};

Position position_of(double lat, double lon, double h) {
    const double phi = lat * DEG_TO_RAD;
    const double lam = lon * DEG_TO_RAD;
    return {phi, lam, h, std::sin(phi), std::cos(phi), std::sin(lam), std::cos(lam)};
}

// The figures of the Molodensky formulae: the ellipsoid of the given position, and the differences to the
// other.
struct Step {
    double dx, dy, dz;  // shift of the earth's centre, metres
    double a;           // semi-major axis of the given position, metres
    double da;          // change of the semi-major axis, metres
    double df;          // change of the flattening
    double rn, rm;      // radii in the prime vertical (Rn) and in the meridian (Rm), metres
    double q_rn;        // (1 - f) Rn
    double rm_over_q;   // Rm / (1 - f)
    double dphi_axis;   // the term of da in the change of latitude
};

// The formulae as both directions use them:
//   dphi = (-cos lam sin phi dx - sin lam sin phi dy + cos phi dz + dphi_axis
//           + (Rm / q + q Rn) cos phi sin phi df) / (Rm + h)
//   dlam = (cos lam dy - sin lam dx) / ((Rn + h) cos phi)
//   dh   = (sin lam dy + cos lam dx) cos phi + sin phi dz - da a / Rn + q Rn sin^2 phi df
void molodensky(const Position& at, const Step& step, double* lat, double* lon, double* h) {
    const double dphi =
        (-at.cos_lam * at.sin_phi * step.dx - at.sin_lam * at.sin_phi * step.dy + at.cos_phi * step.dz +
         step.dphi_axis + (step.rm_over_q + step.q_rn) * at.cos_phi * at.sin_phi * step.df) /
        (step.rm + at.h);
    const double dh = (at.sin_lam * step.dy + at.cos_lam * step.dx) * at.cos_phi + at.sin_phi * step.dz -
                      step.da * step.a / step.rn + step.q_rn * (at.sin_phi * at.sin_phi) * step.df;
    *lat = (at.phi + dphi) * RAD_TO_DEG;
    if (!(std::fabs(at.cos_phi) < kPoleCosine)) {
        const double dlam = (at.cos_lam * step.dy - at.sin_lam * step.dx) / ((step.rn + at.h) * at.cos_phi);
        *lon = (at.lam + dlam) * RAD_TO_DEG;
    }
    *h = at.h + dh;
}

// All NaN, also a longitude that would not depend on the datum.
void set_nowhere(double* lat, double* lon, double* h) {
    *lat = *lon = *h = std::numeric_limits<double>::quiet_NaN();
}

}  // namespace
}  // namespace zellap10::datum

using namespace zellap10::datum;

void datum_to_WGS(double* lat, double* lon, double* h, int datum) {
    if (!is_row(datum)) return set_nowhere(lat, lon, h);
    const DatumFigures from = datum_figures(datum);
    const Position at = position_of(*lat, *lon, *h);
    const double a = from.a;
    const double q = 1.0 - from.f;
    const double da = kWgs84A - a;
    const double df = kWgs84F - from.f;
    const double w = 1.0 - at.sin_phi * at.sin_phi * from.e2;
    const double root = std::sqrt(w);
    const double rn = a / root;
    const double rm = (1.0 - from.e2) / (w * root) * a;
    const double dphi_axis = (rn * at.cos_phi * at.sin_phi * from.e2 / a) * da;
    molodensky(at, {from.dx, from.dy, from.dz, a, da, df, rn, rm, q * rn, rm / q, dphi_axis}, lat, lon, h);
}

void WGS_to_datum(double* lat, double* lon, double* h, int datum) {
    if (!is_row(datum)) return set_nowhere(lat, lon, h);
    const DatumFigures to = datum_figures(datum);
    const Position at = position_of(*lat, *lon, *h);
    const double da = to.a - kWgs84A;
    const double df = to.f - kWgs84F;
    const double w = 1.0 - at.sin_phi * at.sin_phi * kE2;
    const double root = std::sqrt(w);
    const double rn = kWgs84A / root;
    const double rm = kOneLessE2 / (w * root) * kWgs84A;
    const double dphi_axis = rn * at.cos_phi * at.sin_phi * kE2OverA * da;
    // 0.0 - d and not -d: the shifts are whole numbers, of which 0 has no sign.
    molodensky(at,
               {0.0 - to.dx, 0.0 - to.dy, 0.0 - to.dz, kWgs84A, da, df, rn, rm, rn * kOneLessF,
                rm * kOverOneLessF, dphi_axis},
               lat, lon, h);
}

void llhxyz(double lat, double lon, double h, int datum, double* x, double* y, double* z) {
    const DatumFigures on = datum_figures(datum);
    const Position at = position_of(lat, lon, h);
    const double n = on.a / std::sqrt(1.0 - at.sin_phi * at.sin_phi * on.e2);
    *x = at.cos_lam * (n + h) * at.cos_phi;
    *y = at.sin_lam * (n + h) * at.cos_phi;
    *z = ((1.0 - on.e2) * n + h) * at.sin_phi;
}

void xyzllh(double x, double y, double z, int datum, double* lat, double* lon, double* h) {
    if (!is_row(datum)) return set_nowhere(lat, lon, h);
    const DatumFigures on = datum_figures(datum);
    const double a = on.a;
    const double b = a - on.f * a;
    const double p = std::sqrt(x * x + y * y);
    if (p == 0.0 && !std::isnan(z)) {
        *lat = z == 0.0 ? 0.0 : std::copysign(90.0, z);
        *lon = 0.0;
        *h = z == 0.0 ? -a : std::fabs(z) - b;
        return;
    }
    const double theta = std::atan(a * z / (p * b));
    const double sin_theta = std::sin(theta);
    const double cos_theta = std::cos(theta);
    const double ep2 = (a * a - b * b) / (b * b);
    const double phi = std::atan((z + ep2 * b * (sin_theta * sin_theta * sin_theta)) /
                                 (p - on.e2 * a * (cos_theta * cos_theta * cos_theta)));
    const double sin_phi = std::sin(phi);
    *lat = phi * RAD_TO_DEG;
    *lon = std::atan2(y, x) * RAD_TO_DEG;
    *h = p / std::cos(phi) - a / std::sqrt(1.0 - sin_phi * sin_phi * on.e2);
}

void shxyz(int from, int to, double* x, double* y, double* z) {
    const DatumFigures old_datum = datum_figures(from);
    const DatumFigures new_datum = datum_figures(to);
    *x += old_datum.dx - new_datum.dx;
    *y += old_datum.dy - new_datum.dy;
    *z += old_datum.dz - new_datum.dz;
}
