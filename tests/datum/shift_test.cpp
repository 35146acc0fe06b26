#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <zellap10/datum/shift.h>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr int kWgs84 = 117;

using Triple = std::array<double, 3>;  // latitude, longitude and height, or x, y and z

Triple shifted(decltype(&datum_to_WGS) shift, Triple at) {
    shift(&at[0], &at[1], &at[2], 38);
    return at;
}

Triple geodetic(const Triple& xyz, int datum) {
    Triple at{7.0, 7.0, 7.0};
    xyzllh(xyz[0], xyz[1], xyz[2], datum, &at[0], &at[1], &at[2]);
    return at;
}

void expect_near(const Triple& triple, const Triple& expected, const Triple& tolerance) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(triple[i] == expected[i] || std::fabs(triple[i] - expected[i]) <= tolerance[i])
            << "number " << i << " is " << triple[i] << ", not " << expected[i];
    }
}

// Some last places of a double near 180, and near the radius of the earth.
const Triple kTolPosition{2e-13, 2e-13, 8e-9};

TEST(Molodensky, KeepsTheLongitudeAtAPole) {
    const double dh = 39.632, dh_south = 279.632;  // dz is -120 m
    expect_near(shifted(datum_to_WGS, {90.0, 123.456, 10.0}), {90.0, 123.456, 10.0 + dh}, {0.01, 0.0, 5e-3});
    expect_near(shifted(WGS_to_datum, {90.0, 123.456, 10.0}), {90.0, 123.456, 10.0 - dh}, {0.01, 0.0, 5e-3});
    expect_near(shifted(datum_to_WGS, {-90.0, 123.456, 10.0}), {-90.0, 123.456, 10.0 + dh_south},
                {0.01, 0.0, 5e-3});
    for (const double lat : {89.999999, 91.0})
        EXPECT_NE(shifted(datum_to_WGS, {lat, 123.456, 10.0})[1], 123.456) << lat;
}

TEST(EarthCentred, ShiftsBetweenAnyTwoDatums) {
    Triple xyz{};
    shxyz(87, 38, &xyz[0], &xyz[1], &xyz[2]);
    expect_near(xyz, {375.0 + 87.0, -111.0 + 96.0, 431.0 + 120.0}, {});
}

TEST(EarthCentred, HasPositionsOnThePolarAxis) {
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
    EXPECT_NEAR(geodetic({0.0, 1e-3, -7e6}, kWgs84)[1], 90.0, 1e-11) << "a millimetre from the axis";
    EXPECT_TRUE(std::isnan(geodetic({0.0, 0.0, std::nan("")}, kWgs84)[0]));
}

}  // namespace
