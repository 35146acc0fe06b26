#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chart_under_test.h"

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
    {"a last block that is not whole", 4,    0,   10,    3,    2},
    {"the largest block of the lanes", 0,    0,   8224,  8224, 1},
    {"one pixel more",                 0,    0,   8225,  8225, 1},
    {"blocks of 45000 pixels",         0,    0,   9000,  4500, 10},
};
// clang-format on

TEST(ReducedLine, IsTheMeanOfEachBlock) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(striped_chart(9000, 10))), 1);
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

TEST(ReducedLine, KeepsAWhiteBlockOfTheLargestSizeWhite) {
    samples::Chart white;
    white.width = 8224;
    white.height = 2;
    white.colours = {{0, 0, 0}, {255, 255, 255}};
    white.draw = [](int, unsigned char* pixels) { std::fill_n(pixels, 8224, static_cast<unsigned char>(2)); };
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(white)), 1);
    for (const int lines : {1, 2}) {
        GuardedPixels dest(1);
        ASSERT_EQ(chart.getAALine(0, 0, 8224, dest.data(), 8224, lines), 1);
        EXPECT_EQ(dest.pixels(), std::vector<int>{2}) << lines;
    }
}

// One block more than fits the fast sums' columns, and as many as fit.
TEST(ReducedLine, IsAsWideAsTheChart) {
    constexpr int kBlock = 4096;
    constexpr int kWidth = (1 << 24) + kBlock;
    std::string runs = "\x01";
    samples::append_run(runs, 4, 1, kWidth - kBlock);
    samples::append_run(runs, 4, 2, kBlock);
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(text_of_size(kWidth, 1), 4, {runs})), 1);
    for (const int first : {0, 1, 2}) {
        const int count = kWidth / kBlock - first;
        GuardedPixels dest(static_cast<std::size_t>(count));
        ASSERT_EQ(chart.getAALine(0, first * kBlock, count * kBlock, dest.data(), kBlock, 1), 1);
        EXPECT_TRUE(dest.guards_untouched());
        std::vector<int> expected(static_cast<std::size_t>(count), 1);
        expected.back() = 2;
        EXPECT_EQ(dest.pixels(), expected);
    }
}

TEST(ReducedLine, TakesTheSlotOfAColourThatThePaletteLacks) {
    // Pixels of colour 9 on a chart with colours 1 and 2 only, whose palette ends before 9.
    samples::Chart drawn = striped_chart(4, 1);
    drawn.colours = {{255, 255, 255}, {250, 250, 250}};
    drawn.draw = [](int, unsigned char* pixels) { std::fill_n(pixels, 4, static_cast<unsigned char>(9)); };
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(drawn)), 1);
    ASSERT_LE(chart.LogPalette.palNumEntries, 9);
    chart.ColourIndex[0] = 77;
    GuardedPixels dest(2);
    ASSERT_EQ(chart.getAALine(0, 0, 4, dest.data(), 2, 1), 1);
    EXPECT_EQ(dest.pixels(), (std::vector<int>{77, 77}));
}

}  // namespace
