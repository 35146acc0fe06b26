#include <zellap10/projection/lambert.h>
#include <zellap10/projection/mercator.h>
#include <zellap10/projection/polyconic.h>
#include <zellap10/projection/projection.h>
#include <zellap10/projection/transverse_mercator.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr int kWgs84 = 117;

struct Plane {
    double x, y;
};
struct Place {
    double lat, lon;
};

Plane forward(int code, const PPARMS* parms, double lat, double lon) {
    Plane plane{-1.5, -2.5};
    project_f(code, parms, lat, lon, &plane.x, &plane.y);
    return plane;
}

Place inverse(int code, const PPARMS* parms, double x, double y) {
    Place place{-1.5, -2.5};
    project_i(code, parms, x, y, &place.lat, &place.lon);
    return place;
}

struct Setup {
    int code, datum;
    double lat0, lon0, lat1, lat2;
};

PPARMS record_of(const Setup& setup) {
    PPARMS parms;
    project_init2(setup.code, setup.lat0, setup.lon0, setup.lat1, setup.lat2, setup.datum, &parms);
    return parms;
}

struct PositionRow {
    const char* name;
    Setup setup;
    double lat, lon, x, y;
    double back_lat, back_lon;
};

// About ten last places of a double near 1e7, and near 100.
constexpr double kTolMetres = 2e-8;
constexpr double kTolDeg = 2e-13;

// x, y: the formulas at 50 digits with our own conversion factors; back: the way back from these x and y,
// with its series and stopping rules, at 50 digits too. What it misses of lat and lon, the method misses.
// clang-format off
const PositionRow kPositionRows[] = {
    // name                                  code datum lat0    lon0   lat1   lat2     lat     lon    x                     y                     back_lat              back_lon
    {"mercator 45 N 10 E",                    {1, 117,   0.0,    0.0,   0.0,   0.0},   45.0,   10.0,    1113194.907932809,    5591295.918554789,    44.99999999999989,                 10.0},
    {"mercator south, east of 180",           {1,  38, -40.0,  170.0,   0.0,   0.0},  -38.5, 188.25,   2031660.6561470871,  -4623768.3224224286,   -38.49999999994488,               188.25},
    {"mercator 80 N, origin has no part",     {1,  17,  60.0,   -5.0,   0.0,   0.0},   80.0,  -60.0,  -6121861.7934142062,   15494899.388631697,    80.00000000001979,                -60.0},
    {"mercator 200 E, no wrap",               {1, 117,   0.0,    0.0,   0.0,   0.0},    0.0,  200.0,   22263898.158656179, 6.5904196936593989e-7, 1.192302486984664e-11,                200.0},
    {"polyconic 45 N, 3 E of the meridian",   {2, 117,   0.0, -100.0,   0.0,   0.0},   45.0,  -97.0,   236486.46821691718,   4989322.7187829695,                 45.0,   -97.00000000196149},
    {"polyconic south, west",                 {2,  87,   0.0,   20.0,   0.0,   0.0}, -33.25,   16.0,  -372629.19640862047,  -3687350.8442134202,               -33.25,    16.00000000117247},
    {"polyconic equator",                     {2, 117,   0.0, -100.0,   0.0,   0.0},    0.0,  -97.0,   333958.47237984269,                  0.0,                  0.0,                -97.0},
    {"polyconic, latitude of origin ignored", {2,  38,  50.0,   10.0,   0.0,   0.0},   60.0,   15.0,   278748.43658172213,   6664766.6162410301,                 60.0,    14.99999999903561},
    {"transverse 45 N, 3 E of the meridian",  {3, 117,   0.0,  -75.0,   0.0,   0.0},   45.0,  -72.0,   236446.02613285093,   4987329.5049540343,     45.0000000011911,   -71.99999999527309},
    {"transverse from 49 N, west",            {3,  87,  49.0,   -2.0,   0.0,   0.0},   57.5,  -5.25,  -194711.96979925946,   950165.37947393083,    57.50000000454588,   -5.250000011095379},
    {"transverse south",                      {3,  38,   0.0,  141.0,   0.0,   0.0},  -35.0,  144.0,   273810.14983741106,  -3877217.9912533393,   -34.99999999975333,     144.000000003461},
    {"transverse, 6.5 E of the meridian",     {3, 117,   0.0,  -75.0,   0.0,   0.0},   30.0,  -68.5,   627586.97476172891,   3336633.1130817177,     29.9999999669295,    -68.4999993649287},
    {"lambert two parallels",                 {4, 117,  40.0,  -96.0,  33.0,  45.0},   60.0,  -80.0,   954285.78307641679,   2354828.9767881867,    59.99999999920428,                -80.0},
    {"lambert southern cone",                 {4, 117, -40.0,  150.0, -33.0, -45.0},  -50.0,  160.0,   725451.11083487866,  -1152857.8620735294,   -49.99999999593466,                160.0},
    {"lambert one parallel",                  {4,  17,  52.0,   10.0,  52.0,  52.0},   48.5,    3.0,  -517386.91650576884,  -364586.59320086299,    48.49999999514566,                  3.0},
    {"lambert 200 E, no wrap",                {4, 117,  40.0,  -96.0,  33.0,  45.0},   40.0,  104.0,   6236689.3537218683,   12266445.028503378,    39.99999998841168,                104.0},
};
// clang-format on

