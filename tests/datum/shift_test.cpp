#include <zellap10/datum/shift.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr int kWgs84 = 117;

// Some last places of a double near 180, and near the radius of the earth.
constexpr double kTolDeg = 2e-13;
constexpr double kTolMetres = 5e-9;

struct Position {
    double lat, lon, h;
};

Position to_wgs(Position at, int datum) {
    datum_to_WGS(&at.lat, &at.lon, &at.h, datum);
    return at;
}

Position from_wgs(Position at, int datum) {
    WGS_to_datum(&at.lat, &at.lon, &at.h, datum);
    return at;
}

void expect_near(const Position& at, const Position& expected) {
    EXPECT_NEAR(at.lat, expected.lat, kTolDeg);
    EXPECT_NEAR(at.lon, expected.lon, kTolDeg);
    EXPECT_NEAR(at.h, expected.h, kTolMetres);
}

struct ShiftRow {
    const char* name;
    int datum;
    Position at, on_wgs, on_datum;
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
        expect_near(to_wgs(row.at, row.datum), row.on_wgs);
        expect_near(from_wgs(row.at, row.datum), row.on_datum);
    }
}

TEST(Molodensky, LeavesPositionsOfWgs84AndItsEquals) {
    const Position at{12.345678, 98.7654321, 100.0};
    for (int datum : {44, 48, 75, 103, kWgs84}) {
        expect_near(to_wgs(at, datum), at);
        expect_near(from_wgs(at, datum), at);
    }
}

TEST(Molodensky, ReturnsNearlyOverAllRows) {
    for (int datum = 0; datum < 120; ++datum) {
        const Position back = from_wgs(to_wgs({51.5, -0.1, 50.0}, datum), datum);
        EXPECT_NEAR(back.lat, 51.5, 6e-5) << datum;
        EXPECT_NEAR(back.lon, -0.1, 6e-5) << datum;
        EXPECT_NEAR(back.h, 50.0, 0.4) << datum;
    }
}

TEST(Molodensky, KeepsTheLongitudeAtAPole) {
    for (double lat : {90.0, -90.0}) {
        for (const Position& at : {to_wgs({lat, 123.456, 10.0}, 38), from_wgs({lat, 123.456, 10.0}, 38)}) {
            EXPECT_EQ(at.lon, 123.456);
            EXPECT_NEAR(at.lat, lat, 0.01);
            EXPECT_NEAR(std::fabs(at.h - 10.0), lat > 0.0 ? 39.632 : 279.632, 5e-3) << "dz is -120 m";
        }
    }
    EXPECT_NE(to_wgs({89.999999, 123.456, 10.0}, 38).lon, 123.456);
}

struct CartesianRow {
    const char* name;
    int datum;
    Position at;
    double x, y, z;
    Position back;
};

// Both ways at 50 digits; what `back` misses of `at`, the closed form misses.
// clang-format off
const CartesianRow kCartesianRows[] = {
    {"WGS-84",                 117, {50.0, 10.0, 0.0},        4045456.4053406035, 713323.11354147654, 4862789.0377066676, {50.0, 10.0, 0.0}},
    {"European 1950, high up",  38, {-33.5, -70.25, 6900.0},  1801114.995666594, -5016520.770729432, -3504195.8208856282, {-33.500000000003008, -70.25, 6900.0000002209707}},
    {"Great Britain, west",     87, {57.25, -4.5, -3.5},      3447604.77840029, -271332.3805168312, 5340611.8064593507,   {57.25, -4.5, -3.500000000286372}},
    {"the 180th meridian",     117, {0.0, 180.0, 0.0},        -6378137.0, -1.3192e-6, 0.0,                                {0.0, -180.0, 0.0}},
};
// clang-format on

TEST(EarthCentred, MeetsReferenceRows) {
    for (const CartesianRow& row : kCartesianRows) {
        SCOPED_TRACE(row.name);
        double x = 0.0, y = 0.0, z = 0.0;
        llhxyz(row.at.lat, row.at.lon, row.at.h, row.datum, &x, &y, &z);
        EXPECT_NEAR(x, row.x, kTolMetres);
        EXPECT_NEAR(y, row.y, kTolMetres);
        EXPECT_NEAR(z, row.z, kTolMetres);
        Position back{};
        xyzllh(row.x, row.y, row.z, row.datum, &back.lat, &back.lon, &back.h);
        EXPECT_NEAR(back.lat, row.back.lat, kTolDeg);
        EXPECT_NEAR(back.lon, row.back.lon, 1e-10);
        EXPECT_NEAR(back.h, row.back.h, kTolMetres);
    }
}

