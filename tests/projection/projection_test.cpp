#include <zellap10/projection/polyconic.h>
#include <zellap10/projection/projection.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kUntouched = -1.5;
constexpr int kWgs84 = 117;

using Pair = std::array<double, 2>;  // latitude and longitude, or x and y

struct Setup {
    int code, datum;
    double lat0, lon0, lat1, lat2;
};

PPARMS record_of(const Setup& setup) {
    PPARMS parms;
    project_init2(setup.code, setup.lat0, setup.lon0, setup.lat1, setup.lat2, setup.datum, &parms);
    return parms;
}

Pair forward(int code, const PPARMS* parms, Pair at) {
    Pair plane{kUntouched, kUntouched};
    project_f(code, parms, at[0], at[1], &plane[0], &plane[1]);
    return plane;
}

Pair inverse(int code, const PPARMS* parms, Pair plane) {
    Pair at{kUntouched, kUntouched};
    project_i(code, parms, plane[0], plane[1], &at[0], &at[1]);
    return at;
}

void expect_near(const Pair& pair, const Pair& expected, double tolerance) {
    for (std::size_t i = 0; i < 2; ++i) {
        if (std::isnan(expected[i])) {
            EXPECT_TRUE(std::isnan(pair[i])) << pair[i];
        } else if (pair[i] != expected[i]) {
            EXPECT_NEAR(pair[i], expected[i], tolerance);
        }
    }
}

struct PositionRow {
    const char* name;
    Setup setup;
    Pair at, plane, back;
};

// About ten last places of a double near 1e7, and near 200.
constexpr double kTolMetres = 2e-8;
constexpr double kTolDeg = 3e-13;

// plane: the formulas at 50 digits with our own conversion factors; back: the way back from there, with its
// series and stopping rules, at 50 digits too. What it misses of the position, the method misses.
// clang-format off
const PositionRow kPositionRows[] = {
    // name                                  code datum lat0    lon0   lat1   lat2     at                    plane                                         back
    {"mercator 45 N 10 E",                    {1, 117,   0.0,    0.0,   0.0,   0.0},   {45.0,   10.0},   {1113194.907932809,    5591295.918554789},    {44.99999999999989,                 10.0}},
    {"mercator south, east of 180",           {1,  38, -40.0,  170.0,   0.0,   0.0},  {-38.5, 188.25},  {2031660.6561470871,  -4623768.3224224286},   {-38.49999999994488,               188.25}},
    {"mercator 80 N, origin has no part",     {1,  17,  60.0,   -5.0,   0.0,   0.0},   {80.0,  -60.0}, {-6121861.7934142062,   15494899.388631697},    {80.00000000001979,                -60.0}},
    {"mercator 200 E, no wrap",               {1, 117,   0.0,    0.0,   0.0,   0.0},    {0.0,  200.0},  {22263898.158656179, 6.5904196936593989e-7}, {1.192302486984664e-11,                200.0}},
    {"polyconic 45 N, 3 E of the meridian",   {2, 117,   0.0, -100.0,   0.0,   0.0},   {45.0,  -97.0},  {236486.46821691718,   4989322.7187829695},                 {45.0,   -97.00000000196149}},
    {"polyconic south, west",                 {2,  87,   0.0,   20.0,   0.0,   0.0}, {-33.25,   16.0}, {-372629.19640862047,  -3687350.8442134202},               {-33.25,    16.00000000117247}},
    {"polyconic equator",                     {2, 117,   0.0, -100.0,   0.0,   0.0},    {0.0,  -97.0},  {333958.47237984269,                  0.0},                  {0.0,                -97.0}},
    {"polyconic, latitude of origin ignored", {2,  38,  50.0,   10.0,   0.0,   0.0},   {60.0,   15.0},  {278748.43658172213,   6664766.6162410301},                 {60.0,    14.99999999903561}},
    {"transverse 45 N, 3 E of the meridian",  {3, 117,   0.0,  -75.0,   0.0,   0.0},   {45.0,  -72.0},  {236446.02613285093,   4987329.5049540343},     {45.0000000011911,   -71.99999999527309}},
    {"transverse from 49 N, west",            {3,  87,  49.0,   -2.0,   0.0,   0.0},   {57.5,  -5.25}, {-194711.96979925946,   950165.37947393083},    {57.50000000454588,   -5.250000011095379}},
    {"transverse south",                      {3,  38,   0.0,  141.0,   0.0,   0.0},  {-35.0,  144.0},  {273810.14983741106,  -3877217.9912533393},   {-34.99999999975333,     144.000000003461}},
    {"transverse, 6.5 E of the meridian",     {3, 117,   0.0,  -75.0,   0.0,   0.0},   {30.0,  -68.5},  {627586.97476172891,   3336633.1130817177},     {29.9999999669295,    -68.4999993649287}},
    {"lambert two parallels",                 {4, 117,  40.0,  -96.0,  33.0,  45.0},   {60.0,  -80.0},  {954285.78307641679,   2354828.9767881867},    {59.99999999920428,                -80.0}},
    {"lambert southern cone",                 {4, 117, -40.0,  150.0, -33.0, -45.0},  {-50.0,  160.0},  {725451.11083487866,  -1152857.8620735294},   {-49.99999999593466,                160.0}},
    {"lambert one parallel",                  {4,  17,  52.0,   10.0,  52.0,  52.0},   {48.5,    3.0}, {-517386.91650576884,  -364586.59320086299},    {48.49999999514566,                  3.0}},
    {"lambert 200 E, no wrap",                {4, 117,  40.0,  -96.0,  33.0,  45.0},   {40.0,  104.0},  {6236689.3537218683,   12266445.028503378},    {39.99999998841168,                104.0}},
};
// clang-format on