TEST(ProjectionPositions, GoToThePlaneAndBack) {
    for (const PositionRow& row : kPositionRows) {
        SCOPED_TRACE(row.name);
        const PPARMS parms = record_of(row.setup);
        const Plane plane = forward(row.setup.code, &parms, row.lat, row.lon);
        EXPECT_NEAR(plane.x, row.x, kTolMetres);
        EXPECT_NEAR(plane.y, row.y, kTolMetres);
        const Place place = inverse(row.setup.code, &parms, row.x, row.y);
        EXPECT_NEAR(place.lat, row.back_lat, kTolDeg);
        EXPECT_NEAR(place.lon, row.back_lon, 10.0 * kTolDeg);
    }
}

struct EdgeRow {
    const char* name;
    Setup setup;
    double lat, lon, x, y, tol_m;
};

// clang-format off
const EdgeRow kEdgeRows[] = {
    // name                                        code datum  lat0    lon0   lat1   lat2    lat    lon            x              y  tol_m
    {"mercator, the tangent past the north pole",   {1, 117,   0.0,    0.0,   0.0,   0.0},  90.0,   0.0,         0.0,         1.9e8, 2e6},
    {"mercator, the south pole",                    {1, 117,   0.0,    0.0,   0.0,   0.0}, -90.0,   0.0,         0.0,         -kInf, 0.0},
    {"polyconic pole",                              {2, 117,   0.0, -100.0,   0.0,   0.0},  90.0, -60.0,         0.0, 10001965.7295, 1e-4},
    {"polyconic pole in the south",                 {2, 117,   0.0, -100.0,   0.0,   0.0}, -90.0, -60.0,         0.0,-10001965.7295, 1e-4},
    {"transverse pole",                             {3, 117,   0.0,  -75.0,   0.0,   0.0},  90.0, -75.0,         0.0,    9997964.94, 5e-3},
    {"transverse from its own origin",              {3, 117,  45.0,  -75.0,   0.0,   0.0},  45.0, -75.0,         0.0,           0.0, 0.0},
    {"lambert from its own origin",                 {4, 117,  40.0,  -96.0,  33.0,  45.0},  40.0, -96.0,         0.0,           0.0, 0.0},
    {"lambert, the tip of the cone",                {4, 117,  40.0,  -96.0,  33.0,  45.0},  90.0, -80.0,         0.0,    7718697.93, 5e-3},
    {"lambert, the pole beyond the cone",           {4, 117,  40.0,  -96.0,  33.0,  45.0}, -90.0, -80.0,        kNan,          kNan, 0.0},
    {"lambert without a cone",                      {4, 117,   0.0,    0.0,   0.0,   0.0},  45.0,  10.0,        kNan,          kNan, 0.0},
    {"lambert, parallels about the equator",        {4, 117,  40.0,    0.0, -30.0,  30.0},  45.0,  10.0,        kNan,          kNan, 0.0},
    {"a datum before the table",                    {1,  -1,   0.0,    0.0,   0.0,   0.0},  45.0,  10.0,        kNan,          kNan, 0.0},
    {"a datum past the table",                      {2, 120,   0.0,    0.0,   0.0,   0.0},   0.0,  10.0,        kNan,          kNan, 0.0},
    {"no projection leaves the results",            {9, 117,   0.0,    0.0,   0.0,   0.0},  45.0,  10.0,        -1.5,          -2.5, 0.0},
};
// clang-format on

void expect_same_or_near(double value, double expected, double tolerance) {
    if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(value)) << value;
    } else if (std::isinf(expected)) {
        EXPECT_EQ(value, expected);
    } else {
        EXPECT_NEAR(value, expected, tolerance);
    }
}

