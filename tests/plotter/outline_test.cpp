#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <vector>

#include <zellap10/plotter/outline.h>

#include "../support/point_lists.h"

namespace {

using zellap10::plotter::covers;
using zellap10::plotter::Extent;
using zellap10::plotter::outline_of;
using zellap10::plotter::Pixel;
using zellap10::plotter::Position;
using zellap10::plotter::record_at;
using zellap10::plotter::wgs84_outline_of;

struct OutlineRow {
    const char* name;
    std::vector<Position> vertices;
    std::vector<PointRow> points;
    std::vector<Position> inside, outside;
    double south, north, west, width;
};

// clang-format off
const OutlineRow kOutlineRows[] = {
    {"a square", {{50, -6}, {50, 2}, {48, 2}, {48, -6}}, {{0, 0, -5, 49}},
     {{49, 0}, {49, 360}, {50, -6}, {48, 1}, {49, 2}}, {{51, 0}, {47, 0}, {49, 3}, {49, -7}, {0, 49}},
     48, 50, -6, 8},
    {"a corner cut out", {{50, 0}, {50, 5}, {45, 5}, {45, 10}, {40, 10}, {40, 0}}, {},
     {{49, 4}, {41, 9}, {45, 7}}, {{47, 7}, {50, 6}, {45.001, 5.001}}, 40, 50, 0, 10},
    {"the hull of points", {{1, 1}, {2, 2}}, {{0, 0, 10, -20}, {9, 9, 12, -20}, {5, 5, 11, -20}, {7, 7, 11, -22}},
     {{-21, 11}, {-20, 10.5}, {-22, 11}}, {{-21.9, 10.1}, {-19, 11}, {1, 1}}, -22, -20, 10, 2},
    {"the hull of points in two columns", {}, {{0, 5, 10, 2}, {0, 9, 10, 0}, {9, 0, 14, 4}, {0, 0, 10, 4}, {9, 9, 14, 0}},
     {{0, 10}, {4, 14}, {3, 11}, {0, 14}, {4, 10}}, {{5, 12}, {2, 9}}, 0, 4, 10, 4},
    {"over the 180th meridian", {{-15, 176}, {-15, -178}, {-20, -178}, {-20, 176}},
     {{0, 0, 177, -16}, {900, 0, -179, -16}},
     {{-17, 177}, {-17, -179}, {-17, 180}, {-17, -180}, {-17, 181}}, {{-17, 0}, {-17, 175}, {-17, -177}},
     -20, -15, 176, 6},
    {"over it, without points", {{-15, 176}, {-15, -178}, {-20, -178}, {-20, 176}}, {},
     {{-17, 177}, {-17, -179}}, {{-17, 0}}, -20, -15, 176, 6},
    {"the hull of points over it", {}, {{0, 0, 176, -15}, {900, 0, -178, -15}, {900, 900, -178, -20}, {0, 900, 176, -20}},
     {{-17, 177}, {-17, -179}}, {{-17, 0}}, -20, -15, 176, 6},
    {"beside it, by vertices of another sign", {{5, 170}, {5, -180}, {-5, -180}, {-5, 170}},
     {{0, 0, 171, 1}, {900, 0, 179, 1}}, {{0, 175}, {0, 180}, {0, -180}}, {{0, 0}, {0, -179}}, -5, 5, 170, 10},
    {"the world", {{60, -180}, {60, 180}, {-60, 180}, {-60, -180}}, {{0, 0, -180, 60}, {900, 900, 180, -60}},
     {{0, 0}, {0, 179}, {0, -179}}, {{61, 0}}, -60, 60, -180, 360},
    {"a vertex that is no number", {{50, 0}, {50, 5}, {std::nan(""), 3}, {45, HUGE_VAL}, {40, 5}}, {},
     {{49, 4}}, {{41, 0}}, 40, 50, 0, 5},
};
// clang-format on

TEST(Outlines, CoverWhatIsInsideAndOnThem) {
    for (const OutlineRow& row : kOutlineRows) {
        SCOPED_TRACE(row.name);
        CGEORec record;
        for (const Position& vertex : row.vertices)
            add_vertex(record, vertex.longitude, vertex.latitude);
        add_points(record, row.points);
        for (const Position& place : row.inside)
            EXPECT_TRUE(covers(record, place)) << place.latitude << ", " << place.longitude;
        for (const Position& place : row.outside)
            EXPECT_FALSE(covers(record, place)) << place.latitude << ", " << place.longitude;
        const auto extent = outline_of(record).extent().value();
        EXPECT_EQ(extent.south, row.south);
        EXPECT_EQ(extent.north, row.north);
        EXPECT_EQ(extent.west, row.west);
        EXPECT_EQ(extent.width, row.width);
        for (const Position& place : row.inside)
            EXPECT_TRUE(extent.contains(place)) << place.latitude << ", " << place.longitude;
    }
}

TEST(Outlines, AreNoneWithoutThreePlacesOffALine) {
    CGEORec record;
    EXPECT_FALSE(outline_of(record).extent());
    add_points(record, {{0, 0, 1, 1}, {5, 5, 2, 2}, {9, 9, 3, 3}, {9, 9, 3, 3}});
    EXPECT_FALSE(outline_of(record).extent());
    EXPECT_FALSE(covers(record, {2, 2}));
    EXPECT_FALSE(outline_of(record).overlaps({0, 9, 0, 9}));
}

TEST(Outlines, MoveToWgs84) {
    CGEORec record;
    add_points(record, {{0, 0, 10, 50}, {9, 0, 11, 50}, {0, 9, 10, 49}});
    record.LatitudeOffset = 0.25;
    record.LongitudeOffset = -0.5;
    const auto extent = wgs84_outline_of(record).extent().value();
    EXPECT_EQ(extent.south, 49.25);
    EXPECT_EQ(extent.west, 9.5);
}

struct OverlapRow {
    const char* name;
    Extent extent;
    bool extents, outlines;  // whether that of the triangle below overlaps, and whether it does itself
};

// clang-format off
const OverlapRow kOverlapRows[] = {
    // name                            south north west  width   extents outlines
    {"all of it",                     {-30,  30,  -180, 360},    true,   true},
    {"inside",                        {1,    2,   177,  1},      true,   true},
    {"beside it, under the slope",    {8,    9,   -176, 1},      true,   false},
    {"across the slope",              {4,    6,   -180, 4},      true,   true},
    {"through it, no corner inside",  {4,    4.5, 170,  20},     true,   true},
    {"a corner that touches",         {10,   12,  170,  5},      true,   true},
    {"a side that touches",           {0,    10,  170,  5},      true,   true},
    {"north",                         {11,   12,  175,  10},     false,  false},
    {"west",                          {0,    10,  170,  4},      false,  false},
    {"east",                          {0,    10,  -174, 9},      false,  false},
    {"around the other way",          {0,    10,  -170, 340},    false,  false},
    {"around to it",                  {0,    10,  -170, 346},    true,   true},
};
// clang-format on

TEST(Outlines, OverlapExtents) {
    CGEORec triangle;  // its corners: south-west, south-east, north-west
    add_points(triangle, {{0, 900, 175, 0}, {900, 900, -175, 0}, {0, 0, 175, 10}});
    const auto outline = outline_of(triangle);
    for (const OverlapRow& row : kOverlapRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(outline.extent()->overlaps(row.extent), row.extents);
        EXPECT_EQ(row.extent.overlaps(*outline.extent()), row.extents);
        EXPECT_EQ(outline.overlaps(row.extent), row.outlines);
    }
}

// A Mercator inset of 100 by 100 pixels of 20 metres at 48 north, whose wpxy is far off.
void fit_inset(CGEORec& inset, int left, int top, bool with_vertices) {
    constexpr double kLat = 1.8e-4;
    constexpr double kLon = 2.7e-4;
    inset.Projection = "MERCATOR";
    inset.PP = "0";
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(100, 0), std::pair(100, 100), std::pair(0, 100)}) {
        const PointRow row{left + x, top + y, -5 + kLon * x, 48 - kLat * y};
        add_points(inset, {row});
        if (with_vertices) add_vertex(inset, row.longitude, row.latitude);
    }
    inset.solvepoly();
    inset.InsetRect = {left - 80, top - 80, left + 180, top + 180};
}

