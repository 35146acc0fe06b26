#include <gtest/gtest.h>

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
using zellap10::plotter::Picture;
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

// Memory for a picture, with rows at odd addresses, bytes between them, and upside down if need be.
class Canvas {
public:
    Canvas(int width, int height, bool upside_down)
        : width_(width),
          height_(height),
          upside_down_(upside_down),
          bytes_(bytes_of_row() * static_cast<std::size_t>(height + 1), kGap) {}

    Picture picture() {
        const std::ptrdiff_t stride = static_cast<std::ptrdiff_t>(bytes_of_row());
        unsigned char* first = bytes_.data() + 1;
        if (!upside_down_) return {first, width_, height_, stride};
        return {first + stride * (height_ - 1), width_, height_, -stride};
    }
    Argb at(int x, int y) const {
        Argb colour = 0;
        std::memcpy(&colour, &bytes_[offset_of(y) + static_cast<std::size_t>(x) * 4], sizeof colour);
        return colour;
    }
    bool gaps_untouched() const {
        std::vector<unsigned char> rest = bytes_;
        for (int y = 0; y < height_; ++y)
            std::memset(&rest[offset_of(y)], kGap, static_cast<std::size_t>(width_) * 4);
        return rest == std::vector<unsigned char>(rest.size(), kGap);
    }

private:
    static constexpr unsigned char kGap = 0xA5;
    std::size_t bytes_of_row() const { return static_cast<std::size_t>(width_) * 4 + 7; }
    std::size_t offset_of(int y) const {
        return 1 + bytes_of_row() * static_cast<std::size_t>(upside_down_ ? height_ - 1 - y : y);
    }

    int width_;
    int height_;
    bool upside_down_;
    std::vector<unsigned char> bytes_;
};

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

TEST(ChartWindow, ShowsTheBlocksOfTheChart) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(bytes_of_a_chart()), 1);
    const ColourTable colours = colours_of(chart);
    for (const WindowRow& row : kWindows) {
        SCOPED_TRACE(row.name);
        for (const bool upside_down : {false, true}) {
            Canvas canvas(row.width, row.height, upside_down);
            EXPECT_TRUE(draw_window(chart, row.window, colours, kBackground, canvas.picture()));
            EXPECT_TRUE(canvas.gaps_untouched());
            for (int y = 0; y < row.height; ++y) {
                for (int x = 0; x < row.width; ++x) {
                    const auto index = index_of_block(chart, std::int64_t{row.window.column} + x,
                                                      std::int64_t{row.window.row} + y, row.window.reduction);
                    ASSERT_EQ(canvas.at(x, y), index ? colours[*index] : kBackground) << x << ", " << y;
                }
            }
        }
    }
}

TEST(ChartWindow, IsBackgroundWhereNothingCanBeRead) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(bytes_of_a_chart(), 1), 1);
    const ColourTable colours = colours_of(chart);
    EXPECT_EQ(colours, [] {
        ColourTable black;
        black.fill(0xFF000000);
        return black;
    }());
    for (const int reduction : {1, 4, 0, -3, kSmallest}) {
        Canvas canvas(3, 2, false);
        EXPECT_FALSE(draw_window(chart, {0, 0, reduction}, colours, kBackground, canvas.picture()));
        EXPECT_EQ(canvas.at(2, 1), kBackground);
        EXPECT_TRUE(canvas.gaps_untouched());
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
