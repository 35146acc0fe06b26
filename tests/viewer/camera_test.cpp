#include <utility>

#include <gtest/gtest.h>

#include <viewer/box.h>
#include <viewer/camera.h>

namespace {

using namespace viewer;

Camera camera_on(ScreenSize chart, ScreenSize window) {
    Camera camera;
    camera.resize(window);
    camera.show(chart);
    return camera;
}

TEST(Camera, ShowsTheWholeChartAsCloseAsItFits) {
    const auto reduction_of = [](ScreenSize chart) { return camera_on(chart, {800, 600}).part().reduction; };
    EXPECT_EQ(reduction_of({800, 600}), 1) << "just as large";
    EXPECT_EQ(reduction_of({801, 600}), 2) << "one column too wide";
    EXPECT_EQ(reduction_of({900, 1801}), 4) << "too high for 1/3";
    EXPECT_EQ(reduction_of({16000, 12000}), 16) << "too large for any";
    EXPECT_EQ(reduction_of({0, 0}), 1) << "none";
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
    const auto expect_part = [&](const char* name, ScreenPixel from, ScreenPixel to, ScreenPixel first,
                                 ScreenPixel last) {
        const auto part = part_inside(box, from, to).value();
        EXPECT_DOUBLE_EQ(part.first.x, first.x) << name;
        EXPECT_DOUBLE_EQ(part.first.y, first.y) << name;
        EXPECT_DOUBLE_EQ(part.second.x, last.x) << name;
        EXPECT_DOUBLE_EQ(part.second.y, last.y) << name;
    };
    expect_part("within", {12, 22}, {28, 38}, {12, 22}, {28, 38});
    expect_part("across", {0, 30}, {100, 30}, {10, 30}, {30, 30});
    expect_part("from inside to below", {20, 30}, {20, 50}, {20, 30}, {20, 40});
    expect_part("backwards over a corner", {35, 25}, {25, 15}, {30, 20}, {30, 20});
    EXPECT_FALSE(part_inside(box, {36, 25}, {25, 14})) << "past a corner";
    EXPECT_FALSE(part_inside(box, {0, 0}, {0, 100})) << "beside it";
    EXPECT_FALSE(part_inside(box, {0, 30}, {9, 30})) << "ends before it";
}

}  // namespace
