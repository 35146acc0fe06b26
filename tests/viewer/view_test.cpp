#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "screen.h"
#include <testing/point_lists.h>
#include <viewer/grid.h>
#include <viewer/route_lines.h>
#include <viewer/scale_bar.h>
#include <viewer/status.h>
#include <zellap10/navigation/dead_reckoning.h>
#include <zellap10/plotter/route.h>

namespace {

using namespace viewer;

TEST(View, ZoomsAndDragsTheChart) {
    Screen screen;
    const std::string path = TestChart{}.write(screen.folder, "chart");
    screen.look_at({path});
    // 1500 by 900 pixels fit at 1/3, with (640 - 500) / 2 and (480 - 300) / 2 pixels around.
    screen.expect_chart(path, 3, -70, -90);

    // Block 80, 60 of 3 is chart pixel 241, 181 in its middle, and stays at 150, 150.
    screen->move({150, 150});
    screen->turn_wheel(2);
    screen.expect_chart(path, 1, 241 - 150, 181 - 150);
    screen.drag({100, 100}, {63, 151});
    screen.expect_chart(path, 1, 241 - 150 + 37, 181 - 150 - 51);
    screen.do_commands({Command::kPanRight, Command::kPanDown});
    screen.expect_chart(path, 1, 241 - 150 + 37 + 96, 181 - 150 - 51 + 96);
    screen.do_commands({Command::kPanLeft, Command::kPanUp});
    for (const ColourScheme light : {ColourScheme::kDusk, ColourScheme::kNight, ColourScheme::kDay}) {
        screen.do_commands({Command::kLight});
        screen.expect_chart(path, 1, 241 - 150 + 37, 181 - 150 - 51, light);
    }
    screen.do_commands({Command::kWhole});
    screen.expect_chart(path, 3, -70, -90);
}

TEST(View, ShowsTheWidestChart) {
    samples::Chart wide;
    wide.width = std::numeric_limits<int>::max();
    wide.height = 1;
    wide.colours = {{255, 0, 0}, {0, 0, 255}};
    std::string line;
    samples::append_line_number(line, 1);
    samples::append_run(line, wide.bits_per_pixel, 1, wide.width - 100);
    samples::append_run(line, wide.bits_per_pixel, 2, 100);
    Screen screen;
    const std::string path = screen.folder.write(
        "wide.chart", samples::chart_bytes(samples::text_part(wide), wide.bits_per_pixel, {line + '\0'}));
    screen.look_at({path});
    screen.expect_chart(path, 16, (1 << 26) - 320, -240);
    screen->turn_wheel(Camera::kSteps);
    screen.drag({300, 100}, {-2e9, 100});
    screen.expect_chart(path, 1, wide.width - 1 - 320, -240);
    screen->turn_wheel(-4);
    screen.expect_chart(path, 6, wide.width / 6 - 320, -240);
}

TEST(View, GoesOnBehindChartsThatCannotBeOpened) {
    Screen screen;
    const std::string first = TestChart{}.write(screen.folder, "a");
    const std::string last = TestChart{2000, 1000}.write(screen.folder, "c");
    const std::string broken = screen.folder.write("b.chart", TestChart{}.bytes().substr(0, 5000));
    screen.folder.write("b.GEO", "Name=B\n");
    screen.folder.write("notes.txt", "no chart");
    const std::string bare = screen.folder.write("d.chart", TestChart{1498}.bytes());  // no positions
    screen.look_at({screen.folder.file("")});
    screen.expect_chart(first, 3, -70, -90);

    screen.do_commands({Command::kNext});
    screen.before.assign(screen.pixels.size(), theme_for(ColourScheme::kDay).background);
    EXPECT_EQ(screen.changed({0, 0}, {100, 100}), 0);
    EXPECT_GT(screen.changed({200, 200}, {440, 300}), 1000);  // the trouble

    screen.do_commands({Command::kNext});
    screen.expect_chart(last, 4, -70, -115);
    screen.do_commands({Command::kNext, Command::kGrid});
    screen.expect_chart(bare, 3, -70, -90);
    screen.do_commands({Command::kNext, Command::kPrevious});
    screen.expect_chart(bare, 3, -70, -90);

    const Chart chart(broken);
    EXPECT_FALSE(chart.is_open());
    EXPECT_NE(chart.trouble, "");
    EXPECT_NE(Chart(bare).trouble, "");
    EXPECT_EQ(Chart(first).trouble, "");
}

TEST(View, DrawsARouteWhereItIsClicked) {
    Screen screen;
    screen.look_at(TestChart{});
    const Argb route = theme_for(ColourScheme::kDay).route.colour;

    screen->do_command(Command::kUndo);  // of nothing
    screen.click({100, 150});
    screen.click({400, 150});
    screen.draw();
    // A leg along a parallel, with its label in the middle.
    for (const int x : {120, 150, 380})
        EXPECT_EQ(screen.pixel(x, 150), route) << x;
    EXPECT_NE(screen.pixel(250, 150), route);
    // Which stays on the chart where that is moved, and zoomed about a waypoint.
    screen.drag({300, 300}, {340, 310});
    screen->move({440, 160});
    screen->turn_wheel(1);
    screen.draw();
    EXPECT_EQ(screen.pixel(400, 160), route);

    screen.click({100, 500});  // on the bar
    screen->press(Button::kRight, {10, 10});
    screen->leave();
    screen.do_commands({Command::kUndo, Command::kWhole});
    EXPECT_EQ(screen.pixels, screen.before);
}

TEST(View, DrawsTheChartsOwnPositionsBesideAnInset) {
    TestChart chart;
    chart.has_inset = true;
    Screen screen;
    screen.look_at(chart);
    // A leg on the chart, which the inset interrupts between 136 and 204, and one on the inset.
    screen.click({100, 150});
    screen.click({300, 150});
    screen.click({150, 140});
    screen.click({190, 140});
    screen.draw();
    const Argb route = theme_for(ColourScheme::kDay).route.colour;
    const auto is_route = [&](int x, int y) { return screen.pixel(x, y) == route; };
    EXPECT_TRUE(is_route(120, 150) && is_route(220, 150));
    EXPECT_FALSE(is_route(140, 150) || is_route(170, 150) || is_route(202, 150));
    EXPECT_TRUE(is_route(160, 140) && is_route(175, 140));
    screen->leave();
    screen.do_commands({Command::kClear});
    EXPECT_EQ(screen.pixels, screen.before);
}

TEST(View, DrawsTheGridAlsoOverThe180thMeridian) {
    TestChart chart;
    chart.west = 179.25;
    Screen screen;
    screen.look_at(chart);
    screen.do_commands({Command::kGrid});
    // At least 140 pixels of 0.003 degrees lie between lines: every 30 minutes, from 179 degrees 30 east on.
    for (const auto& [minutes, lines] :
         {std::pair{5, 0}, {15, 1}, {30, 0}, {45, 1}, {60, 0}, {75, 1}, {85, 0}}) {
        const double x = 70 + minutes / 60.0 * 1000 / 3;
        EXPECT_EQ(screen.changed({x - 2, 120}, {x + 2, 220}) >= 100, lines == 1) << minutes;
    }
    EXPECT_GE(screen.changed({230, 254}, {300, 258}), 70);  // 49 degrees 30
    EXPECT_EQ(screen.changed({230, 270}, {300, 370}), 0);
    screen.do_commands({Command::kGrid, Command::kPoints});
    EXPECT_EQ(screen.changed({230, 254}, {300, 258}), 0);
    EXPECT_GE(screen.changed({310, 230}, {330, 250}), 30);  // the one in the middle
}

TEST(View, SavesWhatIsSeenOnceItIsWhole) {
    Screen screen;
    screen.look_at(TestChart{});
    screen.do_commands({Command::kCloser, Command::kSave, Command::kSave});
    EXPECT_FALSE(std::filesystem::exists(screen.folder.file("chart-2.png")));
    screen.do_commands({Command::kNone});  // takes the message away
    screen.expect_saved(screen.folder.file("chart-1.png"));
}

TEST(View, GoesToTheMostDetailedChartOfAPlace) {
    Screen screen;
    const std::string wide = TestChart{1500, 900, 0.5}.write(screen.folder, "wide");
    // 4 times as detailed, from column 300 and row 200 of the wide one on.
    const std::string close = TestChart{1600, 1200, 0.3, -1.7, 0.00025}.write(screen.folder, "close");
    screen.look_at({wide, screen.folder.file("none.chart"), close});
    screen->move({150, 150});
    screen->turn_wheel(2);
    screen.drag({300, 200}, {150, 140});
    screen.expect_chart(wide, 1, 241, 91);
    // The middle of the window is pixel 560.5, 330.5 of this one and 1042, 522 of the other one.
    screen.do_commands({Command::kBest, Command::kNone});  // takes the message away
    screen.expect_chart(close, 4, -59, -109);
    screen.do_commands({Command::kPrevious, Command::kPrevious});
    screen.expect_chart(wide, 1, 241, 91);
}

TEST(RouteLines, FollowLongLegsToThePixel) {
    // Through the middle of a chart of 0.00005 degrees a pixel.
    const Position middle{50, 0};
    CGEORec record;
    add_points(record, {{0, 0, -0.0375, 50.0225}, {1500, 0, 0.0375, 50.0225}, {0, 900, -0.0375, 49.9775}});
    record.solvepoly();
    const auto georeference = zellap10::plotter::Georeference::from(record).value();
    const Position from{30, -40};
    const auto leg = zellap10::plotter::leg_between(from, middle);
    Position to = middle;
    m_advance_d(&to.latitude, &to.longitude, 1500, *leg.course);

    Camera camera;
    camera.resize({1500, 900});
    camera.show({1500, 900});
    std::vector<Argb> pixels(1500 * 900);
    Painter painter({pixels.data(), 1500, 900, 1500 * 4});
    const Theme& theme = theme_for(ColourScheme::kDay);
    draw_route(painter, camera, georeference, {from, to}, theme);
    for (const double miles : {-1.0, -0.6, 0.6, 1.0}) {
        Position on_leg = middle;
        m_advance_d(&on_leg.latitude, &on_leg.longitude, miles, *leg.course);
        const ScreenPixel spot = camera.to_window(*georeference.pixel_of(on_leg));
        const auto place = std::lround(spot.y) * 1500 + std::lround(spot.x);
        EXPECT_EQ(pixels[static_cast<std::size_t>(place)] | 0xFF000000, theme.route.colour) << miles;
    }
}

TEST(Painter, TakesTextsOfAnyBytes) {
    Argb pixels[100 * 30] = {};
    Painter painter({pixels, 100, 30, 400});
    const auto width = [&](const std::string& text) { return painter.text_size({text}, {}).width; };
    for (const char* text :
         {"\xCEle", "\xE2\x82", "\xFF\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"})
        painter.text({0, 0}, {text, std::string(1000000, 'm')}, {});
    painter.line({{0, 25}, {99, 25}}, {0xFF00FF00, 3});
    EXPECT_EQ(pixels[2550] & 0xFFFFFF, 0xFF00u);
    EXPECT_EQ(width("\xCEle"), width("\xC3\x8Ele"));  // the letter in Latin 1 and in UTF-8
    EXPECT_LT(width(std::string(1000000, 'm')), 3000);
}

TEST(Status, TellsPositionsCoursesAndTheChart) {
    const TempFolder folder;
    TestChart test_chart;
    test_chart.has_inset = true;
    test_chart.offset = 0.01;
    const Chart chart(test_chart.write(folder, "chart"));
    Camera camera;
    camera.resize({640, 480});
    camera.show(chart.size());
    const std::vector<Position> route{{49.51, -1.49}, {49.61, -1.49}};
    const auto status_at = [&](ChartPixel pixel) {
        const ScreenPixel pointer = camera.to_window(pixel);
        return status_of(
            {{640, 524}, camera, chart, route, pointer, theme_for(ColourScheme::kDay), "chart 1 of 2"});
    };
    using Lines = std::vector<std::string>;
    const Status status = status_at({511, 511});
    EXPECT_EQ(status.pointer,
              (Lines{"49°29.34'N 001°29.34'W", "TEST DATUM, in WGS 84 49°29.94'N 001°28.74'W"}));
    EXPECT_EQ(status.route, (Lines{"from waypoint 2: 176.3°  6.67 NM", "route: 2 waypoints, 6.00 NM"}));
    EXPECT_EQ(status.chart, (Lines{"TEST CHART", "scale 1:250 000, view 1/3, chart 1 of 2"}));
    EXPECT_EQ(status_at({301, 199}).pointer, (Lines{"09°59.41'N 020°00.61'E", "inset HARBOUR"}));
    EXPECT_EQ(status_at({190, 199}).pointer[0], "49°48.06'N 001°48.60'W") << "in the inset's margin";
}

TEST(Steps, AreRoundNumbers) {
    const std::pair<double, double> grid[] = {{0.001, 0.01}, {0.011, 0.02}, {1, 1},    {1.01, 2},
                                              {16, 20},      {31, 60},      {70, 120}, {9e9, 1800}};
    for (const auto& [least, step] : grid)
        EXPECT_EQ(grid_step(least), step) << least;
    const std::pair<double, double> bar[] = {
        {0.1, 0.1}, {0.19, 0.1}, {4.9, 2}, {5, 5}, {999, 500}, {0.0999, 100 / 1852.0}, {0.005, 5 / 1852.0}};
    for (const auto& [most, length] : bar)
        EXPECT_NEAR(bar_length(most), length, 1e-12) << most;
}

}  // namespace
