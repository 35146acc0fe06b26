// Compares projections with PROJ, which uses the full pi and other series. Our constants and
// series limit the agreement, at the edge of each projection's useful range:
//   angle    a right angle made from our pi is 1.04e-13 rad too large, which counts 3 / cos 80 times in the
//            plane of a conformal projection
//   arc      the arc's series ends with e^6; its terms of e^8 have the factors 175/16384 (of phi),
//            105/4096, 525/16384, 175/12288 and 315/131072, together 0.091 e^8 a < 1.3e-3 m or 1.2e-8 degrees
//   pass     an inverse stops at a step of 1e-7 in the unit of its iteration; a pass reduces the error to e2,
//            but the longitude of the polyconic uses the latitude of the last pass but one
//   series   the transverse Mercator omits the terms of A^7 and A^8, with factors below 90/5040 and
//            900/40320 forward and 0.55 and 0.25 in the inverse
#include <cstdio>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <proj.h>

#include <zellap10/datum/tables.h>
#include <zellap10/projection/projection.h>

namespace {

using zellap10::datum::datum_figures;
using zellap10::datum::DatumFigures;

using Operation = std::unique_ptr<PJ, decltype(&proj_destroy)>;

struct Bounds {
    double x_m, y_m, lat_deg, lon_deg;
};

struct FamilyRow {
    const char* name;
    int code;
    double lat0, lon0, lat1, lat2;
    const char* definition;
    double lat_from, lat_to, dlon;  // the useful range
    Bounds bounds;
};

// clang-format off
const FamilyRow kFamilyRows[] = {
    // name                 code lat0   lon0   lat1   lat2   definition                                                            lat           dlon   bounds
    {"mercator",             1,  0.0,  -30.0,  0.0,   0.0,  "+proj=merc +lon_0=-30",                                              -80.0, 80.0, 170.0, {1.2e-5, 1.2e-5, 7.4e-10, 1.6e-11}},
    {"polyconic",            2,  0.0,  100.0,  0.0,   0.0,  "+proj=poly +lat_0=0 +lon_0=100",                                     -80.0, 80.0,   5.0, {1.4e-6, 1.3e-3, 1.2e-8, 9.0e-6}},
    {"transverse mercator",  3, 49.0,   -2.0,  0.0,   0.0,  "+proj=tmerc +approx +k=0.9996 +lat_0=49 +lon_0=-2",                  -80.0, 80.0,   3.5, {3.7e-4, 2.7e-3, 2.7e-8, 1.3e-7}},
    {"lambert",              4, 40.0,  -96.0, 33.0,  45.0,  "+proj=lcc +lat_0=40 +lon_0=-96 +lat_1=33 +lat_2=45",                 -20.0, 80.0,  80.0, {1.2e-5, 1.2e-5, 4.0e-8, 1.6e-11}},
    {"lambert, southern",    4,-40.0,  150.0,-33.0, -45.0,  "+proj=lcc +lat_0=-40 +lon_0=150 +lat_1=-33 +lat_2=-45",              -80.0, 20.0,  80.0, {1.2e-5, 1.2e-5, 4.0e-8, 1.6e-11}},
    {"lambert, one parallel",4, 52.0,   10.0, 52.0,  52.0,  "+proj=lcc +lat_0=52 +lon_0=10 +lat_1=52",                            -20.0, 80.0,  80.0, {1.2e-5, 1.2e-5, 4.0e-8, 1.6e-11}},
};
// clang-format on

void compare(const FamilyRow& row, const PPARMS& parms, PJ* proj, double lat, double dlon) {
    const double lon = row.lon0 + dlon;
    const PJ_COORD plane = proj_trans(proj, PJ_FWD, proj_coord(proj_torad(lon), proj_torad(lat), 0.0, 0.0));
    double x = 0.0, y = 0.0, back_lat = 0.0, back_lon = 0.0;
    project_f(row.code, &parms, lat, lon, &x, &y);
    EXPECT_NEAR(x, plane.xy.x, row.bounds.x_m) << lat << ' ' << dlon;
    EXPECT_NEAR(y, plane.xy.y, row.bounds.y_m) << lat << ' ' << dlon;
    project_i(row.code, &parms, plane.xy.x, plane.xy.y, &back_lat, &back_lon);
    const PJ_COORD back = proj_trans(proj, PJ_INV, plane);
    EXPECT_NEAR(back_lat, proj_todeg(back.lp.phi), row.bounds.lat_deg) << lat << ' ' << dlon;
    EXPECT_NEAR(back_lon, proj_todeg(back.lp.lam), row.bounds.lon_deg) << lat << ' ' << dlon;
}

TEST(ProjComparison, ProjectionsAgreeWithinTheirConstantsAndSeries) {
    for (int datum : {17, 38, 87, 117}) {
        const DatumFigures figures = datum_figures(datum);
        for (const FamilyRow& row : kFamilyRows) {
            SCOPED_TRACE(std::string(row.name) + ", datum " + std::to_string(datum));
            PPARMS parms;
            project_init2(row.code, row.lat0, row.lon0, row.lat1, row.lat2, datum, &parms);
            char text[400];
            std::snprintf(text, sizeof text, "%s +over +a=%.17g +f=%.17g", row.definition, figures.a,
                          figures.f);
            const Operation proj(proj_create(PJ_DEFAULT_CTX, text), &proj_destroy);
            ASSERT_NE(proj, nullptr) << text;
            for (double lat = row.lat_from; lat <= row.lat_to; lat += 6.4) {
                for (double part : {-1.0, -0.37, 0.0, 0.61, 1.0}) {
                    compare(row, parms, proj.get(), lat, part * row.dlon);
                }
            }
        }
    }
}

}  // namespace
