#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <vector>

#include <zellap10/plotter/window.h>

#include "../chart/chart_under_test.h"

namespace {

using zellap10::plotter::Argb;
using zellap10::plotter::colours_of;
using zellap10::plotter::ColourTable;
using zellap10::plotter::draw_window;
using zellap10::plotter::in_light;
using zellap10::plotter::Light;
using zellap10::plotter::Pixel;
using zellap10::plotter::Window;

constexpr int kWidth = 23;
constexpr int kHeight = 17;
constexpr Argb kBackground = 0xFF123456;
constexpr int kSmallest = std::numeric_limits<int>::min();
constexpr int kLargest = std::numeric_limits<int>::max();

std::string bytes_of_a_chart() {
    samples::Chart chart;
    chart.width = kWidth;
    chart.height = kHeight;
    for (int i = 1; i < 16; ++i)
        chart.colours.push_back({i * 17, i * 101 % 256, i * 57 % 256});
    chart.draw = [](int line, unsigned char* pixels) {
        for (int x = 0; x < kWidth; ++x)
            pixels[x] = static_cast<unsigned char>((x * x / 5 + line * 3 + x * line) % 16);
    };
    return samples::chart_bytes(chart);
}

// The colour of a block, from its pixels one by one; none outside the chart.
std::optional<unsigned char> index_of_block(ChartUnderTest& chart, std::int64_t column, std::int64_t row,
                                            int reduction) {
    if (column < 0 || row < 0 || column * reduction >= kWidth || row * reduction >= kHeight) return {};
    int sums[3] = {};
    int count = 0;
    unsigned char index = 0;
    for (std::int64_t y = row * reduction; y < (row + 1) * reduction && y < kHeight; ++y) {
        for (std::int64_t x = column * reduction; x < (column + 1) * reduction && x < kWidth; ++x) {
            chart.getMultiLines(static_cast<int>(y), 1, static_cast<int>(x), 1, &index);
            const PALETTEENTRY& colour = chart.LogPalette.palPalEntry[index];
            sums[0] += colour.peRed;
            sums[1] += colour.peGreen;
            sums[2] += colour.peBlue;
            ++count;
        }
    }
    if (reduction == 1) return index;
    const auto cell = [&](int part) { return sums[part] / count / 8; };
    return chart.ColourIndex[(cell(0) * 32 + cell(1)) * 32 + cell(2)];
}

struct WindowRow {
    const char* name;
    Window window;
    int width, height;
};

const WindowRow kWindows[] = {
    {"all of it", {0, 0, 1}, kWidth, kHeight},
    {"a part", {3, 5, 1}, 9, 8},
    {"larger than the chart", {-4, -3, 1}, 32, 25},
    {"halved, an odd column and line at the end", {0, 0, 2}, 14, 10},
    {"a third, from within", {2, 1, 3}, 4, 3},
    {"only the partial blocks at the right", {5, 0, 4}, 2, 6},
    {"the corner block", {1, 1, 12}, 1, 1},
    {"the whole chart as one block", {-1, -1, 100}, 3, 3},
    {"the largest reduction", {0, 0, kLargest}, 2, 2},
    {"left of it and above", {-9, -9, 1}, 9, 9},
    {"right of it", {8, 0, 3}, 2, 2},
    {"below it", {0, 17, 1}, 2, 2},
    {"the smallest numbers", {kSmallest, kSmallest, kLargest}, 3, 3},
    {"the largest numbers", {kLargest, kLargest, 1}, 3, 3},
    {"no columns", {0, 0, 1}, 0, 5},
};

// In a picture with rows at odd addresses, bytes between them, and upside down if need be.
void expect_blocks(ChartUnderTest& chart, const WindowRow& row, bool upside_down) {
    const ColourTable colours = colours_of(chart);
    const std::ptrdiff_t stride = row.width * 4 + 7;
    std::vector<unsigned char> drawn(static_cast<std::size_t>(stride * (row.height + 1)), 0xA5);
    std::vector<unsigned char> expected = drawn;
    const auto row_of = [&](std::vector<unsigned char>& bytes, int y) {
        return bytes.data() + 1 + stride * (upside_down ? row.height - 1 - y : y);
    };
    EXPECT_TRUE(draw_window(chart, row.window, colours, kBackground,
                            {row_of(drawn, 0), row.width, row.height, upside_down ? -stride : stride}));
    for (int y = 0; y < row.height; ++y) {
        for (int x = 0; x < row.width; ++x) {
            const auto index = index_of_block(chart, std::int64_t{row.window.column} + x,
                                              std::int64_t{row.window.row} + y, row.window.reduction);
            const Argb colour = index ? colours[*index] : kBackground;
            std::memcpy(row_of(expected, y) + std::ptrdiff_t{x} * 4, &colour, sizeof colour);
        }
    }
    EXPECT_TRUE(drawn == expected);
}

TEST(ChartWindow, ShowsTheBlocksOfTheChart) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(bytes_of_a_chart()), 1);
    for (const WindowRow& row : kWindows) {
        SCOPED_TRACE(row.name);
        expect_blocks(chart, row, false);
        expect_blocks(chart, row, true);
    }
}

TEST(ChartWindow, IsBackgroundWhereNothingCanBeRead) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(bytes_of_a_chart(), 1), 1);
    const ColourTable colours = colours_of(chart);
    EXPECT_EQ(std::count(colours.begin(), colours.end(), 0xFF000000), 256);
    for (const int reduction : {1, 4, 0, -3, kSmallest}) {
        std::vector<Argb> pixels(6);
        EXPECT_FALSE(draw_window(chart, {0, 0, reduction}, colours, kBackground, {pixels.data(), 3, 2, 12}));
        EXPECT_EQ(pixels, std::vector<Argb>(6, kBackground));
    }
    EXPECT_TRUE(draw_window(chart, {0, 0, 1}, colours, kBackground, {nullptr, -1, -1, 0})) << "no picture";
}

TEST(ChartWindow, TellsWhichPlaceIsWhere) {
    const Window window{-2, 3, 4};
    // The first block of the chart has its middle between its second and third pixel.
    const Pixel first = window.on_chart({2, -3});
    EXPECT_EQ(first.x, 1.5);
    EXPECT_EQ(first.y, 1.5);
    const Pixel back = window.on_picture({1.5, 21.5});
    EXPECT_EQ(back.x, 2);
    EXPECT_EQ(back.y, 2);
    const Pixel furthest = Window{kLargest, kSmallest, kLargest}.on_chart({1, 0});
    EXPECT_GT(furthest.x, 4.6e18);
    EXPECT_LT(furthest.y, -4.6e18);
}

TEST(ChartColours, AreDimmedByTheLight) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    const ColourTable day = colours_of(chart);
    EXPECT_EQ(day[0], 0xFF000000);
    EXPECT_EQ(day[1], 0xFFFF0000);
    EXPECT_EQ(day[2], 0xFF0000FF);
    EXPECT_EQ(day[3], 0xFF780078) << "added to the chart's own";
    EXPECT_EQ(day[255], 0xFF000000) << "behind the palette";
    EXPECT_EQ(colours_of(chart, Light::kDusk)[3], 0xFF3C003C);
    EXPECT_EQ(colours_of(chart, Light::kNight)[3], 0xFF220013);
    EXPECT_EQ(in_light(0x80FFFFFF, Light::kDay), 0x80FFFFFF);
    EXPECT_EQ(in_light(0x80FFFFFF, Light::kDusk), 0x80808080);
    EXPECT_EQ(in_light(0x80FFFFFF, Light::kNight), 0x80473329);
}

}  // namespace
