#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>
#include <utility>

#include "refused_charts.h"

namespace {

// Nothing that reads pixels does anything on an object that is not open.
void expect_no_pixels(ChartUnderTest& chart) {
    GuardedPixels dest(64);
    EXPECT_EQ(chart.getLine(0, dest.data()), 0);
    EXPECT_EQ(chart.getMultiLines(0, 0, 0, 0, dest.data()), 0);
    EXPECT_EQ(chart.getMultiLines(0, 1, 0, 1, dest.data()), 0);
    EXPECT_EQ(chart.getAALine(0, 0, 1, dest.data(), 1, 1), 0);
    int colour = -1;
    int length = -1;
    chart.seekLine(0);
    chart.vNextCRL(&colour, &length);
    EXPECT_EQ(std::pair(colour, length), std::pair(-1, -1));
    EXPECT_TRUE(dest.untouched());
    EXPECT_EQ(chart.GetPaletteHandle(), nullptr);
}

TEST(ChartLife, GoesThroughItsStates) {
    ChartUnderTest chart;
    EXPECT_STREQ(chart.Version, "1.0");
    EXPECT_TRUE(chart.Path.IsEmpty());
    EXPECT_EQ(chart.LogPalette.palVersion, 0x300);
    EXPECT_EQ(chart.GetDocumentSize().cx, 0);
    expect_no_pixels(chart);
    chart.CloseZellap();

    ASSERT_EQ(chart.open(small_chart(), 1), 1);
    EXPECT_EQ(chart.GetDocumentSize().cx, 20);
    expect_no_pixels(chart);

    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(chart.open(small_chart()), 1);
        EXPECT_FALSE(chart.TextStream.is_open());
        EXPECT_NE(chart.GetPaletteHandle(), nullptr);
        GuardedPixels dest(20);
        EXPECT_EQ(chart.getLine(1, dest.data()), 1);
        chart.CloseZellap();
        chart.CloseZellap();
        EXPECT_EQ(chart.GetDocumentSize().cx, 20);
        EXPECT_EQ(chart.GetDocumentSize().cy, 2);
        EXPECT_STREQ(chart.ChartName, "SAMPLE");
        EXPECT_EQ(chart.BitsPerPixel, 4);
        EXPECT_EQ(chart.LogPalette.palNumEntries, 10);
        expect_no_pixels(chart);
    }
}

TEST(ChartPalette, ReachesTheCallerThroughItsHandle) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    PALETTEENTRY entries[256] = {};
    ASSERT_EQ(GetPaletteEntries(chart.GetPaletteHandle(), 0, 256, entries), 10u);
    EXPECT_EQ(entries[1].peRed, 255);
    EXPECT_EQ(entries[2].peBlue, 255);
    EXPECT_EQ(entries[3].peRed, 120);
}

TEST(UnsoundFile, IsRefusedAndLeavesTheObjectAsItWas) {
    for (const RefusedChart& row : kRefusedCharts) {
        SCOPED_TRACE(row.name);
        ChartUnderTest chart;
        EXPECT_EQ(chart.open(row.bytes), 0);
        EXPECT_EQ(chart.ChartFile, nullptr);
        EXPECT_EQ(chart.LineOffsets, nullptr);
        expect_no_pixels(chart);
        ASSERT_EQ(chart.open(small_chart()), 1) << "it can be used again";

        const std::FILE* file = chart.ChartFile;
        const HPALETTE palette = chart.GetPaletteHandle();
        EXPECT_EQ(chart.open(row.bytes), 0);
        EXPECT_EQ(chart.ChartFile, file) << "what was open stays open";
        EXPECT_EQ(chart.GetPaletteHandle(), palette);
    }
}

TEST(UnsoundFile, MayHoldATableThatReachesItsEnd) {
    // Three lines: the third offset is the tail pointer itself.
    ChartUnderTest chart;
    EXPECT_EQ(chart.open(small_chart_of_height("3")), 1);
    EXPECT_EQ(chart.LineOffsets[2], 69);
    EXPECT_EQ(chart.LineOffsets[3], 69);
}

TEST(MissingFile, IsRefused) {
    const TempFolder folder;
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart(), 1), 1);
    const std::string missing = folder.file("missing.cht");
    for (const int info_only : {0, 1}) {
        EXPECT_EQ(chart.OpenZellap(missing.c_str(), info_only), 0);
        EXPECT_STREQ(chart.Path, missing.c_str());
        EXPECT_EQ(chart.OpenZellap(nullptr, info_only), 0);
        EXPECT_STREQ(chart.Path, missing.c_str());
    }
    EXPECT_EQ(chart.OpenZellap(folder.file("").c_str(), 0), 0) << "a folder";
    // Each is a device on some system, that would be read without end, and missing on others.
    for (const char* const device : {"/dev/zero", "NUL", "CON"}) {
        EXPECT_EQ(chart.OpenZellap(device, 1), 0) << device;
    }
    EXPECT_EQ(chart.GetDocumentSize().cx, 20);
}

struct EmptyPictureRow {
    const char* name;
    const char* range;
};

const EmptyPictureRow kEmptyPictureRows[] = {
    {"no size", "NOS/NA=A"}, {"height 0", "NOS/RA=0,0,20,0"}, {"negative size", "NOS/RA=0,0,-20,-5"}};

TEST(EmptyPicture, OpensWithoutLines) {
    for (const EmptyPictureRow& row : kEmptyPictureRows) {
        SCOPED_TRACE(row.name);
        ChartUnderTest chart;
        ASSERT_EQ(chart.open(samples::chart_bytes(row.range + std::string("\n"), 4, {})), 1);
        EXPECT_EQ(chart.LineOffsets[0], static_cast<int>(std::string(row.range).size()) + 4);
        GuardedPixels dest(20);
        EXPECT_EQ(chart.getLine(0, dest.data()), 0);
        EXPECT_EQ(chart.getMultiLines(0, 1, 0, 1, dest.data()), 0);
        EXPECT_EQ(chart.getMultiLines(0, 0, 0, 0, dest.data()), 1);
        chart.seekLine(0);
        EXPECT_TRUE(dest.untouched());
    }
}

TEST(SecondHeader, NeverLeadsPastTheLineTable) {
    ChartUnderTest chart;
    ASSERT_EQ(chart.open(small_chart()), 1);
    ASSERT_EQ(chart.open(text_of_size(20, 1000), 1), 1);
    GuardedPixels dest(20);
    EXPECT_EQ(chart.getLine(1, dest.data()), 1);
    EXPECT_EQ(chart.getLine(2, dest.data()), 0);
    EXPECT_EQ(chart.getMultiLines(1, 2, 0, 5, dest.data()), 0);
    int colour = 0;
    int length = 0;
    chart.seekLine(999);
    chart.vNextCRL(&colour, &length);
    EXPECT_EQ(length, 20);
}

}  // namespace
