#include "zellap10/projection/projection.h"

#include <cmath>

#include <zellap10/datum/tables.h>
#include <zellap10/projection/lambert.h>
#include <zellap10/projection/mercator.h>
#include <zellap10/projection/polyconic.h>
#include <zellap10/projection/transverse_mercator.h>

namespace zellap10::projection {
namespace {

enum Code : int { kMercator = 1, kPolyconic = 2, kTransverseMercator = 3, kLambert = 4 };

// The record for a null pointer. Its powers of the eccentricity are rounded figures, which differ in their
// last digits from those computed from f.
constexpr tagPPARMS make_default_parms() {
    tagPPARMS parms;
    parms.a = datum::kWgs84A;
    parms.f = datum::kWgs84F;
    parms.e = 0.08181919084262;
    parms.e2 = 0.006694379990141;
    parms.e4 = 4.48147234524e-05;
    parms.e6 = 3.000067879435e-07;
    parms.merc_k = 1.0;
    return parms;
}

constexpr tagPPARMS kDefaultParms = make_default_parms();

void set_ellipsoid(int datum, tagPPARMS* parms) {
    const datum::DatumFigures figures = datum::datum_figures(datum);
    parms->a = figures.a;
    parms->f = figures.f;
    parms->e2 = figures.e2;
    parms->e = std::sqrt(parms->e2);
    parms->e4 = std::pow(parms->e, 4.0);
    parms->e6 = std::pow(parms->e, 6.0);
}

}  // namespace
}  // namespace zellap10::projection

using namespace zellap10::projection;

void project_init(int projection, double lat0, double lon0, int datum, tagPPARMS* parms) {
    project_init2(projection, lat0, lon0, lat0, lat0, datum, parms);
}

void project_init2(int projection, double lat0, double lon0, double lat1, double lat2, int datum,
                   tagPPARMS* parms) {
    if (parms == nullptr) return;
    set_ellipsoid(datum, parms);
    switch (projection) {
        case kMercator:
            return mercator_init(lat0, lon0, parms);
        case kPolyconic:
            return polyconic_init(0.0, lon0, parms);
        case kTransverseMercator:
            return utm_init(lat0, lon0, parms);
        case kLambert:
            return lambert_init(lat0, lon0, lat1, lat2, parms);
        default:
            return;
    }
}

void project_f(int projection, const tagPPARMS* parms, double lat, double lon, double* x, double* y) {
    if (parms == nullptr) parms = &kDefaultParms;
    switch (projection) {
        case kMercator:
            return mercator_f(parms, lat, lon, x, y);
        case kPolyconic:
            return polyconic_f(parms, lat, lon, x, y);
        case kTransverseMercator:
            return utm_f(parms, lat, lon, x, y);
        case kLambert:
            return lambert_f(parms, lat, lon, x, y);
        default:
            return;
    }
}

void project_i(int projection, const tagPPARMS* parms, double x, double y, double* lat, double* lon) {
    if (parms == nullptr) parms = &kDefaultParms;
    switch (projection) {
        case kMercator:
            return mercator_i(parms, x, y, lat, lon);
        case kPolyconic:
            return polyconic_i(parms, x, y, lat, lon);
        case kTransverseMercator:
            return utm_i(parms, x, y, lat, lon);
        case kLambert:
            return lambert_i(parms, x, y, lat, lon);
        default:
            return;
    }
}
