#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include <zellap10/plotter/map_view.h>

namespace {

using namespace zellap10::plotter;

constexpr ScreenSize kScreen{1920, 1080};
constexpr ScreenPixel kMiddle{959.5, 539.5};
constexpr double kRadius = 6378137.0;

// PROJ 9.1, from EPSG:4326 to EPSG:3857: metres.
const struct {
    Position position;
    double x, y;
} kProjRows[] = {
    {{50.0, 1.0}, 111319.490793274, 6446275.841017161},
    {{-18.0, 179.5}, 19981848.597392607, -2037548.544750602},
    {{85.0, -179.9}, -20026376.393709917, 19971868.880408566},
    {{-60.25, -71.125}, -7917598.782671583, -8455609.203427525},
};

// Our angles are larger by 6.6e-14 of themselves, which counts 1 / cos 85 times in the north.
TEST(MapView, IsTheWebMercatorOfProj) {
    const Position centre{0.0, 0.0};
    for (const auto& row : kProjRows) {
        const MapView view(centre, 10.0, {1, 1});
        const auto pixel = view.to_screen(row.position);
        ASSERT_TRUE(pixel);
        EXPECT_NEAR(pixel->x * 10.0, row.x, 1e-5) << row.position.latitude;
        EXPECT_NEAR(pixel->y * -10.0, row.y, 1e-5) << row.position.latitude;
    }
}

TEST(MapView, GoesThereAndBackToAMillionthOfAPixel) {
    for (const Position centre : {Position{50, -1}, {-18, 179.99}, {-18, -179.99}, {84.9, 10}, {-85, 0}}) {
        for (const double metres : {0.01, 1.0, 137.0, 900.0}) {
            for (const double course : {0.0, 37.0, 180.0, 271.3}) {
                const MapView view(centre, metres, kScreen, course);
                for (const ScreenPixel pixel : {kMiddle, ScreenPixel{0, 0}, {1919, 0}, {-700, 1200}}) {
                    const auto position = view.to_position(pixel);
                    if (!position) continue;  // farther north than a position can be
                    EXPECT_LE(std::fabs(position->longitude), 180.0);
                    const auto back = view.to_screen(*position);
                    ASSERT_TRUE(back);
                    if (std::fabs(position->latitude) > 85.1) continue;
                    EXPECT_NEAR(back->x, pixel.x, 1e-6) << centre.latitude << ' ' << metres << ' ' << course;
                    EXPECT_NEAR(back->y, pixel.y, 1e-6) << centre.latitude << ' ' << metres << ' ' << course;
                }
            }
        }
    }
}

TEST(MapView, ShowsItsScaleAndItsCourseUpAtTheCentre) {
    const Position centre{60.0, 5.0};
    const double metre = 180.0 / (kRadius * 3.14159265358979);  // degrees of latitude on the sphere
    for (const double course : {0.0, 90.0, 200.0, -30.0}) {
        const MapView view(centre, 5.0, kScreen, course);
        EXPECT_NEAR(view.metres_per_pixel(), 5.0, 1e-12);
        const double bearing = course * 3.14159265358979 / 180.0;
        const auto ahead = view.to_screen(
            {60.0 + 500.0 * metre * std::cos(bearing), 5.0 + 500.0 * metre * std::sin(bearing) / 0.5});
        EXPECT_NEAR(ahead->x, kMiddle.x, 0.02) << course;
        EXPECT_NEAR(ahead->y, kMiddle.y - 100.0, 0.02) << course;
    }
}

TEST(MapView, HasTheExtentOfItsScreen) {
    for (const auto& [longitude, course] : {std::pair(-1.0, 0.0), {-179.99, 45.0}, {179.99, 120.0}}) {
        const MapView view({50.0, longitude}, 50.0, kScreen, course);
        const Extent extent = view.extent();
        double west = 0.0, east = 0.0, south = 90.0, north = -90.0;
        for (const ScreenPixel corner :
             {ScreenPixel{-0.5, -0.5}, {1919.5, -0.5}, {1919.5, 1079.5}, {-0.5, 1079.5}}) {
            const Position position = view.to_position(corner).value();
            const double right = std::remainder(position.longitude - longitude, 360.0);
            west = std::min(west, right);
            east = std::max(east, right);
            south = std::min(south, position.latitude);
            north = std::max(north, position.latitude);
        }
        EXPECT_NEAR(extent.west, std::remainder(longitude + west, 360.0), 1e-9);
        EXPECT_NEAR(extent.width, east - west, 1e-9);
        EXPECT_NEAR(extent.south, south, 1e-9);
        EXPECT_NEAR(extent.north, north, 1e-9);
    }
    EXPECT_EQ(MapView({0.0, 0.0}, 1e6, kScreen).extent().width, 360.0);
}

TEST(MapView, IsAWebTile) {
    const auto tile = MapView::of_tile(10, 511, 342, 512);
    ASSERT_TRUE(tile);
    // The formulas of web maps: the corner of tile x, y.
    const Position corner = tile->to_position({-0.5, -0.5}).value();
    EXPECT_NEAR(corner.longitude, 511.0 / 1024 * 360 - 180, 1e-12);
    const double pi = 3.14159265358979;
    EXPECT_NEAR(corner.latitude, std::atan(std::sinh(pi * (1 - 2 * 342.0 / 1024))) * 180 / pi, 1e-10);
    const Position next = tile->to_position({511.5, 511.5}).value();
    const Position next_corner = MapView::of_tile(10, 512, 343, 512)->to_position({-0.5, -0.5}).value();
    EXPECT_NEAR(next.latitude, next_corner.latitude, 1e-12);
    EXPECT_NEAR(next.longitude, next_corner.longitude, 1e-12);
    EXPECT_EQ(tile->pixels_around(), MapView::of_tile(11, 0, 0)->pixels_around());
    EXPECT_FALSE(MapView::of_tile(10, 1024, 0));
    EXPECT_FALSE(MapView::of_tile(10, 0, -1));
    EXPECT_FALSE(MapView::of_tile(25, 0, 0));
    EXPECT_FALSE(MapView::of_tile(0, 0, 0, 0));
}

TEST(MapView, MovesZoomsAndTurnsAboutTheRightPixel) {
    const MapView view({50.0, -1.0}, 50.0, kScreen, 30.0);
    const Position under = view.to_position({300.0, 900.0}).value();
    const MapView moved = view.moved_by(7.0, -11.0);
    EXPECT_NEAR(moved.to_screen(under)->x, 293.0, 1e-6);
    EXPECT_NEAR(moved.to_screen(under)->y, 911.0, 1e-6);
    const MapView zoomed = view.zoomed(1.7, {300.0, 900.0});
    EXPECT_NEAR(zoomed.to_screen(under)->x, 300.0, 1e-6);
    EXPECT_NEAR(zoomed.to_screen(under)->y, 900.0, 1e-6);
    EXPECT_NEAR(zoomed.pixels_around(), 1.7 * view.pixels_around(), 1e-3);
    const MapView turned = view.turned_to(-90.0).resized({801, 601});
    EXPECT_EQ(turned.course_up(), 270.0);
    EXPECT_NEAR(turned.to_screen({50.0, -1.0})->x, 400.0, 1e-9);
    const ScreenPixel south = turned.to_screen({49.99, -1.0}).value();
    EXPECT_NEAR(south.x, 400.0 - 0.01 / 360.0 / std::cos(0.8726) * view.pixels_around(), 0.01);
    EXPECT_NEAR(south.y, 300.0, 1e-6) << "west is up";
}

TEST(MapView, HoldsNumbersOutOfRange) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    for (const double number : {kNan, kInf, -kInf, 1e300, -1.0, 0.0}) {
        MapView view({number, number}, number, {-5, 2000000000}, number);
        view = view.moved_by(number, number).zoomed(number, {number, number}).turned_to(number);
        EXPECT_LE(std::fabs(view.centre().latitude), 85.06);
        EXPECT_LE(std::fabs(view.centre().longitude), 180.0);
        EXPECT_GT(view.metres_per_pixel(), 0.0);
        EXPECT_TRUE(view.course_up() >= 0.0 && view.course_up() < 360.0);
        EXPECT_LE(view.extent().south, view.extent().north);
        EXPECT_EQ(view.size().width, 0);
    }
    const MapView view({0.0, 0.0}, 1.0, kScreen);
    EXPECT_FALSE(view.to_screen({90.0, 0.0}));
    EXPECT_FALSE(view.to_screen({kNan, 0.0}));
    EXPECT_FALSE(view.to_position({0.0, -1e9}));
}

}  // namespace
