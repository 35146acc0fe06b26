#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <zellap10/navigation/course.h>
#include <zellap10/navigation/dead_reckoning.h>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kRad = 3.14159265359 / 180.0;

// Some last places of a double near 360.
constexpr double kTolDeg = 1e-12;
// Relative rounding of a distance. A parallel is computed over 0.0002 degrees, which magnifies it.
constexpr double kTolDistance = 1e-13;
constexpr double kTolParallel = 1e-10;

struct CourseRow {
    const char* name;
    double lat1, lon1, lat2, lon2;
    double bearing, theta, distance, reduced_bearing;
};

// The formulas at 50 digits.
// clang-format off
const CourseRow kCourseRows[] = {
    // name                       lat1    lon1    lat2   lon2  m_bearing           m_theta                distance            bearing of m_b_d
    {"meridian",                   0.0,    0.0,    1.0,   0.0, 0.0,                1.5707963267948966,    60.0,               0.0},
    {"meridian, south",            0.0,    0.0,   -1.0,   0.0, 180.0,             -1.5707963267948966,    60.0,               180.0},
    {"parallel of 45",            45.0,    0.0,   45.0,   1.0, 90.0,               0.0,                   42.569988385496598, 90.0},
    {"parallel of 60 S, west",   -60.0,   10.0,  -60.0,   9.0, 270.00000000001185, 3.1415926535897932,    30.05059102158447,  270.00000000001185},
    {"over the date line, east",  10.0,  170.0,   10.0,-170.0, 270.00000000001185, 3.1415926535897932,    1189.5767522463356, 90.0},
    {"over the date line, west",  10.0, -170.0,   11.0, 170.0, 89.829732555516862, 0.0029717275151876093, 1189.1744428342729, 272.8920963257874},
    {"600 degrees apart",         10.0, -300.0,   20.0, 300.0, 89.016274875307136, 0.017169242360483383,  7014.2649159074836, 87.541954622692188},
    {"half a turn, east",         10.0,  -60.0,   20.0, 120.0, 86.724168105819168, 0.057174052295301753, 10499.990604695506,  86.724168105819168},
    {"half a turn, west",         10.0,  120.0,   20.0, -60.0, 273.27583189419268, 3.0844186012944915,   10499.990604695506,  273.27583189419268},
    {"to itself",                 41.5,  -71.0,   41.5, -71.0, 90.0,               0.0,                   0.0,                90.0},
};
// clang-format on

TEST(Course, MeetsReferenceRows) {
    for (const CourseRow& row : kCourseRows) {
        SCOPED_TRACE(row.name);
        EXPECT_NEAR(m_bearing(row.lat1, row.lon1, row.lat2, row.lon2), row.bearing, kTolDeg);
        EXPECT_NEAR(m_theta(row.lat1, row.lon1, row.lat2, row.lon2), row.theta, kTolDeg * kRad);
        const double tolerance = (row.lat1 == row.lat2 ? kTolParallel : kTolDistance) * row.distance;
        const double distance = m_distance(row.lat1, row.lon1, row.lat2, row.lon2);
        EXPECT_NEAR(distance, row.distance, tolerance);
        double bearing = -1.0;
        EXPECT_EQ(m_b_d(row.lat1, row.lon1, row.lat2, row.lon2, &bearing), distance);
        EXPECT_NEAR(bearing, row.reduced_bearing, kTolDeg);
        EXPECT_FALSE(std::signbit(bearing)) << "due north prints as 00";
    }
}

TEST(Course, HasNoDistanceIfThePartsAreEqual) {
    EXPECT_EQ(m_distance(10.0, 0.0, std::nextafter(10.0, 11.0), 5.0), 0.0);
}

TEST(Angle, StaysBelow360) {
    // Just west of north, where 360 minus the angle rounds up to 360: with our pi, that is at -1.034e-13.
    for (double x = -1.045e-13; x < -1.03e-13; x += 1e-18)
        ASSERT_LT(m_angle(x, 1.0), 360.0) << x;
}

TEST(MeridionalParts, MeetReferenceValues) {
    EXPECT_NEAR(m_diff(45.0 * kRad, 60.0 * kRad), 4507.2504850477049 - 3013.5041891596737, 2e-11);
    EXPECT_NEAR(m_parts(0.0), 3.6e-10, 1e-11);
    EXPECT_NEAR(m_parts(90.0 * kRad), 102765.6, 2.0);
    EXPECT_EQ(m_parts(-90.0 * kRad), -kInf);
}

