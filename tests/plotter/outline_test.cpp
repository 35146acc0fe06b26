#include <cmath>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <testing/point_lists.h>
#include <zellap10/plotter/outline.h>

namespace {

using namespace zellap10::plotter;

struct OutlineRow {
    const char* name;
    std::vector<Position> vertices;
    std::vector<PointRow> points;
    std::vector<Position> inside, outside;
    std::tuple<double, double, double, double> extent;  // south, north, west, width
};

// clang-format off
const OutlineRow kOutlineRows[] = {
    {"a corner cut out", {{50, 0}, {50, 5}, {45, 5}, {45, 10}, {40, 10}, {40, 0}}, {},
     {{49, 4}, {49, 364}, {45, 7}, {50, 5}}, {{47, 7}, {50, 6}, {39, 1}, {45.001, 5.001}}, {40, 50, 0, 10}},
    {"the hull of points in two columns", {{1, 1}, {2, 2}}, {{0, 5, 10, 2}, {0, 9, 10, 0}, {9, 0, 14, 4}, {0, 0, 10, 4}, {9, 9, 14, 0}},
     {{0, 10}, {4, 14}, {3, 11}, {0, 14}, {4, 10}}, {{5, 12}, {2, 9}}, {0, 4, 10, 4}},
    {"over the 180th meridian", {{-15, 176}, {-15, -178}, {-20, -178}, {-20, 176}},
     {{0, 0, 177, -16}, {900, 0, -179, -16}},
     {{-17, 177}, {-17, -179}, {-17, 180}, {-17, -180}, {-17, 181}}, {{-17, 0}, {-17, 175}, {-17, -177}},
     {-20, -15, 176, 6}},
    {"over it, without points", {{-15, 176}, {-15, -178}, {-20, -178}, {-20, 176}}, {},
     {{-17, 177}, {-17, -179}}, {{-17, 0}}, {-20, -15, 176, 6}},
    {"beside it, by vertices of another sign", {{5, 170}, {5, -180}, {-5, -180}, {-5, 170}},
     {{0, 0, 171, 1}, {900, 0, 179, 1}}, {{0, 175}, {0, 180}, {0, -180}}, {{0, 0}, {0, -179}}, {-5, 5, 170, 10}},
    {"the world", {{60, -180}, {60, 180}, {-60, 180}, {-60, -180}}, {{0, 0, -180, 60}, {900, 900, 180, -60}},
     {{0, 0}, {0, 179}, {0, -179}}, {{61, 0}}, {-60, 60, -180, 360}},
    {"run on, without points", {{10, -175}, {20, 0}, {10, 175}, {-10, 175}, {-10, 0}, {-10, -175}}, {},
     {{0, 0}, {0, 170}, {0, -170}}, {{0, 179}, {0, 181}, {21, 0}}, {-10, 20, -175, 350}},
    {"three corners of it", {{10, -175}, {20, 0}, {-10, 175}}, {},
     {{10, 0}, {-7, 150}}, {{0, -100}, {0, 180}}, {-10, 20, -175, 350}},
    {"the world, without points", {{60, -180}, {60, 180}, {-60, 180}, {-60, -180}}, {},
     {{0, 0}, {0, 179}, {0, -179}}, {{61, 0}}, {-60, 60, -180, 360}},
    {"latitudes off the earth", {{50, 0}, {50, 5}, {1e308, 3}, {40, 5}, {-1e308, 2}}, {},
     {{49, 4}}, {{41, 0}, {HUGE_VAL, 3}, {45, HUGE_VAL}, {std::nan(""), 3}}, {40, 50, 0, 5}},
    {"a vertex that is not a number", {{50, 0}, {50, 5}, {std::nan(""), 3}, {45, HUGE_VAL}, {40, 5}}, {},
     {{49, 4}}, {{41, 0}}, {40, 50, 0, 5}},
};
// clang-format on

TEST(Outlines, CoverWhatIsInsideAndOnThem) {
    for (const OutlineRow& row : kOutlineRows) {
        SCOPED_TRACE(row.name);
        CGEORec record;
        for (const Position& vertex : row.vertices)
            add_vertex(record, vertex.longitude, vertex.latitude);
        add_points(record, row.points);
        const auto extent = outline_of(record).extent().value();
        for (const Position& place : row.inside)
            EXPECT_TRUE(outline_of(record).covers(place) && extent.contains(place))
                << place.latitude << ", " << place.longitude;
        for (const Position& place : row.outside)
            EXPECT_FALSE(outline_of(record).covers(place)) << place.latitude << ", " << place.longitude;
        EXPECT_EQ(std::tie(extent.south, extent.north, extent.west, extent.width), row.extent);
        EXPECT_FALSE(extent.contains({extent.south - 1.0, extent.west}));
        EXPECT_FALSE(extent.contains({extent.north + 1.0, extent.west}));
    }
}

TEST(Outlines, AreNoneWithoutThreePlacesOffALine) {
    CGEORec record;
    EXPECT_FALSE(outline_of(record).extent());
    add_points(record, {{0, 0, 1, 1}, {5, 5, 2, 2}, {9, 9, 3, 3}, {9, 9, 3, 3}});
    EXPECT_FALSE(outline_of(record).covers({2, 2}));
    EXPECT_FALSE(outline_of(record).overlaps({0, 9, 0, 9}));
}

TEST(Outlines, AroundAPoleCoverNothing) {
    for (const double sign : {1.0, -1.0}) {
        for (const bool has_points : {false, true}) {
            CGEORec record;
            for (const Position vertex : {Position{80, 0}, {75, 90}, {80, 180}, {75, -90}})
                add_vertex(record, vertex.longitude, sign * vertex.latitude);
            if (has_points)
                add_points(record, {{0, 0, 0, sign * 80}, {9, 0, 90, sign * 75}, {5, 9, -90, sign * 75}});
            const Outline outline = outline_of(record);
            EXPECT_EQ(outline.corners.size(), 4u);
            EXPECT_FALSE(outline.covers({sign * 78, 10}));
            EXPECT_FALSE(outline.overlaps({-90, 90, -180, 360}));
            EXPECT_FALSE(outline.extent());
        }
    }
}

struct OverlapRow {
    const char* name;
    Extent extent;
    bool extents, outlines;  // whether that of the triangle below overlaps, and whether it does itself
};

// clang-format off
const OverlapRow kOverlapRows[] = {
    // name                            south north west  width   extents outlines
    {"beside it, above a slope",      {8,    9,   175,  1},      true,   false},
    {"beside it, under the other",    {0,    1,   175,  1},      true,   false},
    {"across both slopes",             {4,    6,   176,  4},      true,   true},
    {"through it, no corner inside",  {4,    4.5, 170,  20},     true,   true},
    {"a corner that touches",         {10,   12,  -175, 5},      true,   true},
    {"north",                         {11,   12,  175,  10},     false,  false},
    {"east",                          {0,    10,  -174, 9},      false,  false},
    {"around to it",                  {0,    10,  -170, 346},    true,   true},
};
// clang-format on

TEST(Outlines, OverlapExtentsInWgs84) {
    CGEORec triangle;  // in WGS 84 from the equator to 10 north, from 175 east to 175 west
    add_points(triangle, {{0, 450, 175.5, 4}, {900, 900, -174.5, -1}, {900, 0, -174.5, 9}});
    triangle.LatitudeOffset = 1;
    triangle.LongitudeOffset = -0.5;
    const auto outline = outline_of(triangle);
    for (const OverlapRow& row : kOverlapRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(outline.extent()->overlaps(row.extent), row.extents);
        EXPECT_EQ(row.extent.overlaps(*outline.extent()), row.extents);
        EXPECT_EQ(outline.overlaps(row.extent), row.outlines);
    }
}

}  // namespace
