#include <algorithm>
#include <climits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <testing/chart_under_test.h>

namespace {

using namespace std::string_literals;

using ColourRun = std::pair<int, int>;  // colour and length

std::vector<int> window_of(ChartUnderTest& chart, int line, int lines, int col, int cols) {
    GuardedPixels dest(static_cast<std::size_t>(lines) * static_cast<std::size_t>(cols));
    EXPECT_EQ(chart.getMultiLines(line, lines, col, cols, dest.data()), 1);
    EXPECT_TRUE(dest.guards_untouched());
    return dest.pixels();
}

ColourRun run_at(ChartUnderTest& chart) {
    ColourRun run(-1, -1);
    chart.vNextCRL(&run.first, &run.second);
    return run;
}

// Compares all ways to read a line with its runs. The last run may pass the end of the line: getLine then
// returns 0 after the runs before it, and other functions cut it.
void expect_runs(ChartUnderTest& chart, int line, const std::vector<ColourRun>& runs) {
    const auto width = static_cast<std::size_t>(chart.Width);
    std::vector<int> complete;
    std::vector<int> cut;
    chart.seekLine(line);
    for (const auto& [colour, length] : runs) {
        EXPECT_EQ(run_at(chart), ColourRun(colour, length));
        const std::size_t end = cut.size() + static_cast<std::size_t>(length);
        cut.resize(std::min(end, width), colour);
        if (end <= width) complete = cut;
    }
    GuardedPixels dest(width);
    EXPECT_EQ(chart.getLine(line, dest.data()), complete.size() == width ? 1 : 0);
    EXPECT_TRUE(dest.guards_untouched());
    complete.resize(width, kUntouched);
    EXPECT_EQ(dest.pixels(), complete);
    EXPECT_EQ(window_of(chart, line, 1, 0, chart.Width), cut);
    EXPECT_EQ(window_of(chart, line, 1, chart.Width - 1, 1), std::vector<int>{cut.back()});
}

TEST(SmallChart, DecodesAsDrawn) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    EXPECT_EQ(chart.BitsPerPixel, 4);
    EXPECT_EQ(chart.ColourMask, 0x78);
    EXPECT_EQ(chart.RunMask, 0x07);
    EXPECT_EQ(chart.ColourShift, 3);
    EXPECT_EQ(chart.LineCount, 2);
    EXPECT_EQ(std::vector<int>(chart.LineOffsets, chart.LineOffsets + 3), (std::vector<int>{60, 65, 69}));
    expect_runs(chart, 0, {{1, 8}, {2, 12}});
    expect_runs(chart, 1, {{2, 20}});
    EXPECT_EQ(window_of(chart, 0, 2, 6, 4), (std::vector<int>{1, 1, 2, 2, 2, 2, 2, 2}));
    for (const long line : {-5L, LONG_MIN, 2L, LONG_MAX}) {
        chart.seekLine(line);
        EXPECT_EQ(run_at(chart), line < 0 ? ColourRun(1, 8) : ColourRun(2, 20)) << "nearest to " << line;
    }
}

// A derived class may read runs from a file of its own, without a line table.
TEST(NextRun, NeedsOnlyAFileAndMasks) {
    const TempFolder folder;
    ChartUnderTest chart;
    chart.ChartFile = std::fopen(folder.write("runs", "\x0F\x90\x0B").c_str(), "rb");
    ASSERT_NE(chart.ChartFile, nullptr);
    chart.ColourMask = 0x78;
    chart.RunMask = 0x07;
    chart.ColourShift = 3;
    EXPECT_EQ(run_at(chart), ColourRun(1, 8));
    EXPECT_EQ(run_at(chart), ColourRun(2, 12));
    chart.CloseZellap();
    EXPECT_EQ(run_at(chart), ColourRun(-1, -1));
}

