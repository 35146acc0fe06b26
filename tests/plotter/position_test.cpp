#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include <zellap10/plotter/position.h>

#include "../support/point_lists.h"

namespace {

using zellap10::plotter::from_wgs84;
using zellap10::plotter::is_fitted;
using zellap10::plotter::Pixel;
using zellap10::plotter::pixel_of;
using zellap10::plotter::Position;
using zellap10::plotter::position_of;
using zellap10::plotter::to_wgs84;

constexpr int kWidth = 2000;
constexpr int kHeight = 1500;
constexpr double kTolPixels = 1e-6;
constexpr double kMetresADegree = 111120.0;
constexpr double kLatitudeOffset = 0.0004;

struct PlaceRow {
    const char* name;
    double latitude, longitude;  // of the picture's middle
};

const PlaceRow kPlaces[] = {
    {"48 north", 48.1, -5.3},
    {"36 south", -36.4, 174.2},
    {"near the equator", 4.0, 30.0},
    {"70 north, beside the 180th meridian", 70.2, 179.9},
    {"17 south, over the 180th meridian", -17.3, 180.0},
};

double within_180(double longitude) {
    return longitude > 180.0 ? longitude - 360.0 : longitude;
}

void add_corners(CGEORec& record, double latitude, double longitude) {
    add_vertex(record, longitude - 0.001, latitude - 0.001);
    add_vertex(record, longitude + 0.001, latitude + 0.001);
}

// 35 points of a picture `metres` wide, 150 pixels inside it: where a projection puts them, Lambert's for
// direct mode, so that there the polynomials have something to bend to.
std::vector<PointRow> points_of(const char* projection, const PlaceRow& place, double metres) {
    std::vector<PointRow> rows;
    const double degrees = metres / kMetresADegree / kWidth;
    for (const int x : {200, 600, 1000, 1400, 1800}) {
        for (const int y : {150, 350, 550, 750, 950, 1150, 1350}) {
            const double longitude = degrees * (x - kWidth / 2.0) / std::cos(place.latitude * 0.0174533);
            rows.push_back({x, y, longitude, place.latitude - degrees * (y - kHeight / 2.0)});
        }
    }
    CGEORec plain;
    plain.LatitudeOffset = kLatitudeOffset;
    plain.Projection = *projection != 0 ? projection : "LAMBERT";
    add_corners(plain, place.latitude, 0.0);
    add_points(plain, rows);
    plain.solvepoly();
    for (PointRow& row : rows) {
        const auto position = position_of(plain, {double(row.x), double(row.y)}).value();
        row.latitude = position.latitude;
        row.longitude = within_180(position.longitude + place.longitude);
    }
    return rows;
}

double distance(Pixel a, Pixel b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// The largest distance between pixels and what `way` makes of them, over the whole picture and a row on each
// side of its middle, where direct mode may have a seam.
template <class Way>
double largest_miss(Way way) {
    double largest = 0.0;
    for (const double y : {0, 125, 300, 600, 740, 749, 750, 751, 760, 900, 1200, 1375, 1500}) {
        for (double x = 0; x <= kWidth; x += 125) {
            const std::optional<Pixel> pixel = way(Pixel{x, y});
            if (!pixel) return HUGE_VAL;
            largest = std::fmax(largest, distance(*pixel, {x, y}));
        }
    }
    return largest;
}

TEST(PixelOf, IsTheWayBackAtEveryScale) {
    int seams = 0;
    int wraps = 0;
    for (const char* const projection : {"", "MERCATOR", "POLYCONIC", "UTM", "LAMBERT"}) {
        for (const PlaceRow& place : kPlaces) {
            for (const double metres : {200.0, 2e3, 2e4, 2e5, 2e6}) {
                SCOPED_TRACE(std::string(projection) + ", " + place.name + ", " + std::to_string(metres));
                CGEORec record;
                record.Projection = projection;
                record.LatitudeOffset = kLatitudeOffset;
                add_corners(record, place.latitude, place.longitude);
                add_points(record, points_of(projection, place, metres));
                record.solvepoly();
                ASSERT_TRUE(is_fitted(record));
                seams += record.pwSplit < kHeight ? 1 : 0;
                wraps += record.Wraps180;
                EXPECT_LT(largest_miss([&](Pixel pixel) {
                              return pixel_of(record, position_of(record, pixel).value());
                          }),
                          kTolPixels);
                if (record.ProjCode == 0) continue;
                for (const CRefPoint* point : elements_of(record.Points)) {
                    const auto pixel = pixel_of(record, {point->Latitude, point->Longitude}).value();
                    EXPECT_LT(distance(pixel, {double(point->X), double(point->Y)}), 2 * kTolPixels);
                }
                // From here up wpxy is right.
                if (metres < 2e4) continue;
                EXPECT_LT(largest_miss([&](Pixel pixel) {
                              const auto position = position_of(record, pixel).value();
                              record.wpxy(position.longitude, position.latitude, &pixel.x, &pixel.y);
                              return std::optional(pixel);
                          }),
                          1e-4);
            }
        }
    }
    EXPECT_GT(seams, 5);
    EXPECT_GT(wraps, 20);
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
            record.pwyPoly[region][0] = region == 0 ? 50.0 : 50.0 - gap;
            record.pwyPoly[region][2] = -0.001;
        }
        for (const double y : {0.0, 479.0, 490.0, 500.0, 501.0, 510.0, 521.0, 1000.0}) {
            const auto pixel = pixel_of(record, position_of(record, {100.0, y}).value()).value();
            EXPECT_LT(distance(pixel, {100.0, y}), kTolPixels) << y;
        }
        // A position of no pixel, or of two that are not whole: either side of the seam will do.
        const auto pixel = pixel_of(record, {49.4903, 10.1}).value();
        EXPECT_NEAR(pixel.x, 100.0, kTolPixels);
        EXPECT_NEAR(pixel.y, 500.0, 31.0);
    }
}

