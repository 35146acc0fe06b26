#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <viewer/grid.h>
#include <viewer/painter.h>
#include <viewer/route_edit.h>
#include <viewer/route_lines.h>
#include <viewer/scale_bar.h>
#include <viewer/ship.h>
#include <viewer/status.h>
#include <zellap10/navigation/dead_reckoning.h>
#include <zellap10/plotter/route.h>

namespace {

using namespace viewer;
using namespace std::chrono_literals;

TEST(Painter, TakesTextsOfAnyBytes) {
    Argb pixels[100 * 30] = {};
    Painter painter({pixels, 100, 30, 400});
    const auto width = [&](const std::string& text) {
        const Box box = painter.text({0, 0}, {text}, {});
        return box.lower_right.x - box.upper_left.x;
    };
    for (const char* text :
         {"\xCEle", "\xE2\x82", "\xFF\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"})
        painter.text({0, 0}, {text, std::string(1000000, 'm')}, {});
    painter.line({{0, 25}, {99, 25}}, {0xFF00FF00, 3});
    EXPECT_EQ(pixels[2550] & 0xFFFFFF, 0xFF00u);
    EXPECT_EQ(width("\xCEle"), width("\xC3\x8Ele"));  // the letter in Latin 1 and in UTF-8
    EXPECT_LT(width(std::string(1000000, 'm')), 3000);
}

TEST(Painter, DrawsLabelsWithoutOverlap) {
    std::vector<Argb> pixels(200 * 100);
    Painter painter({pixels.data(), 200, 100, 800});
    const auto label = [&](ScreenPixel at, Argb paper, Rank rank) {
        painter.label(at, "label", {{0xFF000000, paper, 1}, {0, 0}}, rank);
    };
    label({10, 10}, 0xFF0000, Rank::kGrid);
    label({20, 15}, 0x00FF00, Rank::kWaypoint);
    label({195, 50}, 0x0000FF, Rank::kGrid);  // moved into the bitmap
    painter.keep_free({{0, 80}, {200, 100}});
    label({10, 70}, 0xFFFFFF, Rank::kWaypoint);
    painter.draw_labels();
    const auto count = [&](Argb colour) {
        return std::count_if(pixels.begin(), pixels.end(),
                             [&](Argb pixel) { return (pixel & 0xFFFFFF) == colour; });
    };
    EXPECT_EQ(count(0xFF0000), 0);
    EXPECT_GT(count(0x00FF00), 300);
    EXPECT_EQ(count(0xFFFFFF), 0);
    EXPECT_NEAR(static_cast<double>(count(0x0000FF)), static_cast<double>(count(0x00FF00)), 30);
}

TEST(Texts, AreCutBetweenCharacters) {
    const std::string long_text = std::string(75, 'x') + "\xE2\x82\xAC\xE2\x82\xAC" + std::string(60, 'y');
    EXPECT_EQ(wrapped(long_text), (std::vector<std::string>{std::string(75, 'x'), "\xE2\x82\xAC\xE2\x82\xAC" +
                                                                                      std::string(60, 'y')}));
    EXPECT_EQ(wrapped(std::string(70, 'x') + " and more"),
              (std::vector<std::string>{std::string(70, 'x') + " and", "more"}));
    const std::string path =
        short_path("/charts/" + std::string(100, '/') + "\xC3\xA9" + std::string(47, 'z'));
    EXPECT_EQ(path, "..." + std::string(47, 'z'));
    std::string all = long_text;
    for (std::size_t i = 0; i < 80; ++i) {  // bytes that are no UTF-8 do not end it either
        all.insert(all.begin(), '\x80');
        EXPECT_LE(wrapped(all).size(), 5u);
    }
    const std::vector<std::string> lines = wrapped(std::string(4000, '/') + ": no such file");
    EXPECT_LE(lines.size(), 8u);
    EXPECT_NE(lines.back().find(": no such file"), std::string::npos);
}

TEST(ShipLines, NameTheWayToTheWaypointAndALostFix) {
    const std::vector<Waypoint> route{{{50, -2}, ""}, {{50, -1}, ""}, {{51, -1}, ""}};
    Track track;
    const Track::Clock::time_point start;
    track.add({{}, {50.01, -1.5}, 6.04, 90.0, 85.0}, start);
    using Lines = std::vector<std::string>;
    EXPECT_EQ(
        ship_lines(track, route, 1, start + 1s),
        (Lines{"50\u00b000.60'N 001\u00b030.00'W", "SOG 6.0 kn  COG 090.0\u00b0  HDG 085.0\u00b0",
               "to waypoint 2", "BRG 091.8\u00b0  DIST 19.3 NM", "XTD 0.60 NM to the left  TTG 3 h 12 min"}));
    const Lines lost = ship_lines(track, {}, 1, start + 25s);
    EXPECT_EQ(lost.front(), "FIX LOST for 25 s");
    EXPECT_EQ(ship_lines(Track(), route, 1, start), Lines{"NO FIX YET"});
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

TEST(RouteLines, FollowLongLegsToThePixel) {
    const Position middle{50, 0};
    const Position from{30, -40};
    const auto leg = zellap10::plotter::leg_between(from, middle);
    Position to = middle;
    m_advance_d(&to.latitude, &to.longitude, 1500, *leg.course);
    const MapView view(middle, 8, {1500, 900}, 30);
    std::vector<Argb> pixels(1500 * 900);
    Painter painter({pixels.data(), 1500, 900, 1500 * 4});
    const Theme& theme = theme_for(ColourScheme::kDay);
    draw_route(painter, map_scene(view, theme), {{from, ""}, {to, ""}}, {});
    for (const double miles : {-1.0, -0.6, 0.6, 1.0}) {
        Position on_leg = middle;
        m_advance_d(&on_leg.latitude, &on_leg.longitude, miles, *leg.course);
        const ScreenPixel pixel = *view.to_screen(on_leg);
        const auto place = std::lround(pixel.y) * 1500 + std::lround(pixel.x);
        EXPECT_EQ(pixels[static_cast<std::size_t>(place)] | 0xFF000000, theme.route.colour) << miles;
    }
}

TEST(RouteLines, CostWhatIsVisible) {
    const MapView view({50, 0}, 8, {300, 300});
    const Theme& theme = theme_for(ColourScheme::kDay);
    std::vector<Argb> pixels(300 * 300);
    Painter painter({pixels.data(), 300, 300, 1200});
    Scene scene = map_scene(view, theme);
    int calls = 0;
    scene.to_screen = [&](Position position) {
        ++calls;
        return view.to_screen(position);
    };
    std::vector<Waypoint> route;
    for (int i = 0; i < 1000; ++i)
        route.push_back({{51 + i % 2 * 0.01, i * 0.001}, ""});
    draw_route(painter, scene, route, {});
    EXPECT_LE(calls, 3000);
    // Waypoints three pixels apart share a circle, and so do reference points.
    draw_route(painter, scene, {{*view.to_position({100, 100}), ""}, {*view.to_position({103, 100}), ""}},
               {});
    EXPECT_NE(pixels[100 * 300 + 106], 0u);
    EXPECT_EQ(pixels[100 * 300 + 109], 0u);
}

TEST(Steps, AreRoundNumbers) {
    const std::pair<double, double> grid[] = {{0.001, 0.01}, {1, 1}, {1.01, 2}, {31, 60}, {9e9, 1800}};
    for (const auto& [least, step] : grid)
        EXPECT_EQ(grid_step(least), step) << least;
    const std::pair<double, double> bar[] = {
        {0.1, 0.1}, {0.19, 0.1}, {4.9, 2}, {5, 5}, {999, 500}, {0.0999, 100 / 1852.0}, {0.005, 5 / 1852.0}};
    for (const auto& [most, length] : bar)
        EXPECT_NEAR(bar_length(most), length, 1e-12) << most;
    EXPECT_EQ(size_text(3.24), "1/3.2 of its size");
    EXPECT_EQ(size_text(0.4), "enlarged 2.5 times");
    EXPECT_EQ(size_text(1), "full size");
}

}  // namespace