struct AdvanceRow {
    const char* name;
    double lat, lon, distance, course, new_lat, new_lon;
};

// The formulas at 50 digits.
// clang-format off
const AdvanceRow kAdvanceRows[] = {
    // name                            lat      lon distance  course  new lat             new lon
    {"north",                          0.0,     0.0,    60.0,    0.0, 1.0,                0.0},
    {"hardly off east",               45.0,     0.0,    60.0, 90.009, 45.0,               1.4094436544512126},
    {"hardly off west",               45.0,     0.0,    60.0,269.991, 45.0,               -1.4094436544512126},
    {"off east",                      45.0,     0.0,    60.0,90.01005, 44.999824594410974, 1.409441460681944},
    {"-45 goes north-east",           45.0,     0.0,    60.0,  -45.0, 45.707106781186511, 1.0028959027209727},
    {"south, off east",                10.0,   -20.0,   600.0,  178.0, 0.006091729808972, -19.651568583168853},
    {"south, off west",                10.0,   -20.0,   600.0,  182.0, 0.006091729809116, -20.348431416835271},
    {"backwards",                    -60.0,    -5.0,   -30.0,  300.0, -60.250000000000149, -4.132135193306452},
    {"nowhere",                       10.0,    20.0,     0.0,  123.0, 10.0,               20.0},
};
// clang-format on

// A parallel is computed over 0.0002 degrees, which multiplies the rounding of the parts by 5000.
constexpr double kTolAdvance = 3e-9;

TEST(Advance, MeetsReferenceRows) {
    for (const AdvanceRow& row : kAdvanceRows) {
        SCOPED_TRACE(row.name);
        double lat = row.lat, lon = row.lon;
        EXPECT_EQ(m_advance_d(&lat, &lon, row.distance, row.course), row.distance);
        EXPECT_NEAR(lat, row.new_lat, kTolDeg);
        EXPECT_NEAR(lon, row.new_lon, kTolAdvance);
    }
}

TEST(Advance, GoesByTimeAndSpeed) {
    for (const auto& [time, speed] : {std::pair(3600.0, 10.0), std::pair(10.0, 3600.0)}) {
        double lat = 45.0, lon = 0.0;
        EXPECT_NEAR(m_advance_t(&lat, &lon, time, speed, 0.0), 10.0, kTolDeg);
        EXPECT_NEAR(lat, 45.0 + 10.0 / 60.0, kTolDeg);
    }
}

TEST(TimeToGo, IsTruncatedAndClamped) {
    const struct {
        double lat2, speed;
        long seconds;
    } rows[] = {{1.0, 10.0, 21600}, {1.0, 7.0, 30857},      {1.0, -7.0, -30857},
                {0.0, 0.0, 0},      {1.0, 0.0, 2147483647}, {1.0, -1e-5, -2147483647 - 1},
                {1.0, kNan, 0}};
    for (const auto& row : rows)
        EXPECT_EQ(m_ttg(0.0, 0.0, row.lat2, 0.0, row.speed), row.seconds) << row.speed;
}

TEST(Line, MovesPositionsToTheirFoot) {
    const struct {
        double lat0, lon0, lat, lon, theta, foot_lat, foot_lon;
    } rows[] = {{0.0, 0.0, 1.0, 1.0, 0.0, 0.0, 1.0},
                {0.0, 0.0, 1.0, 1.0, 1.5707963267948966, 1.0, 0.0},
                {10.0, 20.0, 11.0, 21.0, 0.785398163397448, 10.994866748127812, 21.005195164736625},
                {-40.0, 10.0, -45.0, 14.0, 2.0, -45.242461758043599, 13.251695373858922}};
    for (const auto& row : rows) {
        double lat = row.lat, lon = row.lon;
        m_line(row.lat0, row.lon0, &lat, &lon, row.theta);
        EXPECT_NEAR(lat, row.foot_lat, 1e-8);
        EXPECT_NEAR(lon, row.foot_lon, 1e-12);
    }
}

TEST(Course, HasNoBearingBetweenTwoSouthPoles) {
    double bearing = -1.0;
    m_b_d(-90.0, 0.0, -90.0, 0.0, &bearing);
    EXPECT_TRUE(std::isnan(bearing));
}

}  // namespace
