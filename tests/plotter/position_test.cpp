#include <gtest/gtest.h>

#include <zellap10/plotter/position.h>

#include "../support/point_lists.h"

namespace {

using zellap10::plotter::is_fitted;
using zellap10::plotter::position_of;

TEST(Positions, NeedAFit) {
    CGEORec record;
    EXPECT_FALSE(is_fitted(record));
    EXPECT_FALSE(position_of(record, {500, 250}));
    add_points(record, {{0, 0, -70, 40}, {1000, 0, -69, 40}, {0, 1000, -70, 39}, {1000, 1000, -69, 39}});
    record.solvepoly();
    ASSERT_TRUE(is_fitted(record));
    const auto position = position_of(record, {500, 250});
    ASSERT_TRUE(position);
    EXPECT_NEAR(position->latitude, 39.75, 1e-12);
    EXPECT_NEAR(position->longitude, -69.5, 1e-12);
}

}  // namespace