TEST(RecordAt, IsTheInsetByItsOutline) {
    CGEORec base;
    CGEORec large;
    CGEORec plan;
    CGEORec bare;
    fit_inset(plan, 500, 500, true);
    fit_inset(bare, 900, 300, false);
    for (const auto& [x, y] :
         {std::pair(400, 400), std::pair(700, 400), std::pair(700, 700), std::pair(400, 700)})
        add_points(large, {{x, y, 0.01 * x, -0.01 * y}});
    CGEORec line;
    add_points(line, {{10, 10, 1, 1}, {20, 20, 2, 2}});
    for (CGEORec* const inset : {&large, &plan, &bare, &line})
        base.Insets.AddTail(inset);
    ASSERT_GT(std::fabs(plan.wpy(-5, 48) - 500), 40.0) << "its own way there will not do";

    struct Row {
        const char* name;
        Pixel pixel;
        const CGEORec* record;
    };
    const Row rows[] = {
        {"the chart, on an inset of two points", {10, 10}, &base},
        {"the smaller of two", {550, 550}, &plan},
        {"inside by half a pixel", {599.5, 599.5}, &plan},
        {"outside it by half a pixel", {600.5, 550}, &large},
        {"an inset without vertices", {950, 350}, &bare},
        {"in its margin of 80 pixels", {850, 350}, &base},
    };
    for (const Row& row : rows)
        EXPECT_EQ(&record_at(base, row.pixel), row.record) << row.name;
}

}  // namespace