TEST(PixelOf, TakesTheTurnThatTheChartLiesIn) {
    for (const char* const projection : {"", "MERCATOR"}) {
        CGEORec east;
        east.Projection = projection;
        add_corners(east, 45, 175);
        add_points(east, {{0, 0, 170, 50}, {1000, 0, 180, 50}, {0, 1000, 170, 40}, {1000, 1000, 180, 40}});
        east.solvepoly();
        ASSERT_EQ(east.Wraps180, 0);
        const auto beyond = position_of(east, {1100, 500}).value();
        EXPECT_NEAR(beyond.longitude, -179.0, 0.01);
        EXPECT_LT(distance(pixel_of(east, beyond).value(), {1100, 500}), kTolPixels);

        CGEORec world;
        world.Projection = projection;
        add_corners(world, 0, 0);
        add_points(world,
                   {{0, 0, -180, 60}, {3600, 0, 180, 60}, {0, 1200, -180, -60}, {3600, 1200, 180, -60}});
        world.solvepoly();
        for (const double x : {0.0, 900.0, 1800.0, 3600.0})
            EXPECT_NEAR(pixel_of(world, {10.0, 0.1 * x - 180.0})->x, x, kTolPixels);
    }
}

TEST(Positions, NeedAFit) {
    CGEORec record;
    EXPECT_FALSE(is_fitted(record));
    for (const char* const projection : {"", "LAMBERT"}) {
        CGEORec line;
        line.Projection = projection;
        add_points(line, {{0, 0, 1, 1}, {100, 100, 2, 2}, {200, 200, 3, 3}, {300, 300, 4, 4}});
        line.solvepoly();
        EXPECT_FALSE(is_fitted(line));
        EXPECT_FALSE(position_of(line, {500, 250}));
        EXPECT_FALSE(pixel_of(line, {2, 2}));
    }
}

TEST(PixelOf, IsNoneWhereNoPixelIs) {
    CGEORec bent;
    add_points(bent, {{100, 100, 0.01, 0.01}});
    bent.pwxPoly[0][3] = 1e-6;  // x squared
    bent.pwyPoly[0][5] = 1e-6;  // y squared
    ASSERT_TRUE(is_fitted(bent));
    EXPECT_NEAR(pixel_of(bent, {0.04, 0.01})->y, 200.0, kTolPixels);
    EXPECT_FALSE(pixel_of(bent, {-1.0, 0.01}));
    EXPECT_FALSE(pixel_of(bent, {std::nan(""), 0.01}));
    EXPECT_FALSE(pixel_of(bent, {0.01, HUGE_VAL}));
    EXPECT_FALSE(position_of(bent, {HUGE_VAL, 0.0}));
}

TEST(PixelOf, EndsWhereRoundingIsAllThatIsLeft) {
    CGEORec tiny;
    add_points(tiny, {{0, 0, 170, 50}});
    tiny.pwxPoly[0][0] = 170.0;
    tiny.pwyPoly[0][0] = 50.0;
    tiny.pwxPoly[0][1] = 1e-10;
    tiny.pwyPoly[0][2] = -1e-10;
    for (double x = 0; x < 100; x += 0.7)
        EXPECT_NEAR(pixel_of(tiny, position_of(tiny, {x, 3 * x}).value())->x, x, 1e-3);
}

TEST(Positions, MoveToWgs84AndBack) {
    CGEORec record;
    record.LatitudeOffset = 0.25;
    record.LongitudeOffset = -0.5;
    const Position wgs84 = to_wgs84(record, {-18.0, -179.75});
    EXPECT_EQ(wgs84.latitude, -17.75);
    EXPECT_EQ(wgs84.longitude, 179.75);
    const Position own = from_wgs84(record, wgs84);
    EXPECT_EQ(own.latitude, -18.0);
    EXPECT_EQ(own.longitude, -179.75);
}

}  // namespace
