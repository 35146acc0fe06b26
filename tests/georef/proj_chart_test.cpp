// Charts whose reference points PROJ computed, on the ellipsoid that every record is set up with.
#include <gtest/gtest.h>
#include <proj.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <zellap10/georef/geo_record.h>

#include "../support/point_lists.h"

namespace {

using Operation = std::unique_ptr<PJ, decltype(&proj_destroy)>;

struct ChartRow {
    const char* name;
    const char* projection;  // as the georeference file names it
    const char* pp;
    const char* p1;
    const char* p5;
    const char* p6;
    const char* operation;  // the same for PROJ
    double west, north;     // of the upper left pixel, DEGREES
    double metres;          // a pixel
};

// clang-format off
const ChartRow kChartRows[] = {
    // name                      projection             PP     P1    P5    P6     for PROJ                                    west     north   metres
    {"Mercator, south",          "MERCATOR",            "174", "",   "",   "",    "merc +lon_0=174",                          172.5,   -39.5,  35.0},
    {"transverse Mercator",      "TRANSVERSE MERCATOR", "-3",  "49", "",   "",    "tmerc +approx +k=0.9996 +lat_0=49 +lon_0=-3", -5.0,  50.5,   20.0},
    {"polyconic",                "POLYCONIC",           "-69", "",   "",   "",    "poly +lat_0=0 +lon_0=-69",                 -70.5,   44.5,   25.0},
    {"Lambert, two parallels",   "LAMBERT CONFORMAL",   "-2",  "49", "48", "51",  "lcc +lat_0=49 +lat_1=48 +lat_2=51 +lon_0=-2", -4.5,  51.0,   40.0},
    {"Lambert, south",           "lambert",             "20",  "-40", "-35", "-42", "lcc +lat_0=-40 +lat_1=-35 +lat_2=-42 +lon_0=20", 17.0, -34.0, 60.0},
};
// clang-format on

constexpr int kWidth = 8000;
constexpr int kHeight = 6000;

// Frames differ by these on every chart of the tests, DEGREES.
constexpr double kLatitudeOffset = 0.0013;
constexpr double kLongitudeOffset = -0.0021;

// A chart as PROJ sees it: pixels to positions in the chart's own frame and back.
class ProjChart {
public:
    explicit ProjChart(const ChartRow& row) : operation_(nullptr, &proj_destroy), metres_(row.metres) {
        const std::string text =
            std::string("+proj=") + row.operation + " +a=6377397.155 +rf=299.15281283824237 +type=crs";
        operation_.reset(proj_create_crs_to_crs(
            PJ_DEFAULT_CTX, "+proj=longlat +a=6377397.155 +rf=299.15281283824237 +type=crs", text.c_str(),
            nullptr));
        EXPECT_NE(operation_, nullptr) << text;
        const PJ_COORD corner = proj_trans(operation_.get(), PJ_FWD, proj_coord(row.west, row.north, 0, 0));
        left_ = corner.xy.x;
        top_ = corner.xy.y;
    }

    PJ_XY pixel(double longitude, double latitude) const {
        const PJ_COORD position = proj_coord(longitude + kLongitudeOffset, latitude + kLatitudeOffset, 0, 0);
        const PJ_COORD plane = proj_trans(operation_.get(), PJ_FWD, position);
        return {(plane.xy.x - left_) / metres_, (top_ - plane.xy.y) / metres_};
    }
    PJ_LP position(double x, double y) const {
        const PJ_COORD plane = proj_coord(left_ + x * metres_, top_ - y * metres_, 0, 0);
        const PJ_COORD position = proj_trans(operation_.get(), PJ_INV, plane);
        return {position.lp.lam - kLongitudeOffset, position.lp.phi - kLatitudeOffset};
    }

private:
    Operation operation_;
    double metres_;
    double left_ = 0.0;
    double top_ = 0.0;
};

void fit(CGEORec& record, const ChartRow& row, const std::vector<PointRow>& points) {
    record.Projection = row.projection;
    record.PP = row.pp;
    record.P1 = row.p1;
    record.P5 = row.p5;
    record.P6 = row.p6;
    record.LatitudeOffset = kLatitudeOffset;
    record.LongitudeOffset = kLongitudeOffset;
    add_points(record, points);
    record.solvepoly();
}

// Compares pixels all over the picture, between the reference points, with PROJ's.
void expect_pixels(const CGEORec& record, const ProjChart& chart, double tolerance) {
    for (int x = 0; x <= kWidth; x += 250) {
        for (int y = 0; y <= kHeight; y += 250) {
            const PJ_LP position = chart.position(x, y);
            double record_x = 0.0;
            double record_y = 0.0;
            record.wpxy(position.lam, position.phi, &record_x, &record_y);
            ASSERT_LT(std::hypot(record_x - x, record_y - y), tolerance) << x << ", " << y;
            double longitude = 0.0;
            double latitude = 0.0;
            record.pwxy(record_x, record_y, &longitude, &latitude);
            ASSERT_NEAR(longitude, position.lam, 1e-6);
            ASSERT_NEAR(latitude, position.phi, 1e-6);
        }
    }
}

TEST(ProjChart, AgreesWherePointsFallOnWholePixels) {
    for (const ChartRow& row : kChartRows) {
        SCOPED_TRACE(row.name);
        const ProjChart chart(row);
        std::vector<PointRow> points;
        for (int x = 0; x <= kWidth; x += kWidth / 4) {
            for (int y = 0; y <= kHeight; y += kHeight / 3) {
                const PJ_LP position = chart.position(x, y);
                points.push_back({x, y, position.lam, position.phi});
            }
        }
        CGEORec record;
        fit(record, row, points);
        expect_pixels(record, chart, 0.001);
    }
}

TEST(ProjChart, AgreesWherePointsAreRounded) {
    for (const ChartRow& row : kChartRows) {
        SCOPED_TRACE(row.name);
        const ProjChart chart(row);
        std::vector<PointRow> points;
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) {
                // Whole hundredths of a degree near a grid over the picture.
                const PJ_LP near = chart.position(kWidth * (i + 0.1) / 3.2, kHeight * (j + 0.1) / 3.2);
                const double longitude = std::round(near.lam * 100) / 100;
                const double latitude = std::round(near.phi * 100) / 100;
                const PJ_XY pixel = chart.pixel(longitude, latitude);
                points.push_back({static_cast<int>(std::lround(pixel.x)),
                                  static_cast<int>(std::lround(pixel.y)), longitude, latitude});
            }
        }
        CGEORec record;
        fit(record, row, points);
        expect_pixels(record, chart, 0.6);
    }
}

}  // namespace
