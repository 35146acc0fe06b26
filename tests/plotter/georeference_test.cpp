#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <testing/point_lists.h>
#include <zellap10/plotter/georeference.h>
#include <zellap10/plotter/sheet.h>
#include <zellap10/plotter/text.h>

namespace {

using namespace zellap10::plotter;

constexpr int kWidth = 2000;
constexpr int kHeight = 1500;
constexpr double kTolPixels = 1e-6;
constexpr double kMetresPerDegree = 111120.0;

// Centres of charts: in both hemispheres, near the equator, beside the 180th meridian and across it.
const Position kPlaces[] = {{48.1, -5.3}, {-36.4, 174.2}, {4.0, 30.0}, {70.2, 179.9}, {-17.3, 180.0}};

// Fits a chart of this width to 35 points, 150 pixels inside it. Its meridians converge towards the pole, so
// that the polynomials of direct mode are bent.
void fit(CGEORec& record, const char* projection, Position place, double metres) {
    const double step = metres / kMetresPerDegree / kWidth;
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

double distance(ChartPixel a, ChartPixel b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// How far from a pixel its position is put back.
double miss_of(const Georeference& georeference, ChartPixel pixel) {
    return distance(georeference.pixel_of(georeference.position_of(pixel).value()).value(), pixel);
}

// Over the chart, and in a row on each side of its middle, where direct mode may have a seam.
void expect_way_back(const CGEORec& record) {
    const Georeference georeference = Georeference::from(record).value();
    for (const double y : {0, 125, 300, 600, 740, 749, 750, 751, 760, 900, 1200, 1375, 1500}) {
        for (double x = 0; x <= kWidth; x += 125) {
            ASSERT_LT(miss_of(georeference, {x, y}), kTolPixels) << x << ", " << y;
            // The position is that of pwxy, which in projection mode errs by millimetres, or more on wide
            // charts.
            const Position by_pwxy{record.pwy(x, y), record.pwx(x, y)};
            ASSERT_LT(distance(georeference.pixel_of_chart_datum(by_pwxy).value(), {x, y}), 0.1);
        }
    }
}

TEST(PixelOf, IsTheWayBackAtEveryScale) {
    for (const char* const projection : {"", "MERCATOR", "POLYCONIC", "UTM", "LAMBERT"}) {
        for (const Position& place : kPlaces) {
            for (const double metres : {200.0, 2e3, 2e4, 2e5, 2e6}) {
                SCOPED_TRACE(std::string(projection) + ", " + format_position(place) + ", " +
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
        add_points(record, {{0, 0, 10, 50}, {1000, 1000, 11, 49}, {1000, 0, 11, 50}});
        record.pwSplit = 500.0;
        for (const int region : {0, 1}) {
            record.pwxPoly[region][0] = 10.0;
            record.pwxPoly[region][1] = 0.001;
            record.pwyPoly[region][0] = 50.0 - gap * region;
            record.pwyPoly[region][2] = -0.001;
        }
        const Georeference georeference = Georeference::from(record).value();
        for (const double y : {0.0, 479.0, 490.0, 500.0, 501.0, 510.0, 521.0, 1000.0})
            EXPECT_LT(miss_of(georeference, {100.0, y}), kTolPixels) << y;
        // In the second region alone, or in neither: past the seam by 9.7 pixels is better than by 10.6.
        EXPECT_NEAR(georeference.pixel_of({49.4903, 10.1})->y, gap < 0 ? 530.0 : 509.7, kTolPixels);
        // In both, or in the first alone: of two that are not whole the one on the side of the nearest point.
        EXPECT_NEAR(georeference.pixel_of({49.4949, 10.9})->y, gap < 0 ? 525.4 : 505.1, kTolPixels);
    }
}

struct TurnRow {
    const char* name;
    double west;
    int width;        // of a chart of ten pixels per degree
    int first_point;  // column of the point that is listed first
    double x;
};

// clang-format off
const TurnRow kTurnRows[] = {
    {"across the 180th meridian",        170,  100,  50,   1},
    {"beyond its right edge",            170,  100,  50,   110},
    {"the earth from -180 on",           -180, 3600, 1800, 1},
    {"its last pixel",                   -180, 3600, 1800, 3599},
    {"the earth from 0 on, by its left", 0,    3500, 0,    3000},
    {"the same by its right",            0,    3500, 3500, 3000},
    {"its west, by its right",           0,    3500, 3500, 500},
    {"past its points, on the chart",    0,    3500, 0,    3590},
    {"half the earth",                   20,   2000, 1000, 1},
};
// clang-format on

TEST(PixelOf, TakesTheTurnThatIsOnTheChart) {
    for (const TurnRow& row : kTurnRows) {
        const double east = row.west + 0.1 * row.width;
        for (const char* const projection : {"", "MERCATOR"}) {
            SCOPED_TRACE(std::string(row.name) + ", " + projection);
            const double right = row.west > 0 && east > 180 ? east - 360 : east;
            CGEORec record;
            record.Projection = projection;
            const double first = row.west + 0.1 * row.first_point;
            add_points(record, {{row.first_point, 0, first, 60}, {row.first_point, 1200, first, -60}});
            add_points(record, {{0, 0, row.west, 60}, {row.width, 0, right, 60}});
            add_points(record, {{0, 1200, row.west, -60}, {row.width, 1200, right, -60}});
            record.solvepoly();
            const Georeference georeference = Georeference::from(record, {3600, 1201}).value();
            EXPECT_LT(miss_of(georeference, {row.x, 500}), kTolPixels);
            EXPECT_LE(std::fabs(georeference.position_of({row.x + 100, 500})->longitude), 180.0);
        }
    }
}

// Transverse Mercator, 1000 pixels of 1 km, north of 80 and far from the central meridian.
TEST(PositionOf, ConvergesFarFromTheCentralMeridianOrIsEmpty) {
    CGEORec record;
    record.Projection = "UTM";
    for (const double x : {-500.0, 0.0, 500.0}) {
        for (const double y : {-500.0, 0.0, 500.0})
            add_points(record, {{static_cast<int>(x), static_cast<int>(y), x / 19.4, 80 - y / 111.12}});
    }
    add_vertex(record, -20, 75);
    add_vertex(record, 20, 85);
    record.solvepoly();
    const Georeference georeference = Georeference::from(record).value();
    int found = 0;
    for (double x = -2500; x <= 2500; x += 50) {
        for (double y = -1000; y <= 2000; y += 50) {
            if (!georeference.position_of({x, y})) continue;
            ++found;
            ASSERT_LT(miss_of(georeference, {x, y}), kTolPixels) << x << ", " << y;
        }
    }
    EXPECT_GT(found, 3000);
}

TEST(Georeferences, NeedPointsThatSpanAnArea) {
    EXPECT_FALSE(Georeference::from(CGEORec()));
    const std::vector<PointRow> flat[] = {
        {{0, 40, -4, 50}, {100, 40, -3, 50}, {200, 40, -2, 50}, {300, 40, -1, 50}},
        {{40, 0, -4, 53}, {40, 100, -4, 52}, {40, 200, -4, 51}, {40, 300, -4, 50}},
        {{40, 30, -4, 53}, {40, 30, -4, 53}, {40, 30, -4, 53}},
        {{0, 0, 1, 1}, {100, 100, 2, 2}, {200, 200, 3, 3}, {300, 300, 4, 4}},
        {{0, 0, 1, 1}, {100, 0, 2, 2}, {0, 200, 3, 3}, {300, 300, 4, 4}},
    };
    for (const char* const projection : {"", "LAMBERT"}) {
        for (const std::vector<PointRow>& points : flat) {
            SCOPED_TRACE(std::string(projection) + std::to_string(&points - flat));
            CGEORec record;
            record.Projection = projection;
            add_points(record, points);
            record.solvepoly();
            EXPECT_FALSE(Georeference::from(record));
        }
    }
    CGEORec unfitted;
    add_points(unfitted, {{0, 0, 1, 50}, {100, 0, 2, 50}, {100, 100, 2, 49}});
    EXPECT_FALSE(Georeference::from(unfitted));
}

TEST(PixelOf, IsNoneWhereNoPixelIs) {
    // Bent about column and row 30, without a second region: the first reference point is the best start.
    CGEORec record;
    add_points(record, {{100, -40, 0.0049, 0.0049}, {-40, 100, 0.0049, 0.0049}, {90, 100, 1.0, 1.0}});
    record.pwSplit = 500.0;
    record.pwxPoly[0][0] = record.pwyPoly[0][0] = 9e-4;
    record.pwxPoly[0][1] = record.pwyPoly[0][2] = -6e-5;
    record.pwxPoly[0][3] = record.pwyPoly[0][5] = 1e-6;
    const Georeference bent = Georeference::from(record).value();
    EXPECT_LT(distance(bent.pixel_of({0.0144, 0.0049}).value(), {100.0, -90.0}), kTolPixels);
    EXPECT_FALSE(bent.pixel_of({-1.0, 0.01}));
    EXPECT_FALSE(bent.pixel_of({0.01, HUGE_VAL}));
    EXPECT_FALSE(bent.position_of({HUGE_VAL, 0.0}));
}

TEST(Georeferences, ShiftDatumsAndOutliveTheRecord) {
    std::optional<Georeference> georeference;
    {
        CGEORec record;
        add_points(record, {{0, 0, 179, -17}, {100, 0, -179, -17}, {0, 100, 179, -19}});
        record.LatitudeOffset = 0.25;
        record.LongitudeOffset = -0.5;
        record.solvepoly();
        georeference = Georeference::from(record);
    }
    EXPECT_EQ(format_position(georeference->to_wgs84({-18.0, -179.75})), u8"17°45.00'S 179°45.00'E");
    EXPECT_EQ(format_position(georeference->to_chart_datum({-17.75, 179.75})), u8"18°00.00'S 179°45.00'W");
    EXPECT_EQ(format_position(georeference->position_of({62.5, 50}).value()), u8"17°45.00'S 179°45.00'E");
    EXPECT_NEAR(georeference->pixel_of({-17.75, 179.75})->x, 62.5, kTolPixels);
    EXPECT_TRUE(georeference->covers({-17.0, 179.0}));
    EXPECT_FALSE(georeference->covers({-17.0, -179.4})) << "only in the chart's own datum";
    EXPECT_NEAR(georeference->metres_per_pixel().value(), 2 * 1852 * 60 * 0.9563 / 100, 20);
}

TEST(PixelOutlines, FollowTheOutlineToAQuarterPixel) {
    for (const char* const projection : {"", "LAMBERT"}) {
        for (const Position& place : kPlaces) {
            CGEORec record;
            fit(record, projection, place, 5e5);
            for (const CRefPoint* vertex : record.Vertices)
                delete vertex;
            record.Vertices.RemoveAll();
            const Position corners[] = {{1, -1}, {1, 1}, {-1, 1}, {-1, -1}};
            for (const Position& corner : corners)
                add_vertex(record, place.longitude + 2 * corner.longitude, place.latitude + corner.latitude);
            const Georeference georeference = Georeference::from(record).value();
            const PixelOutline& outline = georeference.pixel_outline();
            EXPECT_LT(outline.corners().size(), 300u);
            for (int side = 0; side < 4; ++side) {
                const Position a = corners[side];
                const Position b = corners[(side + 1) % 4];
                for (double t = 0.01; t < 1; t += 0.014) {
                    const Position edge{a.latitude + t * (b.latitude - a.latitude),
                                        a.longitude + t * (b.longitude - a.longitude)};
                    const auto pixel_at = [&](double scale) {
                        return georeference
                            .pixel_of_chart_datum({place.latitude + scale * edge.latitude,
                                                   place.longitude + scale * 2 * edge.longitude})
                            .value();
                    };
                    const ChartPixel on = pixel_at(1.0);
                    const ChartPixel in = pixel_at(0.9);
                    const double part = 0.3 / distance(on, in);
                    const auto moved = [&](double by) {
                        return ChartPixel{on.x + by * (in.x - on.x), on.y + by * (in.y - on.y)};
                    };
                    ASSERT_TRUE(outline.contains(moved(2 * part))) << projection << side << " " << t;
                    ASSERT_FALSE(outline.contains(moved(-2 * part))) << projection << side << " " << t;
                }
            }
        }
    }
}

TEST(PixelOutlines, FollowAnEdgeThatBendsBothWays) {
    // On a Mercator chart the edge across the equator is straight only between its ends and its middle.
    CGEORec record;
    record.Projection = "MERCATOR";
    add_points(record, {{0, 0, -40, 40}, {2000, 0, 40, 40}, {2000, 2185, 40, -40}, {0, 2185, -40, -40}});
    for (const Position& corner : {Position{30, 30}, {-30, -30}, {30, -30}})
        add_vertex(record, corner.longitude, corner.latitude);
    record.solvepoly();
    const Georeference georeference = Georeference::from(record).value();
    for (const double degrees : {-20.0, -15.0, 0.0, 15.0, 20.0}) {
        const ChartPixel on = georeference.pixel_of({degrees, degrees}).value();
        EXPECT_TRUE(georeference.pixel_outline().contains({on.x - 0.4, on.y - 0.4})) << degrees;
        EXPECT_FALSE(georeference.pixel_outline().contains({on.x + 0.4, on.y + 0.4})) << degrees;
    }
}

TEST(PixelOutlines, ContainWhatAPolygonContains) {
    // A comb of many teeth, each as high as the polygon, and one of low steps.
    for (const bool is_comb : {true, false}) {
        std::vector<ChartPixel> corners;
        for (int i = 0; i < 500; ++i)
            corners.push_back({i * 2.0, is_comb ? (i % 2) * 400.0 : i * 1.0 + i % 2});
        corners.push_back({1000.0, 600.0});
        corners.push_back({-5.0, 600.0});
        const PixelOutline outline(corners);
        for (double y = -1; y < 602; y += 7.3) {
            for (double x = -6; x < 1002; x += 3.1) {
                bool inside = false;
                for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
                    const ChartPixel a = corners[i];
                    const ChartPixel b = corners[j];
                    if ((a.y > y) != (b.y > y) && x < a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y))
                        inside = !inside;
                }
                ASSERT_EQ(outline.contains({x, y}), inside) << x << ", " << y;
            }
        }
        EXPECT_TRUE(outline.contains({-5.0, 600.0})) << "a corner";
        EXPECT_FALSE(outline.contains({std::nan(""), 300.0}));
    }
    EXPECT_FALSE(PixelOutline().contains({0, 0}));
}

void add_square(CGEORec& record, int left, int top, int size, Position corner, Position degrees) {
    const int right = left + size;
    const int bottom = top + size;
    const double east = corner.longitude + degrees.longitude;
    const double south = corner.latitude - degrees.latitude;
    add_points(record, {{left, top, corner.longitude, corner.latitude}, {right, top, east, corner.latitude}});
    add_points(record, {{right, bottom, east, south}, {left, bottom, corner.longitude, south}});
    for (const CRefPoint* point : elements_of(record.Points))
        add_vertex(record, point->Longitude, point->Latitude);
    record.solvepoly();
}

TEST(Sheets, KnowTheInsetThatOwnsAPixel) {
    CGEORec base;
    add_square(base, 0, 0, 1000, {10, 0}, {10, 10});
    CGEORec large;
    add_square(large, 400, 400, 300, {10, 50}, {3, 3});
    // By Mercator, with pixels of 20 metres, so that its wpxy is far off.
    CGEORec plan;
    plan.Projection = "MERCATOR";
    add_square(plan, 500, 500, 100, {48, -5}, {0.018, 0.027});
    plan.InsetRect = {420, 420, 680, 680};
    ASSERT_GT(std::fabs(plan.wpy(-5, 48) - 500), 40.0) << "wpxy is right";
    CGEORec line;
    add_points(line, {{10, 10, 1, 1}, {20, 20, 2, 2}});
    for (CGEORec* const inset : {&plan, &line, &large})
        base.Insets.AddTail(inset);

    const Sheet sheet(base);
    ASSERT_EQ(sheet.insets().size(), 3u);
    EXPECT_FALSE(sheet.insets()[1]);
    EXPECT_FALSE(sheet.inset_at({15, 15})) << "on an inset of two points";
    EXPECT_FALSE(sheet.inset_at({399, 399}));
    EXPECT_EQ(sheet.inset_at({599.5, 599.5}), 0) << "the smaller of two, inside by half a pixel";
    EXPECT_EQ(sheet.inset_at({602.5, 550}), 2) << "outside it, in its margin of 80 pixels";
    EXPECT_NEAR(sheet.georeference_at({450, 450})->position_of({450, 450})->longitude, 50.5, 1e-9);
    EXPECT_NEAR(sheet.georeference_at({350, 450})->position_of({350, 450})->longitude, 3.5, 1e-9);
    EXPECT_TRUE(sheet.covers({9, 1}));
    EXPECT_FALSE(sheet.covers({5, 5})) << "hidden by an inset";
    EXPECT_FALSE(sheet.covers({9.5, 50.5})) << "on an inset only";
}

}  // namespace
