#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <testing/block_mean.h>
#include <testing/chart_under_test.h>
#include <zellap10/plotter/viewport.h>

namespace {

using namespace zellap10::plotter;

constexpr int kWidth = 23;
constexpr int kHeight = 17;
constexpr Argb kBackground = 0xFF123456;

// The colour of a block by the plain decoder, and the background outside the chart.
Argb colour_of_block(ChartUnderTest& chart, std::int64_t column, std::int64_t row, int reduction) {
    const std::int64_t x = column * reduction;
    const std::int64_t y = row * reduction;
    if (x < 0 || y < 0 || x >= kWidth || y >= kHeight) return kBackground;
    const int columns = std::min(reduction, kWidth - static_cast<int>(x));
    const int lines = std::min(reduction, kHeight - static_cast<int>(y));
    unsigned char index = 0;
    if (reduction == 1)
        chart.plain_window(static_cast<int>(y), 1, static_cast<int>(x), 1, &index);
    else
        chart.plain_reduced_line(static_cast<int>(y), static_cast<int>(x), columns, &index, columns, lines);
    return colours_of(chart)[index];
}

void expect_means(ChartUnderTest& chart, const Viewport& viewport) {
    std::vector<Argb> drawn(static_cast<std::size_t>(viewport.width * viewport.height), 1);
    EXPECT_TRUE(draw_viewport(chart, viewport, colours_of(chart), kBackground,
                              {drawn.data(), viewport.width, viewport.height, viewport.width * 4},
                              Averaging::kTrueColour));
    for (int i = 0; i < viewport.width * viewport.height; ++i) {
        const Argb mean =
            mean_of_block(chart, colours_of(chart), std::int64_t{viewport.column} + i % viewport.width,
                          std::int64_t{viewport.row} + i / viewport.width, viewport.reduction, kBackground);
        EXPECT_EQ(drawn[static_cast<std::size_t>(i)], mean) << i;
    }
}

// In a picture with rows at odd addresses, bytes between them, and upside down if need be.
void expect_blocks(ChartUnderTest& chart, const Viewport& viewport, bool upside_down) {
    const int width = viewport.width;
    const int height = viewport.height;
    const std::ptrdiff_t stride = width * 4 + 7;
    std::vector<unsigned char> drawn(static_cast<std::size_t>(stride * (height + 1)), 0xA5);
    std::vector<unsigned char> expected = drawn;
    const auto row_of = [&](std::vector<unsigned char>& bytes, int y) {
        return bytes.data() + 1 + stride * (upside_down ? height - 1 - y : y);
    };
    EXPECT_TRUE(draw_viewport(chart, viewport, colours_of(chart), kBackground,
                              {row_of(drawn, 0), width, height, upside_down ? -stride : stride}));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Argb colour = colour_of_block(chart, std::int64_t{viewport.column} + x,
                                                std::int64_t{viewport.row} + y, viewport.reduction);
            std::memcpy(row_of(expected, y) + std::ptrdiff_t{x} * 4, &colour, sizeof colour);
        }
    }
    EXPECT_TRUE(drawn == expected);

    constexpr unsigned char kOutside = 200;
    const ColourTable colours = colours_of(chart);
    std::vector<unsigned char> indexes(static_cast<std::size_t>(width * height));
    EXPECT_TRUE(read_viewport(chart, viewport, kOutside, indexes.data()));
    for (int i = 0; i < width * height; ++i) {
        const unsigned char index = indexes[static_cast<std::size_t>(i)];
        Argb colour = 0;
        std::memcpy(&colour, row_of(expected, i / width) + std::ptrdiff_t{i % width} * 4, sizeof colour);
        EXPECT_EQ(index == kOutside ? kBackground : colours[index], colour) << i;
    }
}

