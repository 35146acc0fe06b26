#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/chart_under_test.h>

namespace {

struct ReductionRow {
    const char* name;
    int line, col, cols, x_factor, y_factor;
};

// clang-format off
const ReductionRow kReductionRows[] = {
    // name                            line  col  cols   x     y
    {"single pixels",                  3,    5,   200,   1,    1},
    {"by 2",                           0,    0,   9000,  2,    2},
    {"by 3, to the last line",         7,    1,   8999,  3,    3},
    {"by 4",                           2,    3,   4000,  4,    4},
    {"by 8",                           1,    2,   8000,  8,    8},
    {"wide blocks",                    0,    0,   9000,  17,   1},
    {"high blocks",                    0,    100, 50,    1,    10},
    {"an incomplete last block", 4,    0,   10,    3,    2},
    {"the largest block of the lanes", 0,    0,   8224,  8224, 1},
    {"one pixel more",                 0,    0,   8225,  8225, 1},
    {"blocks of 45000 pixels",         0,    0,   9000,  4500, 10},
};
// clang-format on

TEST(ReducedLine, IsTheMeanOfEachBlock) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(random_chart(9000, 10, 4))), 1);
    for (const ReductionRow& row : kReductionRows) {
        SCOPED_TRACE(row.name);
        const int count = row.cols / row.x_factor;
        GuardedPixels dest(static_cast<std::size_t>(count));
        ASSERT_EQ(chart.getAALine(row.line, row.col, row.cols, dest.data(), row.x_factor, row.y_factor), 1);
        EXPECT_TRUE(dest.guards_untouched());
        GuardedPixels expected(static_cast<std::size_t>(count));
        chart.plain_reduced_line(row.line, row.col, row.cols, expected.data(), row.x_factor, row.y_factor);
        EXPECT_EQ(dest.pixels(), expected.pixels());
    }
}

// A block of 2^18 pixels whose mean is one value of one pixel below the next slot.
TEST(ReducedLine, RoundsTheMeanOfALargeBlockDown) {
    constexpr int kWidth = 1 << 18;
    std::string runs = "\x01";
    samples::append_run(runs, 4, 1, kWidth - 1);
    samples::append_run(runs, 4, 2, 1);
    const std::string text = "NOS/RA=0,0,262144,1\nRGB/1,8,8,8\nRGB/2,7,7,7\n";
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(text, 4, {runs})), 1);
    chart.ColourIndex[0] = 77;
    GuardedPixels dest(1);
    ASSERT_EQ(chart.getAALine(0, 0, kWidth, dest.data(), kWidth, 1), 1);
    EXPECT_EQ(dest.pixels(), std::vector<int>{77});
}

}  // namespace
