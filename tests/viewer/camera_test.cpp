#include <gtest/gtest.h>

#include <utility>

#include <viewer/box.h>
#include <viewer/camera.h>

namespace {

using namespace viewer;

Camera camera_on(Size chart, Size window) {
    Camera camera;
    camera.resize(window);
    camera.show(chart);
    return camera;
}

TEST(Camera, ShowsTheWholeChartAsCloseAsItFits) {
    const struct {
        const char* name;
        Size chart;
        int reduction;
    } rows[] = {
        {"just as large", {800, 600}, 1},
        {"one column too wide", {801, 600}, 2},
        {"too high for 1/3", {900, 1801}, 4},
        {"too large for any", {16000, 12000}, 16},
        {"none", {0, 0}, 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(camera_on(row.chart, {800, 600}).part().reduction, row.reduction) << row.name;
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
    camera.zoom(-100, {0, 0});
    EXPECT_EQ(camera.part().reduction, 16);
    camera.zoom(100, {0, 0});
    EXPECT_EQ(camera.part().reduction, 1);
}

TEST(Camera, FindsTheNearestReduction) {
    const std::pair<double, int> rows[] = {{0.01, 0}, {1.3, 0}, {1.5, 1}, {5, 4},
                                           {9.7, 5},  {9.9, 6}, {1000, 7}};
    for (const auto& [reduction, step] : rows)
        EXPECT_EQ(Camera::step_near(reduction), step) << reduction;
}

TEST(Box, CutsLines) {
    const Box box{{10, 20}, {30, 40}};
    const Spot none{-1, -1};
    const struct {
        const char* name;
        Spot from, to, first, last;
    } rows[] = {
        {"within", {12, 22}, {28, 38}, {12, 22}, {28, 38}},
        {"across", {0, 30}, {100, 30}, {10, 30}, {30, 30}},
        {"from inside to below", {20, 30}, {20, 50}, {20, 30}, {20, 40}},
        {"backwards over a corner", {35, 25}, {25, 15}, {30, 20}, {30, 20}},
        {"past a corner", {36, 25}, {25, 14}, none, none},
        {"beside it", {0, 0}, {0, 100}, none, none},
        {"ends before it", {0, 30}, {9, 30}, none, none},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto [first, last] = part_inside(box, row.from, row.to).value_or(std::pair(none, none));
        EXPECT_DOUBLE_EQ(first.x, row.first.x);
        EXPECT_DOUBLE_EQ(first.y, row.first.y);
        EXPECT_DOUBLE_EQ(last.x, row.last.x);
        EXPECT_DOUBLE_EQ(last.y, row.last.y);
    }
}

}  // namespace