TEST(Viewports, ShowsTheBlocksOfTheChart) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(samples::chart_bytes(random_chart(kWidth, kHeight, 4))), 1);
    const auto expect = [&](const char* name, const Viewport& viewport) {
        SCOPED_TRACE(name);
        expect_blocks(chart, viewport, false);
        expect_blocks(chart, viewport, true);
        expect_means(chart, viewport);
    };
    expect("a part", {3, 5, 1, 9, 8});
    expect("larger than the chart", {-4, -3, 1, 32, 25});
    expect("halved, an odd column and line at the end", {0, 0, 2, 14, 10});
    expect("only the partial blocks at the right", {5, 0, 4, 2, 6});
    expect("the largest reduction", {-1, -1, INT_MAX, 3, 3});
    expect("right of it", {8, 0, 3, 2, 2});
    expect("the smallest numbers", {INT_MIN, INT_MIN, INT_MAX, 3, 3});
    expect("the largest numbers", {INT_MAX, INT_MAX, 1, 3, 3});
    expect("no columns", {0, 0, 1, 0, 5});
}

TEST(Viewports, IsBackgroundWhereNothingCanBeRead) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart(), 1), 1);
    const ColourTable colours = colours_of(chart);
    EXPECT_EQ(std::count(colours.begin(), colours.end(), 0xFF000000), 256);
    CZellap never_opened;
    for (CZellap* const closed : {static_cast<CZellap*>(&chart), &never_opened}) {
        for (const int reduction : {1, 4, 0, -3, INT_MIN}) {
            std::vector<Argb> pixels(6);
            EXPECT_FALSE(draw_viewport(*closed, {0, 0, reduction, 3, 2}, colours, kBackground,
                                       {pixels.data(), 3, 2, 12}));
            EXPECT_EQ(pixels, std::vector<Argb>(6, kBackground));
        }
    }
    ASSERT_EQ(chart.open(small_chart()), 1);
    EXPECT_TRUE(draw_viewport(chart, {0, 0, 1, -1, -1}, colours, kBackground, {nullptr, -1, -1, 0}));
    std::vector<Argb> pixels(6);
    EXPECT_FALSE(draw_viewport(chart, {0, 0, 1, 3, 3}, colours, kBackground, {pixels.data(), 3, 2, 12}));
    EXPECT_EQ(pixels, std::vector<Argb>(6)) << "another size";
}

TEST(Viewports, ConvertChartAndScreenPixels) {
    const Viewport viewport{-2, 3, 4};
    // The centre of the chart's first block is between its second and third pixel.
    const ChartPixel pixel = viewport.to_chart({2, -3});
    EXPECT_EQ(pixel.x, 1.5);
    EXPECT_EQ(pixel.y, 1.5);
    EXPECT_EQ(viewport.to_screen(pixel).x, 2);
    EXPECT_EQ(viewport.to_screen(pixel).y, -3);
    EXPECT_EQ(Viewport().to_chart({4, 5}).x, 4);
    EXPECT_EQ(Viewport().to_chart({4, 5}).y, 5);
    EXPECT_GT((Viewport{INT_MAX, 0, INT_MAX}.to_chart({1, 0}).x), 4.6e18);
}

TEST(ChartColours, AreDimmedByTheScheme) {
    ChartUnderTest chart;
    const std::string text = "NOS/RA=0,0,0,0\nRGB/1,98,76,254\nRGB/2,0,0,255\n";
    ASSERT_EQ(chart.open(samples::chart_bytes(text, 4, {})), 1);
    const ColourTable day = colours_of(chart);
    EXPECT_EQ(day[0], 0xFF000000);
    EXPECT_EQ(day[1], 0xFF624CFE);
    EXPECT_EQ(day[3], 0xFF3020F8) << "added to the chart's own";
    EXPECT_EQ(day[255], 0xFF000000) << "past the palette";
    EXPECT_EQ(colours_of(chart, ColourScheme::kDusk)[1], 0xFF31267F);
    EXPECT_EQ(colour_in(ColourScheme::kNight, 0x80FFFFFF), 0x80473329);
    chart.CloseZellap();
    ASSERT_EQ(chart.open(samples::chart_bytes("NOS/RA=0,0,0,0\nRGB/255,1,2,3\n", 4, {})), 1);
    EXPECT_EQ(colours_of(chart)[255], 0xFF010203) << "the last of 256";
}

}  // namespace