TEST(ProjectionPositions, GoToThePlaneAndBack) {
    for (const PositionRow& row : kPositionRows) {
        SCOPED_TRACE(row.name);
        const PPARMS parms = record_of(row.setup);
        expect_near(forward(row.setup.code, &parms, row.at), row.plane, kTolMetres);
        expect_near(inverse(row.setup.code, &parms, row.plane), row.back, kTolDeg);
    }
}

struct EdgeRow {
    const char* name;
    Pair (*way)(int code, const PPARMS* parms, Pair from);
    Setup setup;
    Pair from, to;
    double tolerance;  // metres forward, DEGREES in the inverse
};

// clang-format off
const EdgeRow kEdgeRows[] = {
    // name                                        way       code datum  lat0    lon0   lat1   lat2    from           to                     tolerance
    {"mercator, the tangent past the north pole",   forward, {1, 117,   0.0,    0.0,   0.0,   0.0},  {90.0,   0.0},         {0.0,         1.9e8}, 2e6},
    {"mercator, the south pole",                    forward, {1, 117,   0.0,    0.0,   0.0,   0.0}, {-90.0,   0.0},         {0.0,         -kInf}, 0.0},
    {"polyconic pole",                              forward, {2, 117,   0.0, -100.0,   0.0,   0.0},  {90.0, -60.0},         {0.0, 10001965.7295}, 1e-4},
    {"polyconic pole in the south",                 forward, {2, 117,   0.0, -100.0,   0.0,   0.0}, {-90.0, -60.0},         {0.0,-10001965.7295}, 1e-4},
    {"transverse pole",                             forward, {3, 117,   0.0,  -75.0,   0.0,   0.0},  {90.0, -75.0},         {0.0,    9997964.94}, 5e-3},
    {"transverse from its own origin",              forward, {3, 117,  45.0,  -75.0,   0.0,   0.0},  {45.0, -75.0},         {0.0,           0.0}, 0.0},
    {"lambert from its own origin",                 forward, {4, 117,  40.0,  -96.0,  33.0,  45.0},  {40.0, -96.0},         {0.0,           0.0}, 0.0},
    {"lambert, the tip of the cone",                forward, {4, 117,  40.0,  -96.0,  33.0,  45.0},  {90.0, -80.0},         {0.0,    7718697.93}, 5e-3},
    {"lambert, the pole beyond the cone",           forward, {4, 117,  40.0,  -96.0,  33.0,  45.0}, {-90.0, -80.0},        {kNan,          kNan}, 0.0},
    {"lambert without a cone",                      forward, {4, 117,   0.0,    0.0,   0.0,   0.0},  {45.0,  10.0},        {kNan,          kNan}, 0.0},
    {"lambert, parallels about the equator",        forward, {4, 117,  40.0,    0.0, -30.0,  30.0},  {45.0,  10.0},        {kNan,          kNan}, 0.0},
    {"a datum before the table",                    forward, {1,  -1,   0.0,    0.0,   0.0,   0.0},  {45.0,  10.0},        {kNan,          kNan}, 0.0},
    {"a datum past the table",                      forward, {2, 120,   0.0,    0.0,   0.0,   0.0},   {0.0,  10.0},        {kNan,          kNan}, 0.0},
    {"no projection leaves the results",            forward, {9, 117,   0.0,    0.0,   0.0,   0.0},  {45.0,  10.0},        {kUntouched,    kUntouched}, 0.0},
    {"mercator, the north pole",                    inverse, {1, 117,   0.0,    0.0,   0.0,   0.0}, {0.0, 1.9e8},                          {90.0, 0.0},            1e-10},
    {"mercator, the south pole",                    inverse, {1, 117,   0.0,    0.0,   0.0,   0.0}, {0.0, -kInf},                          {-90.0, 0.0},           1e-10},
    {"polyconic comes back late at 0.0001 N",       inverse, {2, 117,   0.0, -100.0,   0.0,   0.0}, {111319.49079311246, 11.059123074963145},  {0.0001, -99.0064996},  1e-7},
    {"polyconic comes back late at 0.01 N",         inverse, {2, 117,   0.0, -100.0,   0.0,   0.0}, {111319.48910896621, 1105.9123076056203}, {0.01, -99.0000428},    1e-7},
    {"polyconic comes back late at 1 N",            inverse, {2, 117,   0.0, -100.0,   0.0,   0.0}, {111302.64804858614, 110591.34006001808},  {1.0, -99.0000000018},  1e-10},
    {"polyconic does not settle",                   inverse, {2, 117,   0.0,    0.0,   0.0,   0.0}, {2e6, 1e7},                            {kNan, kNan},           0.0},
    {"polyconic does not settle farther out",       inverse, {2, 117,   0.0,    0.0,   0.0,   0.0}, {8e6, 7e6},                            {kNan, kNan},           0.0},
};
// clang-format on

