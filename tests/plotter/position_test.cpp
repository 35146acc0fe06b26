#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <testing/point_lists.h>
#include <zellap10/plotter/position.h>
#include <zellap10/plotter/text.h>

namespace {

using namespace zellap10::plotter;

constexpr int kWidth = 2000;
constexpr int kHeight = 1500;
constexpr double kTolPixels = 1e-6;
constexpr double kMetresADegree = 111120.0;

// Of the picture's middle: in either hemisphere, near the equator, beside the 180th meridian and over it.
const Position kPlaces[] = {{48.1, -5.3}, {-36.4, 174.2}, {4.0, 30.0}, {70.2, 179.9}, {-17.3, 180.0}};

// Fits a picture so many metres wide to 35 points, 150 pixels inside it. Its meridians bend towards the pole,
// so that in direct mode the polynomials do too.
void fit(CGEORec& record, const char* projection, const Position& place, double metres) {
    const double step = metres / kMetresADegree / kWidth;
    for (const int x : {200, 600, 1000, 1400, 1800}) {
        for (const int y : {150, 350, 550, 750, 950, 1150, 1350}) {
            const double latitude = place.latitude - step * (y - kHeight / 2.0);
            const double parallel = std::cos(latitude * 0.0174533);
            const double longitude = place.longitude + step * (x - kWidth / 2.0) / parallel;
            add_points(record, {{x, y, std::remainder(longitude, 360.0), latitude}});
        }
    }
    record.LatitudeOffset = 0.0004;
    add_vertex(record, place.longitude - 0.001, place.latitude - 0.001);
    add_vertex(record, place.longitude + 0.001, place.latitude + 0.001);
    record.Projection = projection;
    record.solvepoly();
}

double distance(Pixel a, Pixel b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// How far from a pixel its position is put back.
double miss_of(const CGEORec& record, Pixel pixel) {
    return distance(pixel_of(record, position_of(record, pixel).value()).value(), pixel);
}

// Over the whole picture, and in a row on each side of its middle, where direct mode may have a seam.
void expect_way_back(const CGEORec& record) {
    for (const double y : {0, 125, 300, 600, 740, 749, 750, 751, 760, 900, 1200, 1375, 1500}) {
        for (double x = 0; x <= kWidth; x += 125) {
            ASSERT_LT(miss_of(record, {x, y}), kTolPixels) << x << ", " << y;
            // The position is that of pwxy, which in projection mode errs by millimetres, or more on wide
            // charts.
            const Position by_pwxy{record.pwy(x, y), record.pwx(x, y)};
            ASSERT_LT(distance(pixel_of(record, by_pwxy).value(), {x, y}), 0.1);
        }
    }
}

TEST(PixelOf, IsTheWayBackAtEveryScale) {
    for (const char* const projection : {"", "MERCATOR", "POLYCONIC", "UTM", "LAMBERT"}) {
        for (const Position& place : kPlaces) {
            for (const double metres : {200.0, 2e3, 2e4, 2e5, 2e6}) {
                SCOPED_TRACE(std::string(projection) + ", " + position_text(place) + ", " +
                             std::to_string(metres));
                CGEORec record;
                fit(record, projection, place, metres);
                expect_way_back(record);
            }
        }
    }
}

TEST(PixelOf, PutsAPixelBackWhereTwoRegionsOverlapOrPart) {
    for (const double gap : {-0.0203, 0.0203}) {
        SCOPED_TRACE(gap);
        CGEORec record;
        add_points(record, {{0, 0, 10, 50}, {1000, 1000, 11, 49}});
        record.pwSplit = 500.0;
        for (const int region : {0, 1}) {
            record.pwxPoly[region][0] = 10.0;
            record.pwxPoly[region][1] = 0.001;
            record.pwyPoly[region][0] = 50.0 - gap * region;
            record.pwyPoly[region][2] = -0.001;
        }
        for (const double y : {0.0, 479.0, 490.0, 500.0, 501.0, 510.0, 521.0, 1000.0})
            EXPECT_LT(miss_of(record, {100.0, y}), kTolPixels) << y;
        // In the second region alone, or in neither: beyond the seam by 9.7 pixels is better than by 10.6.
        EXPECT_NEAR(pixel_of(record, {49.4903, 10.1})->y, gap < 0 ? 530.0 : 509.7, kTolPixels);
        // In both, or in the first alone: of two that are not whole that on the side of the nearest point.
        EXPECT_NEAR(pixel_of(record, {49.5051, 10.9})->y, gap < 0 ? 515.2 : 494.9, kTolPixels);
    }
}

TEST(PixelOf, TakesTheTurnThatTheChartLiesIn) {
    // A pixel is a tenth of a degree wide.
    for (const auto& [west, width] : {std::pair{170.0, 100}, {-180.0, 3600}, {20.0, 2000}}) {
        const double east = std::remainder(west + 0.1 * width, 360.0);
        for (const char* const projection : {"", "MERCATOR"}) {
            CGEORec record;
            record.Projection = projection;
            add_points(record, {{width / 2, 0, west + 0.05 * width, 60}});
            add_points(record, {{0, 0, west, 60}, {width, 0, east, 60}});
            add_points(record, {{0, 1200, west, -60}, {width, 1200, east, -60}});
            record.solvepoly();
            for (const double x : {1.0, width / 2.0, std::min(width + 10.0, 3599.0)}) {
                EXPECT_LT(miss_of(record, {x, 500}), kTolPixels) << projection << x;
                EXPECT_LE(std::fabs(position_of(record, {x + 100, 500})->longitude), 180.0);
            }
        }
    }
}

TEST(PixelOf, IsNoneWhereNoPixelIs) {
    EXPECT_FALSE(is_fitted(CGEORec()));
    for (const char* const projection : {"", "LAMBERT"}) {
        CGEORec line;
        line.Projection = projection;
        add_points(line, {{0, 0, 1, 1}, {100, 100, 2, 2}, {200, 200, 3, 3}, {300, 300, 4, 4}});
        line.solvepoly();
        EXPECT_FALSE(position_of(line, {500, 250}));
        EXPECT_FALSE(pixel_of(line, {2, 2}));
    }
    // Bent about column and row 30, and of no second region: the first reference point is the best start.
    CGEORec bent;
    add_points(bent, {{100, -40, 0.0049, 0.0049}, {-40, 100, 0.0049, 0.0049}});
    bent.pwSplit = 500.0;
    bent.pwxPoly[0][0] = bent.pwyPoly[0][0] = 9e-4;
    bent.pwxPoly[0][1] = bent.pwyPoly[0][2] = -6e-5;
    bent.pwxPoly[0][3] = bent.pwyPoly[0][5] = 1e-6;
    EXPECT_LT(distance(pixel_of(bent, {0.0144, 0.0049}).value(), {100.0, -90.0}), kTolPixels);
    EXPECT_FALSE(pixel_of(bent, {-1.0, 0.01}));
    EXPECT_FALSE(pixel_of(bent, {0.01, HUGE_VAL}));
    EXPECT_FALSE(position_of(bent, {HUGE_VAL, 0.0}));
}

TEST(Positions, MoveToWgs84AndBack) {
    CGEORec record;
    record.LatitudeOffset = 0.25;
    record.LongitudeOffset = -0.5;
    EXPECT_EQ(position_text(to_wgs84(record, {-18.0, -179.75})), u8"17°45.00'S 179°45.00'E");
    EXPECT_EQ(position_text(from_wgs84(record, {-17.75, 179.75})), u8"18°00.00'S 179°45.00'W");
}

}  // namespace
