#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "chart_under_test.h"

namespace {

using samples::append_run;

std::vector<int> line_of(ChartUnderTest& chart, int line) {
    GuardedPixels dest(static_cast<std::size_t>(chart.Width));
    EXPECT_EQ(chart.getLine(line, dest.data()), 1);
    EXPECT_TRUE(dest.guards_untouched());
    return dest.pixels();
}

std::vector<int> window_of(ChartUnderTest& chart, int line, int lines, int col, int cols) {
    GuardedPixels dest(static_cast<std::size_t>(lines) * static_cast<std::size_t>(cols));
    EXPECT_EQ(chart.getMultiLines(line, lines, col, cols, dest.data()), 1);
    EXPECT_TRUE(dest.guards_untouched());
    return dest.pixels();
}

// Colour and length.
std::pair<int, int> next_run(ChartUnderTest& chart) {
    std::pair<int, int> run(-1, -1);
    chart.vNextCRL(&run.first, &run.second);
    return run;
}

std::pair<int, int> first_run(ChartUnderTest& chart, long line) {
    chart.seekLine(line);
    return next_run(chart);
}

std::vector<int> joined(std::vector<std::pair<int, int>> runs) {
    std::vector<int> pixels;
    for (const auto& [colour, length] : runs)
        pixels.insert(pixels.end(), static_cast<std::size_t>(length), colour);
    return pixels;
}

TEST(SmallChart, DecodesAsDrawn) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    EXPECT_EQ(chart.BitsPerPixel, 4);
    EXPECT_EQ(chart.ColourMask, 0x78);
    EXPECT_EQ(chart.RunMask, 0x07);
    EXPECT_EQ(chart.ColourShift, 3);
    EXPECT_EQ(chart.LineCount, 2);
    EXPECT_EQ(chart.LineOffsets[0], 60);
    EXPECT_EQ(chart.LineOffsets[1], 65);
    EXPECT_EQ(chart.LineOffsets[2], 69);
    EXPECT_EQ(line_of(chart, 0), joined({{1, 8}, {2, 12}}));
    EXPECT_EQ(line_of(chart, 1), joined({{2, 20}}));
    EXPECT_EQ(window_of(chart, 0, 2, 6, 4), joined({{1, 2}, {2, 6}}));
    EXPECT_EQ(window_of(chart, 0, 1, 8, 12), joined({{2, 12}})) << "from the boundary of two runs";
    EXPECT_EQ(window_of(chart, 0, 1, 0, 8), joined({{1, 8}}));
    EXPECT_EQ(window_of(chart, 0, 2, 0, 20), joined({{1, 8}, {2, 32}}));
}

TEST(SmallChart, GivesItsRunsOneByOne) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    for (const long line : {0L, -5L, LONG_MIN}) {
        EXPECT_EQ(first_run(chart, line), std::pair(1, 8));
        EXPECT_EQ(next_run(chart), std::pair(2, 12));
    }
    for (const long line : {1L, 2L, LONG_MAX})
        EXPECT_EQ(first_run(chart, line), std::pair(2, 20));
}

// A chart of one line at 4 bits a pixel, of these bytes behind the line number.
std::string chart_of_line(int width, const std::string& runs) {
    return samples::chart_bytes(text_of_size(width, 1), 4, {"\x01" + runs});
}

TEST(Overrun, IsRefusedByOneAndCutByTheOther) {
    std::string runs;
    append_run(runs, 4, 1, 8);
    append_run(runs, 4, 3, 4);
    append_run(runs, 4, 2, 9);
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(chart_of_line(20, runs)), 1);
    GuardedPixels dest(20);
    EXPECT_EQ(chart.getLine(0, dest.data()), 0);
    EXPECT_TRUE(dest.guards_untouched());
    EXPECT_EQ(dest.pixels(), joined({{1, 8}, {3, 4}, {kUntouched, 8}}));
    EXPECT_EQ(window_of(chart, 0, 1, 0, 20), joined({{1, 8}, {3, 4}, {2, 8}}));
}

TEST(NoPixels, NeedNoRoom) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    EXPECT_EQ(chart.getMultiLines(0, 2, 20, 0, nullptr), 1);
    EXPECT_EQ(chart.getMultiLines(1, 0, 0, 20, nullptr), 1);
    EXPECT_EQ(chart.getAALine(0, 0, 0, nullptr, 2, 2), 1);
    EXPECT_EQ(chart.getAALine(0, 0, 5, nullptr, 6, 2), 1);
    for (const int width : {0, -20}) {
        chart.CloseZellap();
        ASSERT_EQ(chart.open(samples::chart_bytes(text_of_size(width, 1), 4, {"\x01"})), 1);
        EXPECT_EQ(chart.getLine(0, nullptr), 1);
    }
}

// Runs are filled in ways of their own by their length, on either side of each bound.
TEST(RunsOfAnyLength, FillALine) {
    std::vector<std::pair<int, int>> runs;
    std::string bytes;
    int width = 0;
    for (const int length : {1, 64, 65, 256, 257, 2048, 2049, 5000, 3}) {
        runs.emplace_back(static_cast<int>(runs.size()) + 1, length);
        append_run(bytes, 4, runs.back().first, length);
        width += length;
    }
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(chart_of_line(width, bytes)), 1);
    EXPECT_EQ(line_of(chart, 0), joined(runs));
    EXPECT_EQ(window_of(chart, 0, 1, 0, width), joined(runs));
}

