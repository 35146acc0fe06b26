#include <zellap10/datum/shift.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr int kWgs84 = 117;

using Triple = std::array<double, 3>;  // latitude, longitude and height, or x, y and z

Triple to_wgs(Triple at, int datum) {
    datum_to_WGS(&at[0], &at[1], &at[2], datum);
    return at;
}

Triple from_wgs(Triple at, int datum) {
    WGS_to_datum(&at[0], &at[1], &at[2], datum);
    return at;
}

Triple cartesian(const Triple& at, int datum) {
    Triple xyz{};
    llhxyz(at[0], at[1], at[2], datum, &xyz[0], &xyz[1], &xyz[2]);
    return xyz;
}

Triple geodetic(const Triple& xyz, int datum) {
    Triple at{};
    xyzllh(xyz[0], xyz[1], xyz[2], datum, &at[0], &at[1], &at[2]);
    return at;
}

Triple shifted(Triple xyz, int from, int to) {
    shxyz(from, to, &xyz[0], &xyz[1], &xyz[2]);
    return xyz;
}

void expect_near(const Triple& triple, const Triple& expected, const Triple& tolerance) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(triple[i] == expected[i] || std::fabs(triple[i] - expected[i]) <= tolerance[i])
            << "number " << i << " is " << triple[i] << ", not " << expected[i];
    }
}

// Some last places of a double near 180, and near the radius of the earth.
const Triple kTolPosition{2e-13, 2e-13, 8e-9};
const Triple kTolCartesian{5e-9, 5e-9, 5e-9};

struct ShiftRow {
    const char* name;
    int datum;
    Triple at, on_wgs, on_datum;
};

// The formulae at 50 digits, both ways from the position in the third column.
// clang-format off
const ShiftRow kShiftRows[] = {
    {"European 1950",                   38, {50.0, 10.0, 0.0},      {49.999201975494236, 9.9988921189745403, 39.741685990050135},     {50.000797988055567, 10.00110793385697, -39.745547774534733}},
    {"Great Britain 1936, west",        87, {51.5, -0.1, 50.0},     {51.500457704034135, -0.10158920480828374, 95.092685435527614},   {51.49954221416848, -0.098410949761122059, 4.8991398149625859}},
    {"Tokyo, high up",                 111, {35.25, 139.5, 3000.0}, {35.253319233792572, 139.49689563800565, 3000.0686806214204},     {35.24668099331354, 139.50310399170511, 2999.9265263913044}},
    {"Old Hawaiian, south of the line", 82, {-21.5, -157.75, -20.0}, {-21.499998932342532, -157.74718277146291, 106.25647689578746},  {-21.500001075842376, -157.75281727325827, -146.25613832823463}},
    {"SAD-69, far south",               97, {-54.75, -68.25, 120.0}, {-54.750356995061805, -68.250876955849458, 164.32606901611678},  {-54.749643003619192, -68.249123040940689, 75.673928504940181}},
};
// clang-format on

TEST(Molodensky, MeetsReferenceRows) {
    for (const ShiftRow& row : kShiftRows) {
        SCOPED_TRACE(row.name);
        expect_near(to_wgs(row.at, row.datum), row.on_wgs, kTolPosition);
        expect_near(from_wgs(row.at, row.datum), row.on_datum, kTolPosition);
    }
}

TEST(Molodensky, ReturnsNearlyOverAllRowsAndQuiteOnWgs84) {
    const Triple at{12.345678, 98.7654321, 100.0};
    for (int datum = 0; datum < 120; ++datum) {
        SCOPED_TRACE(datum);
        expect_near(from_wgs(to_wgs(at, datum), datum), at, {6e-5, 6e-5, 0.4});
    }
    for (int datum : {44, 48, 75, 103, kWgs84})
        expect_near(to_wgs(at, datum), at, kTolPosition);
}

TEST(Molodensky, KeepsTheLongitudeAtAPole) {
    const double dh = 39.632, dh_south = 279.632;  // dz is -120 m
    expect_near(to_wgs({90.0, 123.456, 10.0}, 38), {90.0, 123.456, 10.0 + dh}, {0.01, 0.0, 5e-3});
    expect_near(from_wgs({90.0, 123.456, 10.0}, 38), {90.0, 123.456, 10.0 - dh}, {0.01, 0.0, 5e-3});
    expect_near(to_wgs({-90.0, 123.456, 10.0}, 38), {-90.0, 123.456, 10.0 + dh_south}, {0.01, 0.0, 5e-3});
    EXPECT_NE(to_wgs({89.999999, 123.456, 10.0}, 38)[1], 123.456);
}

struct CartesianRow {
    const char* name;
    int datum;
    Triple at, xyz, back;
};

// Both ways at 50 digits; what `back` misses of `at`, the closed form misses.
// clang-format off
const CartesianRow kCartesianRows[] = {
    {"WGS-84",                 117, {50.0, 10.0, 0.0},        {4045456.4053406035, 713323.11354147654, 4862789.0377066676}, {50.0, 10.0, 0.0}},
    {"European 1950, high up",  38, {-33.5, -70.25, 6900.0},  {1801114.995666594, -5016520.770729432, -3504195.8208856282}, {-33.500000000003008, -70.25, 6900.0000002209707}},
    {"Great Britain, west",     87, {57.25, -4.5, -3.5},      {3447604.77840029, -271332.3805168312, 5340611.8064593507},   {57.25, -4.5, -3.500000000286372}},
    {"the 180th meridian",     117, {0.0, 180.0, 0.0},        {-6378137.0, -1.3192e-6, 0.0},                                {0.0, -179.99999999997632, 0.0}},
};
// clang-format on

TEST(EarthCentred, MeetsReferenceRows) {
    for (const CartesianRow& row : kCartesianRows) {
        SCOPED_TRACE(row.name);
        expect_near(cartesian(row.at, row.datum), row.xyz, kTolCartesian);
        expect_near(geodetic(row.xyz, row.datum), row.back, kTolPosition);
    }
}

TEST(EarthCentred, IsAnotherRoadThanMolodensky) {
    const Triple xyz = shifted(cartesian({50.0, 10.0, 0.0}, 38), 38, kWgs84);
    expect_near(geodetic(xyz, kWgs84), {49.99920197904, 9.99889209137, 39.74472869}, {1e-11, 1e-11, 1e-8});
    expect_near(shifted({0.0, 0.0, 0.0}, 87, 38), {375.0 + 87.0, -111.0 + 96.0, 431.0 + 120.0}, {});
}

TEST(EarthCentred, AnswersOnThePolarAxis) {
    const double a = 6378137.0, b = 6356752.314245179;
    const struct {
        Triple xyz, at;
    } rows[] = {{{0.0, 0.0, b + 25.0}, {90.0, 0.0, 25.0}},
                {{-0.0, 0.0, -b}, {-90.0, 0.0, 0.0}},
                {{1e-200, 0.0, -7e6}, {-90.0, 0.0, 7e6 - b}},
                {{0.0, 0.0, kInf}, {90.0, 0.0, kInf}},
                {{0.0, 0.0, 0.0}, {0.0, 0.0, -a}},
                {{0.0, -0.0, -0.0}, {0.0, 0.0, -a}}};
    for (const auto& row : rows)
        expect_near(geodetic(row.xyz, kWgs84), row.at, kTolPosition);
    EXPECT_TRUE(std::isnan(geodetic({0.0, 0.0, std::nan("")}, kWgs84)[0]));
}

}  // namespace