TEST(ProjectionEdges, GiveWhatTheArithmeticGives) {
    for (const EdgeRow& row : kEdgeRows) {
        SCOPED_TRACE(row.name);
        const PPARMS parms = record_of(row.setup);
        const Plane plane = forward(row.setup.code, &parms, row.lat, row.lon);
        expect_same_or_near(plane.x, row.x, row.tol_m);
        expect_same_or_near(plane.y, row.y, row.tol_m);
    }
}

TEST(ProjectionInverse, AnswersWithNanWhereItDoesNotSettle) {
    const PPARMS parms = record_of({2, kWgs84, 0.0, 0.0, 0.0, 0.0});
    for (const Plane& plane : {Plane{2e6, 1e7}, Plane{8e6, 7e6}}) {
        const Place place = inverse(2, &parms, plane.x, plane.y);
        EXPECT_TRUE(std::isnan(place.lat)) << place.lat;
        EXPECT_TRUE(std::isnan(place.lon)) << place.lon;
    }
}

TEST(PolyconicInverse, ComesBackLateNearTheEquator) {
    const PPARMS parms = record_of({2, kWgs84, 0.0, -100.0, 0.0, 0.0});
    const struct {
        double lat, lon, tol_deg;
    } rows[] = {{0.0001, -99.0064996, 1e-7}, {0.01, -99.0000428, 1e-7}, {1.0, -99.0000000018, 1e-10}};
    for (const auto& row : rows) {
        const Plane plane = forward(2, &parms, row.lat, -99.0);
        EXPECT_NEAR(inverse(2, &parms, plane.x, plane.y).lon, row.lon, row.tol_deg);
    }
}

TEST(ProjectionInverse, TakesThePolesBack) {
    const PPARMS mercator = record_of({1, kWgs84, 0.0, 0.0, 0.0, 0.0});
    EXPECT_NEAR(inverse(1, &mercator, 0.0, forward(1, &mercator, 90.0, 0.0).y).lat, 90.0, 1e-10);
    EXPECT_NEAR(inverse(1, &mercator, 0.0, -kInf).lat, -90.0, 1e-10);
    const PPARMS lambert = record_of({4, kWgs84, 40.0, -96.0, 33.0, 45.0});
    const Place tip = inverse(4, &lambert, 0.0, lambert.lam_rho0);
    EXPECT_NEAR(tip.lat, 90.0, 1e-10);
    EXPECT_NEAR(tip.lon, -96.0, 1e-10);
}

TEST(PolyconicOrigin, ServesWhenCalledDirectly) {
    PPARMS parms;
    project_init(2, 33.0, -100.0, kWgs84, &parms);
    EXPECT_EQ(parms.lat0, 0.0);
    EXPECT_EQ(parms.poly_m0, 0.0);
    polyconic_init(33.0, -100.0, &parms);
    EXPECT_EQ(forward(2, &parms, 33.0, -100.0).y, 0.0);
    EXPECT_EQ(forward(2, &parms, 0.0, -97.0).y, -parms.poly_m0);
    EXPECT_NEAR(parms.poly_m0, 3652748.043225, 1e-6);
    const Place place = inverse(2, &parms, 333958.47237984269, -parms.poly_m0);
    EXPECT_EQ(place.lat, 0.0);
    EXPECT_NEAR(place.lon, -97.0, kTolDeg);
}

TEST(ProjectionRecord, HoldsTheFiguresOfTheEllipsoidAndTheCone) {
    PPARMS parms;
    project_init(7, 40.0, -96.0, kWgs84, &parms);
    EXPECT_EQ(parms.a, 6378137.0);
    EXPECT_EQ(parms.f, 0.0033528106647474805);
    EXPECT_EQ(parms.e, 0.08181919084262149);
    EXPECT_EQ(parms.e2, 0.0066943799901413165);
    EXPECT_NEAR(parms.e4, 4.4814723452404437e-05, 1e-19);
    EXPECT_NEAR(parms.e6, 3.0000678794349315e-07, 1e-21);
    EXPECT_EQ(parms.lat0, 0.0) << "no projection, no origin";
    project_init(4, 40.0, -96.0, kWgs84, &parms);
    EXPECT_EQ(parms.lam_n, 0.6427876096865746);
    EXPECT_NEAR(parms.lam_F, 1.9433845857, 1e-10);
    EXPECT_NEAR(parms.lam_rho0, 7611701.79, 5e-3);
    project_init2(4, 40.0, -96.0, 40.0, 40.0000000001, kWgs84, &parms);
    EXPECT_NE(parms.lam_n, 0.6427876096865746) << "two parallels, however close";
    EXPECT_NEAR(parms.lam_n, 0.6427876096865746, 1e-2);
    project_init2(4, 40.0, -96.0, 33.0, 45.0, kWgs84, &parms);
    EXPECT_NEAR(parms.lam_n, 0.630496251, 1e-9);
    EXPECT_NEAR(parms.lam_F, 1.95241241, 1e-8);
    project_init(1, 60.0, 0.0, kWgs84, &parms);
    EXPECT_NEAR(parms.merc_k, 0.50125994266406733, 1e-15);
    project_init2(3, 45.0, 10.0, 0.0, 0.0, 17, &parms);
    EXPECT_EQ(parms.a, 6377397.155);
    EXPECT_NEAR(1.0 / parms.f, 299.15281283824237, 1e-11);
    EXPECT_NEAR(parms.lon0, 0.17453292519944444, 1e-17);
}

