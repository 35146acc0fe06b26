#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include <zellap10/navigation/dead_reckoning.h>
#include <zellap10/plotter/route.h>

namespace {

using namespace zellap10::plotter;

struct LegRow {
    const char* name;
    Position from, to;
    double course, distance;
};

// Courses and distances by the formulas at 30 digits.
// clang-format off
const LegRow kLegs[] = {
    {"north-east",                     {0, 0},           {1, 1},            45.193091,    85.140226},
    {"over the 180th, and north",      {10, -170},       {11, 170},         272.892096,   1189.174443},
    {"over it in another turn",        {10, 530},        {10, -530},        90.0,         1189.576752},
    {"off a parallel by 0.008 degrees",{-45, 100},       {-45.002, 120},    90.008076,    851.384815},
    {"off it by a rounding, westward", {45, 1},          {45 - 1e-13, 0},   270.0,        42.569988},
    {"a hand's breadth north-east",    {0, 0},           {5e-7, 5e-7},      45.194566,    4.2571e-5},
};
// clang-format on

TEST(Routes, AreLegsWithCourseAndDistance) {
    for (const LegRow& row : kLegs) {
        SCOPED_TRACE(row.name);
        const Leg leg = leg_between(row.from, row.to);
        EXPECT_NEAR(leg.course.value(), row.course, 1e-6);
        EXPECT_NEAR(leg.distance, row.distance, 1e-6);
    }
    EXPECT_TRUE(std::isnan(leg_between({50, -1}, {std::nan(""), 0}).distance));

    const Route route = route_over({{0, 179}, {1, 179}, {1, 539}, {1, -179}, {0, -179}});
    ASSERT_EQ(route.legs.size(), 4u);
    EXPECT_FALSE(route.legs[1].course) << "a leg without length";
    EXPECT_NEAR(route.distance, 120.0 + route.legs[2].distance, 1e-9);
    EXPECT_TRUE(route_over({}).legs.empty());
}

TEST(Routes, TakeTimeAtASpeed) {
    EXPECT_DOUBLE_EQ(time_to_go(85.0, 12.0).value(), 25500.0);
    EXPECT_EQ(time_to_go(0.0, 6.0), 0.0);
    for (const double speed : {0.0, -3.0, HUGE_VAL, std::nan("")})
        EXPECT_FALSE(time_to_go(60.0, speed)) << speed;
    EXPECT_FALSE(time_to_go(std::nan(""), 6.0));
}

struct CrossTrackRow {
    const char* name;
    Position from, to, at;
    double miles;
};

// clang-format off
const CrossTrackRow kCrossTracks[] = {
    {"right of a meridian",          {50, -1},   {51, -1},    {50.5, -0.9},   3.826907},
    {"left of it, past its end",     {50, -1},   {51, -1},    {52, -1.1},     -3.703430},
    {"right of a parallel",          {50, -1},   {50, 1},     {49.9, 3},      6.0},
    {"left of it, sailed westward",  {50, 1},    {50, -1},    {49.9, 0},      -6.0},
    {"a parallel within rounding",   {50, -1},   {50 + 1e-13, 1}, {50.1, 0},  -6.0},
    {"across the 180th meridian",    {0, 179},   {0, -179},   {0.1, -180},    -6.0},
    {"on the leg",                   {0, 0},     {1, 1},      {0, 0},         0.0},
};
// clang-format on

TEST(CrossTrack, IsThePerpendicularToTheRhumbLine) {
    for (const CrossTrackRow& row : kCrossTracks)
        EXPECT_NEAR(cross_track_distance(row.from, row.to, row.at).value(), row.miles, 1e-6) << row.name;
    // Off a leg by 10 miles at a right angle, wherever it is.
    for (const LegRow& row : kLegs) {
        SCOPED_TRACE(row.name);
        const std::vector<Position> abeam = rhumb_line(row.from, row.to, 2);
        const double right = std::fmod(row.course + 90.0, 360.0);
        Position at = abeam[1];
        m_advance_d(&at.latitude, &at.longitude, 10.0, right);
        EXPECT_NEAR(cross_track_distance(row.from, row.to, at).value(), 10.0, 1e-3);
        EXPECT_NEAR(cross_track_distance(row.to, row.from, at).value(), -10.0, 1e-3);
    }
    EXPECT_FALSE(cross_track_distance({50, 1}, {50, 361}, {50, 2})) << "a leg without length";
    EXPECT_FALSE(cross_track_distance({50, 1}, {51, 1}, {50, HUGE_VAL}));
}

TEST(RhumbLine, GoesAllAlongTheLegInEqualPieces) {
    constexpr int kPieces = 40;
    for (const LegRow& row : kLegs) {
        SCOPED_TRACE(row.name);
        const double distance = leg_between(row.from, row.to).distance;
        const std::vector<Position> line = rhumb_line(row.from, row.to, kPieces);
        ASSERT_EQ(line.size(), kPieces + 1u);
        double longitude = row.from.longitude;
        for (int i = 0; i <= kPieces; ++i) {
            const Position& here = line[static_cast<std::size_t>(i)];
            EXPECT_LT(std::fabs(here.longitude - longitude), 1.0) << "it runs on";
            longitude = here.longitude;
            const double part = static_cast<double>(i) / kPieces;
            const double latitude = row.from.latitude + (row.to.latitude - row.from.latitude) * part;
            EXPECT_NEAR(here.latitude, latitude, 1e-9) << "it grows with the distance";
            // On that latitude only the right longitude is at the right distance. A leg that is sailed as a
            // parallel shifts its points along it.
            EXPECT_NEAR(leg_between(row.from, here).distance, distance * part, distance * 1e-5);
        }
        EXPECT_NEAR(std::remainder(longitude - row.to.longitude, 360.0), 0.0, 1e-12) << "and ends";
    }
    EXPECT_EQ(rhumb_line({1, 2}, {3, 4}, 0).size(), 2u);
    EXPECT_EQ(rhumb_line({80, 2}, {80, 2}, 2)[1].longitude, 2.0) << "no way to go";
    const std::vector<Position> to_the_pole = rhumb_line({-80, 2}, {-90, 4}, 9);
    ASSERT_EQ(to_the_pole.size(), 2u);
    EXPECT_EQ(to_the_pole.back().latitude, -90.0);
}

}  // namespace
