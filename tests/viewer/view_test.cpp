#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "screen.h"

namespace {

using namespace viewer;
using zellap10::plotter::MapView;

void expect_near(std::optional<Position> position, Position expected, double tolerance = 1e-9) {
    ASSERT_TRUE(position);
    EXPECT_NEAR(position->latitude, expected.latitude, tolerance);
    EXPECT_NEAR(position->longitude, expected.longitude, tolerance);
}

TEST(View, MovesZoomsAndTurnsTheMap) {
    Screen screen;
    const std::vector<std::string> paths{
        TestChart{}.write(screen.folder, "a"),
        TestChart{1600, 1200, 49.8, -1.7, 0.00025}.write(screen.folder, "b")};
    screen.look_at(paths);
    screen.expect_map(paths);
    const MapView start = screen->map();

    const Position place = *start.to_position({150, 130});
    screen->move({150, 130});
    screen->zoom(2.5);
    EXPECT_LT(screen->map().metres_per_pixel(), start.metres_per_pixel() / 1.7);
    expect_near(screen->map().to_position({150, 130}), place);
    screen.drag({150, 130}, {250, 100});
    expect_near(screen->map().to_position({250, 100}), place);
    screen.expect_map(paths);

    // A quarter of a turn, clockwise, about the middle.
    const Position middle = *screen->map().to_position(kMiddle);
    const Position above = *screen->map().to_position({kMiddle.x, kMiddle.y - 100});
    screen.drag({kMiddle.x, kMiddle.y - 100}, {kMiddle.x + 100, kMiddle.y}, true);
    EXPECT_NEAR(screen->map().course_up(), 270, 1e-9);
    expect_near(screen->map().to_position(kMiddle), middle);
    expect_near(screen->map().to_position({kMiddle.x + 100, kMiddle.y}), above);
    screen->press_key(",");
    for (const ColourScheme scheme : {ColourScheme::kDusk, ColourScheme::kNight, ColourScheme::kDay}) {
        screen.press_keys({"D"});
        screen.expect_map(paths, scheme);
    }
    screen->leave();
    screen.press_keys({"U", "Home"});
    EXPECT_EQ(screen.pixels, screen.before);
}

TEST(View, ShowsTheFirstChartWithItsNeighboursAndThenAll) {
    Screen screen;
    const std::vector<std::string> paths{TestChart{}.write(screen.folder, "a"),
                                         TestChart{1500, 900, 50, 170}.write(screen.folder, "far"),
                                         TestChart{1500, 900, 49.5, -1}.write(screen.folder, "near")};
    screen.look_at(paths);
    const auto on_screen = [&](Position position) {
        const auto pixel = screen->map().to_screen(position);
        return pixel && pixel->x >= 0 && pixel->x < 640 && pixel->y >= 0 && pixel->y < 480;
    };
    EXPECT_TRUE(on_screen({49.99, -1.99}) && on_screen({48.61, 0.49}));
    EXPECT_LT(screen->map().metres_per_pixel(), 600);
    screen.press_keys({"Home"});
    EXPECT_TRUE(on_screen({49.99, -1.99}) && on_screen({49.2, 171.4}));
}

TEST(View, GoesToMoreAndLessDetailOfAPlace) {
    Screen screen;
    // 10 and 4 times as detailed as the first, so that the quilt prefers the closest at most scales.
    const std::string wide = TestChart{1500, 900, 50, -2, 0.001, 0, false, "WIDE"}.write(screen.folder, "w");
    TestChart{1600, 1200, 49.7, -1.4, 0.00025, 0, false, "MIDDLE"}.write(screen.folder, "m");
    TestChart{2000, 1600, 49.62, -1.3, 0.0001, 0, false, "CLOSE"}.write(screen.folder, "c");
    screen.look_at({screen.folder.file("")});
    const Position place{49.55, -1.25};
    screen.answer("J", "49.55N 1.25W");
    const auto name = [&] { return screen->message().substr(0, screen->message().find(':')); };
    for (const bool as_printed : {false, true}) {
        if (as_printed) screen.press_keys({"V"});
        for (const auto& [command, expected] : {std::pair{"N", "MIDDLE"},
                                                {"N", "CLOSE"},
                                                {"N", "No chart of this place has more detail."},
                                                {"P", "MIDDLE"},
                                                {"P", "WIDE"},
                                                {"P", "No chart of this place has less detail."}}) {
            screen.press_keys({command});
            EXPECT_EQ(name(), expected) << as_printed;
            expect_near(screen->map().to_position(kMiddle), place, 0.001);
        }
    }
}

TEST(View, ShowsAChartAsPrintedAndPlotsBesideItsInsets) {
    Screen screen;
    const std::string path = TestChart{1500, 900, 50, -2, 0.001, 0, true}.write(screen.folder, "chart");
    screen.look_at({path});
    screen->press_key("V");
    // 1500 by 900 pixels fit at 1/3, with (640 - 500) / 2 and (480 - 300) / 2 pixels around.
    screen.press_keys({"Home"});
    screen.expect_sheet(path, 3, -70, -90);
    // Block 80, 60 of 3 is chart pixel 241, 181 in its middle, and stays at 150, 150.
    screen->move({150, 150});
    screen->zoom(2);
    screen.expect_sheet(path, 1, 241 - 150, 181 - 150);
    screen.drag({100, 100}, {63, 151});
    screen.expect_sheet(path, 1, 241 - 150 + 37, 181 - 150 - 51);
    screen.press_keys({"Right", "Down", "D"});
    screen.expect_sheet(path, 1, 241 - 150 + 37 + 96, 181 - 150 - 51 + 96, ColourScheme::kDusk);

    screen.press_keys({"D", "D", "Home", "R"});
    // A leg on the chart, which the inset interrupts between 136 and 204, and one on the inset.
    for (const ScreenPixel at : {ScreenPixel{100, 150}, {300, 150}, {150, 140}, {190, 140}})
        screen.click(at);
    screen.draw();
    const Argb route = theme_for(ColourScheme::kDay).route.colour;
    const auto is_route = [&](int x, int y) { return screen.pixel(x, y) == route; };
    EXPECT_TRUE(is_route(120, 150) && is_route(220, 150));
    EXPECT_FALSE(is_route(140, 150) || is_route(170, 150) || is_route(202, 150));
    EXPECT_TRUE(is_route(160, 140) && is_route(175, 140));
    // At a sixth of its size the inset is too small to be plotted on.
    screen->leave();
    screen->zoom(-2);
    screen.draw();
    EXPECT_TRUE(is_route(240, 194) && is_route(250, 194));
}

TEST(View, DrawsTheGridAlsoAcrossThe180thMeridian) {
    const TestChart chart{1500, 900, 50, 179.25};
    Screen screen;
    const std::string path = chart.write(screen.folder, "chart");
    // A reference point four pixels from the one in the middle.
    const zellap10::plotter::Position at = chart.position(737, 449);
    screen.folder.write("chart.GEO", chart.georeference_text() +
                                         "Point10=" + samples::decimal_text(at.longitude) + " " +
                                         samples::decimal_text(at.latitude) + " 449 737\n");
    screen.look_at({path});
    screen->press_key("V");
    screen.press_keys({"Home"});
    screen.before = screen.pixels;
    screen.press_keys({"G"});
    // At least 140 pixels of 0.003 degrees between lines: every 30 minutes, from 179 degrees 30 east on.
    for (const auto& [minutes, lines] :
         {std::pair{5, 0}, {15, 1}, {30, 0}, {45, 1}, {60, 0}, {75, 1}, {85, 0}}) {
        const double x = 70 + minutes / 60.0 * 1000 / 3;
        EXPECT_EQ(screen.changed({x - 2, 120}, {x + 2, 220}) >= 100, lines == 1) << minutes;
    }
    EXPECT_GE(screen.changed({230, 254}, {300, 258}), 70);  // 49 degrees 30
    EXPECT_EQ(screen.changed({230, 270}, {300, 370}), 0);
    EXPECT_EQ(screen.changed({0, 0}, {68, 400}), 0) << "outside the neat line";
    screen.press_keys({"G", "T"});
    EXPECT_EQ(screen.changed({230, 254}, {300, 258}), 0);
    EXPECT_GE(screen.changed({312, 230}, {330, 250}), 28);  // the one in the middle
    EXPECT_EQ(screen.changed({306, 230}, {311, 250}), 0) << "too close to it";
}

TEST(View, EditsARouteInRouteModeOnly) {
    Screen screen;
    screen.look_at(TestChart{});
    const auto count = [&] { return screen->waypoints().size(); };
    screen.click({100, 150});
    EXPECT_EQ(count(), 0u);
    screen->press_key("R");
    screen.click({100, 150});
    screen.click({400, 150});
    screen.click({100, 500});  // on the bar
    screen.draw();
    const Argb route = theme_for(ColourScheme::kDay).route.colour;
    for (const int x : {120, 150, 380})  // a leg along a parallel, with its label in the middle
        EXPECT_EQ(screen.pixel(x, 150), route) << x;
    EXPECT_NE(screen.pixel(250, 150), route);

    const std::vector<Waypoint> two = screen->waypoints();
    screen.drag({180, 152}, {200, 250});  // from the leg
    ASSERT_EQ(count(), 3u);
    expect_near(screen->map().to_position({200, 250}), screen->waypoints()[1].position);
    screen.drag({401, 149}, {450, 100});
    expect_near(screen->map().to_position({450, 100}), screen->waypoints()[2].position);
    screen.click({200, 250}, Button::kRight);
    EXPECT_EQ(count(), 2u);
    screen.click({50, 50}, Button::kRight);
    for (const std::size_t expected : {3u, 3u, 2u}) {  // a drag is one change, also one that inserts
        screen->press_key("Backspace");
        EXPECT_EQ(count(), expected);
    }
    ASSERT_EQ(count(), 2u);
    expect_near(screen->waypoints()[1].position, two[1].position);
    // Outside the mode a drag from a waypoint moves the map.
    screen->press_key("R");
    screen.drag({400, 150}, {440, 160});
    screen.draw();
    EXPECT_EQ(screen.pixel(420, 160), route);
    screen->leave();
    screen.press_keys({"Delete", "Home"});
    EXPECT_EQ(screen.pixels, screen.before);
}

TEST(View, ExplainsAPositionThatItCannotRead) {
    Screen screen;
    screen.look_at(TestChart{});
    const Position before = screen->map().centre();
    screen->press_key("J");
    for (const char* key : {"G", "Q"})  // keys of the text
        screen->press_key(key);
    EXPECT_FALSE(screen->is_over());
    screen.answer("J", "91N 1W");
    EXPECT_TRUE(screen->wants_text());
    expect_near(before, screen->map().centre());
    EXPECT_GT(screen.changed({200, 100}, {440, 140}), 1000);
    screen.answer("J", "49 30.6N 1 17.4W");
    EXPECT_FALSE(screen->wants_text());
    expect_near(screen->map().centre(), {49.51, -1.29});
}

TEST(View, FollowsTheShipUntilItsFixIsLost) {
    Screen screen;
    Track::Clock::time_point now;
    screen.options.now = [&now] { return now; };
    const std::string path = TestChart{}.write(screen.folder, "chart");
    screen.look_at({path});
    std::atomic<FixFeed*> feed{nullptr};
    screen->set_receiver(std::make_unique<FixSource>(
        [&feed](FixFeed& of_source) {
            feed = &of_source;  // which outlives the thread
            while (of_source.wait_for(std::chrono::seconds(1))) {
            }
        },
        nullptr));
    ASSERT_TRUE(screen.draw_until([&] { return feed != nullptr; }));
    const Argb ship = theme_for(ColourScheme::kDay).ship.colour;
    // Nearly the colour, within two pixels: edges are soft.
    const auto shows = [&](int x, int y, Argb colour) {
        for (int i = 0; i < 25; ++i) {
            const Argb here = screen.pixel(x + i % 5 - 2, y + i / 5 - 2);
            const auto off = [&](int shift) {
                return std::abs(static_cast<int>(here >> shift & 0xFF) -
                                static_cast<int>(colour >> shift & 0xFF));
            };
            if (std::max({off(0), off(8), off(16)}) < 60) return true;
        }
        return false;
    };
    const auto sail = [&](double longitude) {
        feed.load()->put({{{}, {49.55, longitude}, 6.0, 90.0, {}}});
        now += std::chrono::seconds(1);
        screen.draw();
        const auto pixel = screen->map().to_screen({49.55, longitude});
        ASSERT_TRUE(pixel);
        EXPECT_NEAR(pixel->x, kMiddle.x, 1);
        EXPECT_NEAR(pixel->y, kMiddle.y, 1);
        EXPECT_TRUE(shows(320, 240, ship));
    };
    sail(-1.3);
    sail(-1.2);
    screen.press_keys({"C"});
    EXPECT_NEAR(screen->map().course_up(), 90, 1e-9);
    sail(-1.1);
    // The track is below the ship, the predictor above it.
    EXPECT_TRUE(shows(320, 300, theme_for(ColourScheme::kDay).track.colour));
    EXPECT_TRUE(shows(320, 225, ship));
    EXPECT_FALSE(shows(300, 225, ship));
    screen.before = screen.pixels;
    screen.draw();
    EXPECT_EQ(screen.pixels, screen.before);
    now += std::chrono::seconds(11);
    screen.draw();
    EXPECT_GT(screen.changed({400, 10}, {639, 60}), 500) << "in words";
    // A drag ends the following.
    screen.drag({100, 100}, {150, 100});
    const Position centre = screen->map().centre();
    feed.load()->put({{{}, {49.5, -1.0}, 6.0, 90.0, {}}});
    screen.draw();
    expect_near(screen->map().centre(), centre);
}

}  // namespace