TEST(ProjectionEdges, GiveWhatTheArithmeticGives) {
    for (const EdgeRow& row : kEdgeRows) {
        SCOPED_TRACE(row.name);
        const PPARMS parms = record_of(row.setup);
        expect_near(row.way(row.setup.code, &parms, row.from), row.to, row.tolerance);
    }
}

TEST(PolyconicOrigin, ServesWhenCalledDirectly) {
    PPARMS parms;
    project_init(2, 33.0, -100.0, kWgs84, &parms);
    EXPECT_EQ(parms.lat0, 0.0);
    EXPECT_EQ(parms.poly_m0, 0.0);
    polyconic_init(33.0, -100.0, &parms);
    EXPECT_NEAR(parms.poly_m0, 3652748.043225, 1e-6);
    expect_near(forward(2, &parms, {33.0, -100.0}), {0.0, 0.0}, 0.0);
    expect_near(inverse(2, &parms, forward(2, &parms, {0.0, -97.0})), {0.0, -97.0}, kTolDeg);
}

TEST(ProjectionRecord, HoldsTheFiguresOfTheEllipsoidAndTheCone) {
    PPARMS parms;
    project_init(7, 40.0, -96.0, kWgs84, &parms);
    EXPECT_EQ(parms.e, 0.08181919084262149);
    EXPECT_EQ(parms.e2, 0.0066943799901413165);
    EXPECT_NEAR(parms.e4, 4.4814723452404437e-05, 1e-19);
    EXPECT_NEAR(parms.e6, 3.0000678794349315e-07, 1e-21);
    EXPECT_EQ(parms.lon0, 0.0) << "no projection, no origin";
    project_init(4, 40.0, -96.0, kWgs84, &parms);
    EXPECT_EQ(parms.lam_n, 0.6427876096865746);
    EXPECT_NEAR(parms.lam_F, 1.9433845857, 1e-10);
    EXPECT_NEAR(parms.lam_rho0, 7611701.79, 5e-3);
    expect_near(inverse(4, &parms, {0.0, parms.lam_rho0}), {90.0, -96.0}, 1e-10);
    project_init2(4, 40.0, -96.0, 40.0, 40.0000000001, kWgs84, &parms);
    EXPECT_NE(parms.lam_n, 0.6427876096865746) << "two parallels, however close";
    project_init(1, 60.0, 10.0, 17, &parms);
    EXPECT_NEAR(parms.merc_k, 0.50125616282074206, 1e-15);
    EXPECT_EQ(parms.lon0, 0.17453292519944444);
    EXPECT_EQ(parms.a, 6377397.155);
}

TEST(ProjectionRecord, NullStandsForWgs84) {
    project_init(1, 0.0, 0.0, kWgs84, nullptr);
    expect_near(forward(1, nullptr, {45.0, 10.0}), {1113194.9079328, 5591295.9185548}, 1e-7);
    expect_near(inverse(2, nullptr, {236486.46821691718, 4989322.7187829695}), {45.0, 3.0}, 1e-8);
    EXPECT_NEAR(forward(3, nullptr, {45.0, 10.0})[1], 48881.0, 1.0) << "no arc of its own";
    expect_near(forward(4, nullptr, {45.0, 10.0}), {0.0, 0.0}, 0.0);
}

}  // namespace
