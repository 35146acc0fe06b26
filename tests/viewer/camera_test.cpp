#include <gtest/gtest.h>

#include <utility>

#include <viewer/box.h>
#include <viewer/camera.h>

namespace {

using viewer::Box;
using viewer::Camera;
using viewer::Pixel;
using viewer::Size;
using viewer::Spot;

Camera camera_on(Size chart, Size window) {
    Camera camera;
    camera.resize(window);
    camera.show(chart);
    return camera;
}

TEST(Camera, ShowsTheWholeChartInTheMiddle) {
    const struct {
        const char* name;
        Size chart;
        int reduction, column, row;
    } rows[] = {
        {"smaller than the window", {400, 200}, 1, -200, -200},
        {"just as large", {800, 600}, 1, 0, 0},
        {"one column too wide", {801, 600}, 2, -200, -150},
        {"too high for 1/3", {900, 1801}, 4, -288, -75},
        {"too large for any", {16000, 12000}, 16, 100, 75},
        {"none", {0, 0}, 1, -400, -300},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Camera camera = camera_on(row.chart, {800, 600});
        EXPECT_EQ(camera.part().reduction, row.reduction);
        EXPECT_NEAR(camera.part().column, row.column, 1);
        EXPECT_NEAR(camera.part().row, row.row, 1);
    }
}

TEST(Camera, KeepsWhatIsUnderThePointerWhereItZooms) {
    for (const Spot spot : {Spot{400, 300}, Spot{700, 40}, Spot{3, 599}}) {
        Camera camera = camera_on({16000, 12000}, {800, 600});
        camera.centre_on({8000, 6000}, 3);
        const Pixel before = camera.to_chart(spot);
        for (const int steps : {1, 2, -1, -1, 1, -2, 1}) {
            camera.zoom(steps, spot);
            const Spot now = camera.to_window(before);
            // Half a block a step, since a view begins with a whole block.
            EXPECT_NEAR(now.x, spot.x, 2) << camera.step();
            EXPECT_NEAR(now.y, spot.y, 2) << camera.step();
        }
    }
    Camera camera = camera_on({16000, 12000}, {800, 600});
    camera.zoom(100, {0, 0});
    EXPECT_EQ(camera.part().reduction, 1);
    camera.zoom(-100, {0, 0});
    EXPECT_EQ(camera.part().reduction, 16);
}

TEST(Camera, KeepsTheMiddleOnTheChart) {
    Camera camera = camera_on({1600, 1200}, {801, 601});
    const auto expect_middle = [&](double x, double y) {
        EXPECT_EQ(camera.to_chart(camera.middle()).x, x);
        EXPECT_EQ(camera.to_chart(camera.middle()).y, y);
    };
    camera.centre_on({100, 50}, 0);
    expect_middle(100, 50);
    camera.pan(60, -30);
    expect_middle(40, 80);
    camera.pan(1000, 1000);
    expect_middle(0, 0);
    camera.pan(-5000, -5000);
    expect_middle(1599, 1199);
    camera.resize({401, 301});
    expect_middle(1599, 1199);
}

TEST(Camera, FindsTheNearestReduction) {
    const std::pair<double, int> rows[] = {{0.01, 0}, {1.3, 0}, {1.5, 1}, {5, 4},
                                           {9.7, 5},  {9.9, 6}, {1000, 7}};
    for (const auto& [reduction, step] : rows)
        EXPECT_EQ(Camera::step_near(reduction), step) << reduction;
}

TEST(Box, CutsLines) {
    const Box box{{10, 20}, {30, 40}};
    const struct {
        const char* name;
        Spot from, to;
        bool inside;
        Spot first, last;
    } rows[] = {
        {"within", {12, 22}, {28, 38}, true, {12, 22}, {28, 38}},
        {"across", {0, 30}, {100, 30}, true, {10, 30}, {30, 30}},
        {"from inside to below", {20, 30}, {20, 50}, true, {20, 30}, {20, 40}},
        {"backwards over a corner", {35, 25}, {25, 15}, true, {30, 20}, {30, 20}},
        {"past a corner", {36, 25}, {25, 14}, false, {}, {}},
        {"beside it", {0, 0}, {0, 100}, false, {}, {}},
        {"ends before it", {0, 30}, {9, 30}, false, {}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto part = viewer::part_inside(box, row.from, row.to);
        ASSERT_EQ(part.has_value(), row.inside);
        if (!part) continue;
        EXPECT_DOUBLE_EQ(part->first.x, row.first.x);
        EXPECT_DOUBLE_EQ(part->first.y, row.first.y);
        EXPECT_DOUBLE_EQ(part->second.x, row.last.x);
        EXPECT_DOUBLE_EQ(part->second.y, row.last.y);
    }
}

}  // namespace
