#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <viewer/route_edit.h>
#include <viewer/track.h>

namespace {

using namespace viewer;
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
    EXPECT_FALSE(predict({{}, {50.0, 0.0}, 12.0, {}, {}}, 6.0));
    EXPECT_FALSE(predict({{}, {89.9, 0.0}, 12.0, 0.0, {}}, 60.0));
}

std::string names_of(const RouteEdit& route) {
    std::string names;
    for (const Waypoint& waypoint : route.waypoints())
        names += waypoint.name + std::to_string(std::lround(waypoint.position.latitude));
    return names;
}

TEST(RouteEdit, TakesEachChangeBack) {
    RouteEdit route;
    std::vector<std::string> states;
    const auto did = [&](const char* expected) {
        EXPECT_EQ(names_of(route), expected);
        states.push_back(names_of(route));
    };
    did("");
    route.add({{1, 0}, "a"}), did("a1");
    route.add({{2, 0}, "b"}), did("a1b2");
    route.insert(0, {{3, 0}, "c"}), did("a1c3b2");
    route.begin_drag(1), route.drag_to({4, 0}), route.drag_to({5, 0}), route.end_drag(), did("a1c5b2");
    route.insert(1, {{6, 0}, "d"}), route.drag_to({7, 0}), route.end_drag(), did("a1c5d7b2");
    route.remove(2), did("a1c5b2");
    route.remove(0), did("c5b2");
    route.clear(), did("");
    route.replace({{{6, 0}, "d"}}), did("d6");
    // None of these is a change.
    route.insert(0, {}), route.remove(1), route.begin_drag(1), route.drag_to({});
    for (states.pop_back(); !states.empty(); states.pop_back()) {
        EXPECT_TRUE(route.undo());
        EXPECT_EQ(names_of(route), states.back());
    }
    EXPECT_FALSE(route.undo());

    // Another change ends a drag.
    route.add({{1, 0}, "a"});
    route.begin_drag(0);
    route.drag_to({2, 0});
    route.clear();
    route.drag_to({3, 0});
    EXPECT_TRUE(route.waypoints().empty());
    EXPECT_TRUE(route.undo());
    EXPECT_EQ(names_of(route), "a2");
}

}  // namespace
