#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/point_lists.h>
#include <zellap10/georef/geo_record.h>

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

struct WrapRow {
    const char* name;
    std::vector<PointRow> points;
    int wraps;
};

const WrapRow kWrapRows[] = {
    {"east to west over 180", {{0, 0, 179, 0}, {1000, 0, -179, 0}}, 1},
    {"in another order", {{1000, 0, -179, 0}, {0, 0, 179, 0}}, 1},
    {"over 0 and not over 180", {{0, 0, -179, 0}, {1000, 0, 179, 0}}, 0},
    {"only the outer columns count", {{0, 0, 10, 0}, {500, 0, -170, 0}, {1000, 0, 20, 0}}, 0},
    {"one point", {{0, 0, 179, 0}}, 0},
    {"0 at the left", {{0, 0, 0, 0}, {1000, 0, -179, 0}}, 0},
    {"0 at the right", {{0, 0, 179, 0}, {1000, 0, 0, 0}}, 0},
    {"the first of equal columns", {{0, 0, 179, 0}, {0, 9, -179, 0}, {9, 0, -179, 0}, {9, 9, 179, 0}}, 1},
};

TEST(LongitudeWrap, IsDetectedAtTheOuterColumns) {
    for (const WrapRow& row : kWrapRows) {
        SCOPED_TRACE(row.name);
        CGEORec record;
        record.Wraps180 = 1 - row.wraps;
        PointList points(row.points);
        record.Check180Wrap(points.list());
        EXPECT_EQ(record.Wraps180, row.wraps);
    }
}

TEST(LongitudeWrap, MovesPositiveLongitudesAndBack) {
    CGEORec record;
    PointList points({{0, 0, 179, 0}, {0, 0, 180, 0}, {0, 0, 0, 0}, {0, 0, -179, 0}});
    const auto longitudes = [&points] {
        std::vector<double> values;
        for (const CRefPoint& point : points.points())
            values.push_back(point.Longitude);
        return values;
    };
    const std::vector<double> before = longitudes();
    record.WrapLongitude(points.list());
    record.UnWrapLongitude(points.list());
    EXPECT_EQ(longitudes(), before) << "nothing moves without the flag";
    record.Wraps180 = 1;
    record.WrapLongitude(points.list());
    EXPECT_EQ(longitudes(), (std::vector<double>{-181, -180, 0, -179}));
    record.UnWrapLongitude(points.list());
    EXPECT_EQ(longitudes(), (std::vector<double>{179, -180, 0, -179}));
    for (int i = 1; i < 100000; ++i)
        points.add({0, 0, i * 0.0018, 0});
    const std::vector<double> many = longitudes();
    record.WrapLongitude(points.list());
    record.UnWrapLongitude(points.list());
    double largest = 0.0;
    for (std::size_t i = 0; i < many.size(); ++i)
        largest = std::max(largest, std::fabs(points.points()[i].Longitude - many[i]));
    EXPECT_LT(largest, 3e-14);
    EXPECT_GT(largest, 0.0) << "rounding changes last places";
}

struct AngleRow {
    double degrees;
    const char* text;
};

// clang-format off
const AngleRow kAngleRows[] = {
    {-0.25,      "-000 15 00.00"},
    {-122.4194,  "-122 25 09.84"},
    {0.0,        "-000 00 00.00"},
    {-0.0,       "-000 00 00.00"},
    {10.9999999, "+010 59 60.00"},
    {1234.5,     "+1234 30 00.00"},
    {1e300,      "+2147483647 00 00.00"},
};
// clang-format on

TEST(AngleText, HasDegreesMinutesAndSeconds) {
    const CGEORec record;
    for (const AngleRow& row : kAngleRows)
        EXPECT_STREQ(record.deg2dms(row.degrees), row.text);
}

struct CodeRow {
    const char* projection;
    int code;
};

// clang-format off
const CodeRow kCodeRows[] = {
    {"MERCATOR", 1}, {"Mercator", 1}, {"MERCATOR (WORLD)", 1}, {"POLYCONIC", 2}, {"UTM", 3}, {"utm zone 19", 3},
    {"TRANSVERSE MERCATOR", 3}, {"LAMBERT CONFORMAL", 4}, {" MERCATOR", 0}, {"OBLIQUE MERCATOR", 0}, {"", 0},
    {"MERCATO", 0},
};
// clang-format on

TEST(ProjectionName, MatchesByPrefix) {
    for (const CodeRow& row : kCodeRows) {
        SCOPED_TRACE(row.projection);
        CGEORec record;
        record.ProjCode = 9;
        record.MinLat = 77.0;
        record.wpxAffine[0] = 5.0;
        record.Projection = row.projection;
        record.ProjectionInit();
        EXPECT_EQ(record.ProjCode, row.code);
        EXPECT_EQ(record.MinLat, row.code != 0 ? kLargest : 77.0) << "untouched without a projection";
        EXPECT_EQ(record.MeanLat + record.MeanLon, 0.0) << "without vertices";
        EXPECT_EQ(record.wpxAffine[0], row.code != 0 ? 0.0 : 5.0);
        record.Wraps180 = 1;
        record.ProjectionInit();
        EXPECT_EQ(record.ProjCode, 0) << "over the 180th meridian";
    }
}

TEST(ProjectionParameters, ComeFromTheFileOrTheVertices) {
    CGEORec record;
    record.Projection = "LAMBERT";
    add_vertex(record, -71, 44);
    add_vertex(record, -67, 41);
    add_vertex(record, -70, 42);
    record.PP = " ";
    record.P5 = "41.5";
    record.ProjectionInit();
    EXPECT_EQ(record.MinLat, 41);
    EXPECT_EQ(record.MeanLat, 42.5);
    EXPECT_EQ(record.MaxLat, 44);
    EXPECT_EQ(record.MinLon, -71);
    EXPECT_EQ(record.MeanLon, -69);
    EXPECT_EQ(record.MaxLon, -67);
    const auto expect_cone = [&record](double lat0, double lon0, double lat1, double lat2) {
        PPARMS expected;
        project_init2(4, lat0, lon0, lat1, lat2, 17, &expected);
        EXPECT_EQ(record.ProjParms.a, expected.a);
        EXPECT_EQ(record.ProjParms.lon0, expected.lon0);
        EXPECT_EQ(record.ProjParms.lam_n, expected.lam_n);
        EXPECT_EQ(record.ProjParms.lam_rho0, expected.lam_rho0);
    };
    expect_cone(42.5, 0.0, 41.5, 42.5);  // a blank text is a number, 0
    record.PP = "";
    record.P1 = "10";
    record.P6 = "50";
    record.ProjectionInit();
    expect_cone(10.0, -69.0, 41.5, 50.0);
}

}  // namespace