TEST(NoPixels, NeedNoBuffer) {
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

struct RunRow {
    const char* name;
    int width;
    std::string bytes;
    std::vector<ColourRun> runs;
};

// Short, medium and long runs are filled differently: the first rows are on either side of each limit.
// clang-format off
const RunRow kRunRows[] = {
    // name                 width bytes                                   colours and lengths
    {"short",               386,  "\x08\x90\x3F\x98\x40\xA1\x7F",         {{1, 1}, {2, 64}, {3, 65}, {4, 256}}},
    {"medium",              2305, "\xAA\x00\xB0\x8F\x7F"s,                {{5, 257}, {6, 2048}}},
    {"long",                7052, "\x3A\xC0\x90\x00\xC8\xA7\x07"s,        {{7, 3}, {8, 2049}, {9, 5000}}},
    {"past the end",        20,   "\x0F\x1B\x90\x08",                     {{1, 8}, {3, 4}, {2, 9}}},
    {"200 pixels",          20,   "\x91\x47",                             {{2, 200}}},
    {"value of 31 bits",    20,   "\x87\xFF\xFF\xFF\x7F",                 {{0, INT_MAX}}},
    {"value of 36 bits",    20,   "\x89\x80\x80\x80\x80\x01",             {{1, INT_MAX}}},
    {"value of 60 bits",    20,   "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F", {{15, INT_MAX}}},
    {"leading zero groups", 20,   "\x90\x80\x80\x80\x80\x80\x80\x47",     {{2, 72}}},
};
// clang-format on

TEST(RunsOfAnyLength, FillALine) {
    for (const RunRow& row : kRunRows) {
        SCOPED_TRACE(row.name);
        ChartUnderTest chart;
        ASSERT_EQ(chart.open(samples::chart_bytes(text_of_size(row.width, 1), 4, {"\x01" + row.bytes})), 1);
        expect_runs(chart, 0, row.runs);
    }
}

TEST(EndOfFile, ReadsAsRunsOfTheHighestColour) {
    ChartUnderTest chart;
    const std::string bytes = samples::chart_bytes(text_of_size(21, 5), 4, {5, "\x01"});
    ASSERT_EQ(chart.open(bytes), 1);
    const auto end = static_cast<std::int32_t>(bytes.size());
    const std::int32_t outside[] = {-1, end - 1, INT32_MAX, end, 0};
    std::copy(std::begin(outside), std::end(outside), chart.LineOffsets);
    for (int line = 0; line < 4; ++line) {
        SCOPED_TRACE(line);
        expect_runs(chart, line, {{15, 8}, {15, 8}, {15, 8}});
    }
    expect_runs(chart, 4, {{9, 8}, {10, 4}, {5, 8}, {9, 7}});  // "OS/N" of the text
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

TEST(WrittenChart, DecodesInEveryLayout) {
    constexpr int kFirst = 4003;  // column of the windows
    for (const LibertyRow& row : kLibertyRows) {
        for (int bits = 1; bits <= 7; ++bits) {
            SCOPED_TRACE(std::string(row.name) + ", bits per pixel " + std::to_string(bits));
            samples::Chart drawn = random_chart(9000, 10, bits);
            row.take(drawn.liberties);
            ChartUnderTest chart;
            ASSERT_EQ(chart.open(samples::chart_bytes(drawn)), 1);
            const int columns = drawn.width - kFirst - 1;
            const std::vector<int> window = window_of(chart, 0, drawn.height, kFirst, columns);
            for (int line = drawn.height - 1; line >= 0; --line) {
                GuardedPixels expected(static_cast<std::size_t>(drawn.width));
                drawn.draw(line, expected.data());
                GuardedPixels pixels(expected.size());
                ASSERT_EQ(chart.getLine(line, pixels.data()), 1);
                ASSERT_TRUE(pixels.guards_untouched());
                ASSERT_EQ(pixels.pixels(), expected.pixels());
                ASSERT_TRUE(std::equal(expected.data() + kFirst, expected.data() + drawn.width - 1,
                                       window.begin() + line * columns));
            }
        }
    }
}

}  // namespace