TEST(EarthCentred, IsAnotherRoadThanMolodensky) {
    double x = 0.0, y = 0.0, z = 0.0;
    Position at{};
    llhxyz(50.0, 10.0, 0.0, 38, &x, &y, &z);
    const double x38 = x, y38 = y, z38 = z;
    shxyz(38, kWgs84, &x, &y, &z);
    EXPECT_NEAR(x - x38, -87.0, kTolMetres);
    EXPECT_NEAR(y - y38, -96.0, kTolMetres);
    EXPECT_NEAR(z - z38, -120.0, kTolMetres);
    xyzllh(x, y, z, kWgs84, &at.lat, &at.lon, &at.h);
    EXPECT_NEAR(at.lat, 49.99920197904, 1e-11);
    EXPECT_NEAR(at.lon, 9.99889209137, 1e-11);
    EXPECT_NEAR(at.h, 39.74472869, 1e-8);
    shxyz(87, 38, &x, &y, &z);
    EXPECT_NEAR(z - z38, -120.0 + 431.0 + 120.0, kTolMetres) << "between two local datums";
}

TEST(EarthCentred, AnswersOnThePolarAxis) {
    const double b = 6378137.0 * (1.0 - 0.0033528106647474805);
    const struct {
        double x, z, lat, h;
    } rows[] = {{0.0, b + 25.0, 90.0, 25.0}, {-0.0, -b, -90.0, 0.0},       {1e-200, -7e6, -90.0, 7e6 - b},
                {0.0, 0.0, 0.0, -6378137.0}, {0.0, -0.0, 0.0, -6378137.0}, {0.0, kInf, 90.0, kInf}};
    for (const auto& row : rows) {
        Position at{1.0, 1.0, 1.0};
        xyzllh(row.x, 0.0, row.z, kWgs84, &at.lat, &at.lon, &at.h);
        EXPECT_EQ(at.lat, row.lat);
        EXPECT_EQ(at.lon, 0.0);
        if (std::isinf(row.h)) {
            EXPECT_EQ(at.h, row.h);
        } else {
            EXPECT_NEAR(at.h, row.h, kTolMetres);
        }
    }
}

TEST(DatumShift, IsNanForARowOutsideTheTable) {
    for (int datum : {-1, 120, 2147483647}) {
        for (double lat : {50.0, 90.0}) {
            for (const Position& at : {to_wgs({lat, 10.0, 0.0}, datum), from_wgs({lat, 10.0, 0.0}, datum)}) {
                EXPECT_TRUE(std::isnan(at.lat) && std::isnan(at.lon) && std::isnan(at.h)) << datum;
            }
        }
        double x = 1.0, y = 1.0, z = 1.0;
        llhxyz(50.0, 10.0, 0.0, datum, &x, &y, &z);
        EXPECT_TRUE(std::isnan(x) && std::isnan(y) && std::isnan(z)) << datum;
        for (double axis : {0.0, 1e6}) {
            Position at{};
            xyzllh(axis, 0.0, 6e6, datum, &at.lat, &at.lon, &at.h);
            EXPECT_TRUE(std::isnan(at.lat) && std::isnan(at.lon) && std::isnan(at.h)) << datum;
        }
        x = y = z = 1.0;
        shxyz(kWgs84, datum, &x, &y, &z);
        EXPECT_TRUE(std::isnan(x) && std::isnan(y) && std::isnan(z)) << datum;
    }
}

TEST(DatumShift, HandsNanOn) {
    for (const Position& start :
         {Position{kNan, 10.0, 0.0}, Position{50.0, kNan, 0.0}, Position{kInf, 10.0, 0.0}}) {
        for (const Position& at : {to_wgs(start, 38), from_wgs(start, 38)}) {
            EXPECT_TRUE(std::isnan(at.lat) && std::isnan(at.lon) && std::isnan(at.h));
        }
    }
    Position at{};
    xyzllh(0.0, 0.0, kNan, kWgs84, &at.lat, &at.lon, &at.h);
    EXPECT_TRUE(std::isnan(at.lat) && std::isnan(at.h));
}

}  // namespace