struct LongRunRow {
    const char* name;
    std::string bytes;
    int length;  // as vNextCRL gives it
};

const LongRunRow kLongRunRows[] = {
    {"200 pixels", "\x91\x47", 200},
    {"value of 31 bits", "\x87\xFF\xFF\xFF\x7F", INT_MAX},
    {"value of 36 bits", "\x89\x80\x80\x80\x80\x01", INT_MAX},
    {"value of 60 bits", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F", INT_MAX},
    {"leading zero groups", std::string("\x90\x80\x80\x80\x80\x80\x80\x47", 8), 72},
};

TEST(LongRun, IsHeldAtTheLargestInt) {
    for (const LongRunRow& row : kLongRunRows) {
        SCOPED_TRACE(row.name);
        ChartUnderTest chart;
        ASSERT_EQ(chart.open(chart_of_line(20, row.bytes)), 1);
        const auto [colour, length] = first_run(chart, 0);
        EXPECT_EQ(length, row.length);
        GuardedPixels dest(20);
        EXPECT_EQ(chart.getLine(0, dest.data()), 0);
        EXPECT_TRUE(dest.untouched());
        EXPECT_EQ(window_of(chart, 0, 1, 13, 7), joined({{colour, 7}}));
    }
}

TEST(EndOfFile, GoesOnAsRunsOfTheHighestColour) {
    const int width = 21;
    ChartUnderTest chart;
    const std::string bytes = samples::chart_bytes(text_of_size(width, 3), 4, {"\x01", "\x01", "\x01"});
    ASSERT_EQ(chart.open(bytes), 1);
    const auto end = static_cast<std::int32_t>(bytes.size());
    const std::int32_t outside[] = {-1, end, INT32_MAX};
    std::copy(std::begin(outside), std::end(outside), chart.LineOffsets);
    for (int line = 0; line < 3; ++line) {
        SCOPED_TRACE(line);
        EXPECT_EQ(first_run(chart, line), std::pair(15, 8));
        // Runs of 8 do not fill 21 exactly.
        GuardedPixels dest(width);
        EXPECT_EQ(chart.getLine(line, dest.data()), 0);
        EXPECT_EQ(dest.pixels(), joined({{15, 16}, {kUntouched, 5}}));
        EXPECT_EQ(window_of(chart, line, 1, 0, width), joined({{15, width}}));
    }
}

using samples::Liberties;

struct LibertyRow {
    const char* name;
    void (*take)(Liberties& liberties);
};

const LibertyRow kLibertyRows[] = {
    {"plain", [](Liberties&) {}},
    {"lines in reverse", [](Liberties& liberties) { liberties.reversed_lines = true; }},
    {"gaps", [](Liberties& liberties) { liberties.gap_bytes = 5000; }},
    {"long numbers", [](Liberties& liberties) { liberties.number_bytes = 9; }},
    {"padded runs", [](Liberties& liberties) { liberties.padding_bytes = 7; }},
    {"runs of one pixel", [](Liberties& liberties) { liberties.longest_run = 1; }},
    {"padded runs of one pixel",
     [](Liberties& liberties) { liberties.longest_run = 1, liberties.padding_bytes = 7; }},
    {"LF", [](Liberties& liberties) { liberties.line_end = "\n"; }},
    {"0x1A twice", [](Liberties& liberties) { liberties.skipped_byte = 0x1A; }},
};

// Runs of 1 pixel to some hundreds, of every colour that the depth has; no two charts and no two lines alike.
samples::Chart random_chart(int bits_per_pixel) {
    samples::Chart chart;
    chart.width = 5003;
    chart.height = 5;
    chart.bits_per_pixel = bits_per_pixel;
    chart.draw = [bits_per_pixel](int line, unsigned char* pixels) {
        std::minstd_rand random(static_cast<unsigned>(line * 8 + bits_per_pixel));
        for (int x = 0; x < 5003;) {
            const auto colour = static_cast<unsigned char>((random() >> 5) % (1U << bits_per_pixel));
            const int end = std::min(5003, x + 1 + static_cast<int>((random() >> 5) % (1U << random() % 10)));
            for (; x < end; ++x)
                pixels[x] = colour;
        }
    };
    return chart;
}

TEST(WrittenChart, ReadsBackWhateverItsLayout) {
    for (const LibertyRow& row : kLibertyRows) {
        for (int bits = 1; bits <= 7; ++bits) {
            SCOPED_TRACE(std::string(row.name) + ", bits per pixel " + std::to_string(bits));
            samples::Chart drawn = random_chart(bits);
            row.take(drawn.liberties);
            ChartUnderTest chart;
            ASSERT_EQ(chart.open(samples::chart_bytes(drawn)), 1);
            const std::vector<int> all = window_of(chart, 0, drawn.height, 3, 4999);
            for (int line = drawn.height - 1; line >= 0; --line) {
                std::vector<unsigned char> pixels(static_cast<std::size_t>(drawn.width));
                drawn.draw(line, pixels.data());
                const std::vector<int> expected(pixels.begin(), pixels.end());
                ASSERT_EQ(line_of(chart, line), expected);
                ASSERT_EQ(window_of(chart, line, 1, 4000, 1003),
                          std::vector<int>(expected.begin() + 4000, expected.end()));
                ASSERT_TRUE(std::equal(expected.begin() + 3, expected.end() - 1, all.begin() + line * 4999));
            }
        }
    }
}

}  // namespace
