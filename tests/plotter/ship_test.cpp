#include <chrono>
#include <vector>

#include <gtest/gtest.h>

#include <zellap10/plotter/progress.h>
#include <zellap10/plotter/track.h>

namespace {

using namespace zellap10::plotter;
using namespace std::chrono_literals;

Fix fix_at(double seconds, double latitude) {
    return {seconds, {latitude, 0.0}, {}, {}, {}};
}

TEST(Track, IsLostAfterTenSecondsAndStartsALine) {
    Track track;
    const Track::Clock::time_point start;
    EXPECT_TRUE(track.is_lost(start));
    track.add(fix_at(1, 1), start);
    EXPECT_FALSE(track.is_lost(start + 10s));
    EXPECT_TRUE(track.is_lost(start + 10001ms));
    track.add(fix_at(2, 2), start + 10s);
    track.add(fix_at(2, 3), start + 10s);  // GGA and RMC of one time
    track.add(fix_at(30, 4), start + 30s);
    ASSERT_EQ(track.points().size(), 3u);
    EXPECT_TRUE(track.points()[0].starts_line && track.points()[2].starts_line);
    EXPECT_FALSE(track.points()[1].starts_line);
    EXPECT_EQ(track.points()[1].position.latitude, 3.0);
}

TEST(Track, StaysBounded) {
    Track track;
    Track::Clock::time_point now;
    const int count = 200000;
    for (int i = 0; i < count; ++i) {
        now += i == 3 ? 11s : 1s;
        track.add(fix_at(i, i * 1e-5), now);
    }
    const std::vector<Track::Point>& points = track.points();
    EXPECT_LE(points.size(), Track::kMostPoints);
    EXPECT_GE(points.size(), Track::kMostPoints / 2);
    EXPECT_EQ(points.front().position.latitude, 0.0);
    EXPECT_EQ(points.back().position.latitude, (count - 1) * 1e-5);
    std::size_t lines = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        lines += points[i].starts_line ? 1 : 0;
        EXPECT_TRUE(i == 0 || points[i].position.latitude > points[i - 1].position.latitude);
    }
    EXPECT_EQ(lines, 2u);
}

TEST(Predict, SailsARhumbLine) {
    const Fix north{{}, {50.0, 179.9}, 12.0, 360.0, {}};
    EXPECT_NEAR(predict(north, 30.0)->latitude, 50.1, 1e-9);
    const Fix east{{}, {0.0, 179.9}, 12.0, 90.0, {}};
    EXPECT_NEAR(predict(east, 60.0)->longitude, -179.9, 0.002);  // the ellipsoid
    EXPECT_NEAR(predict({{}, {50.0, 0.0}, 12.0, -90.0, {}}, 60.0)->longitude, -0.311, 0.001);
    EXPECT_FALSE(predict({{}, {50.0, 0.0}, 12.0, {}, {}}, 6.0));
    EXPECT_FALSE(predict({{}, {89.9, 0.0}, 12.0, 0.0, {}}, 60.0));
}

TEST(Progress, PassesAWaypointNearItOrAbeam) {
    const std::vector<Waypoint> route{{{50, -2}, ""}, {{50, -1}, ""}, {{51, -1}, ""}};
    EXPECT_EQ(advance_waypoint({50, -1.01}, route, 1), 1u);
    EXPECT_EQ(advance_waypoint({50, -1.001}, route, 1), 2u);
    EXPECT_EQ(advance_waypoint({50.01, -0.995}, route, 1), 2u) << "abeam";
    EXPECT_EQ(advance_waypoint({50.1, -0.995}, route, 1), 1u) << "abeam, far off";
    EXPECT_EQ(advance_waypoint({51, -1}, route, 2), 2u) << "the last one";
    EXPECT_FALSE(progress_to({{}, {50, -1.2}, 6.0, 270.0, {}}, route, 1).time) << "sailing away";
}

}  // namespace