TEST(ProjectionRecord, NullStandsForWgs84) {
    project_init(1, 0.0, 0.0, kWgs84, nullptr);
    project_init2(4, 0.0, 0.0, 33.0, 45.0, kWgs84, nullptr);
    const Plane mercator = forward(1, nullptr, 45.0, 10.0);
    EXPECT_NEAR(mercator.x, 1113194.9079328, 1e-7);
    EXPECT_NEAR(mercator.y, 5591295.9185548, 1e-7);
    EXPECT_NEAR(inverse(2, nullptr, 236486.46821691718, 4989322.7187829695).lon, 3.0, 1e-8);
    EXPECT_NEAR(forward(3, nullptr, 45.0, 10.0).y, 48881.0, 1.0) << "no arc of its own";
    const Plane lambert = forward(4, nullptr, 45.0, 10.0);
    EXPECT_EQ(lambert.x, 0.0);
    EXPECT_EQ(lambert.y, 0.0);
}

TEST(ProjectionTotality, ReturnsForEveryInputAndHandsNanOn) {
    const double values[] = {0.0,   -0.0, 1e-310, 1e-5,   45.0,    -90.0, 200.0, -1e6,
                             2.5e6, 1e7,  1e150,  -1e300, 1.7e308, kInf,  -kInf, kNan};
    for (int code = 1; code <= 4; ++code) {
        std::vector<PPARMS> records;
        for (double lat0 : {0.0, 40.0, -90.0, 1e300, kInf, kNan}) {
            records.push_back(record_of({code, kWgs84, lat0, -75.0, lat0 - 10.0, lat0 + 5.0}));
            records.push_back(records.back());
            records.back().e = 3.0;  // no ellipsoid, and an iteration that nothing pulls together
            records.back().e2 = 0.99;
        }
        for (const PPARMS& parms : records) {
            for (double u : values) {
                for (double v : values) {
                    const Plane plane = forward(code, &parms, u, v);
                    const Place place = inverse(code, &parms, u, v);
                    EXPECT_TRUE(!std::isnan(u) || (std::isnan(plane.y) && std::isnan(place.lon))) << code;
                    EXPECT_TRUE(!std::isnan(v) || (std::isnan(plane.x) && std::isnan(place.lat))) << code;
                }
            }
        }
    }
}

TEST(ProjectionThreads, ShareOneRecord) {
    for (int code = 1; code <= 4; ++code) {
        const PPARMS parms = record_of({code, 38, 40.0, -96.0, 33.0, 45.0});
        const auto all = [code, &parms] {
            std::vector<double> results;
            for (double lat = -70.0; lat < 80.0; lat += 0.37) {
                const Plane plane = forward(code, &parms, lat, -100.0 + lat / 20.0);
                const Place place = inverse(code, &parms, plane.x, plane.y);
                results.insert(results.end(), {plane.x, plane.y, place.lat, place.lon});
            }
            return results;
        };
        const std::vector<double> alone = all();
        std::vector<double> results[4];
        std::vector<std::thread> threads;
        for (std::vector<double>& result : results)
            threads.emplace_back([&] { result = all(); });
        for (std::thread& thread : threads)
            thread.join();
        for (const std::vector<double>& result : results) {
            ASSERT_EQ(result.size(), alone.size());
            EXPECT_EQ(std::memcmp(result.data(), alone.data(), alone.size() * sizeof(double)), 0) << code;
        }
    }
}

}  // namespace
