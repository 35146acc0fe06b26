#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "../chart/chart_under_test.h"

#if !defined(_WIN32)
#include <sys/stat.h>

// A path that is no file, and files that do not stay what they were.

namespace {

namespace fs = std::filesystem;

// Nobody writes to it: a reader that waited for bytes would wait for ever.
TEST(Pipe, IsNoFile) {
    const TempFolder folder;
    ASSERT_EQ(mkfifo(folder.file("pipe.cht").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo(folder.file("c.GEO").c_str(), 0600), 0);
    ChartUnderTest chart;
    EXPECT_EQ(chart.OpenZellap(folder.file("pipe.cht").c_str(), 0), 0);
    EXPECT_EQ(chart.OpenZellap(folder.write("c.cht", small_chart()).c_str(), 0), 1);
    EXPECT_TRUE(chart.BaseRec.Points.IsEmpty());
}

TEST(Link, IsFollowed) {
    const TempFolder folder;
    const TempFolder other;
    fs::create_symlink(other.write("far.cht", small_chart()), folder.file("c.cht"));
    fs::create_symlink(other.write("far.txt", "Point1=1 2 3 4\n"), folder.file("c.GEO"));
    fs::create_symlink(other.file("missing"), folder.file("broken.cht"));
    ChartUnderTest chart;
    EXPECT_EQ(chart.OpenZellap(folder.file("broken.cht").c_str(), 0), 0);
    EXPECT_EQ(chart.OpenZellap(folder.file("c.cht").c_str(), 0), 1);
    EXPECT_EQ(chart.BaseRec.Points.GetCount(), 1);
}

// What was read ahead may still be the old file's; the rest is the new one's, or what stands for its end.
TEST(FileThatChanged, GivesPixelsAndNothingElse) {
    const struct {
        const char* name;
        std::size_t size;
    } rows[] = {
        {"emptied", 0},           {"cut in the text", 20}, {"cut in a line", 66},
        {"cut in the table", 70}, {"longer", 5000},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const TempFolder folder;
        const std::string path = folder.write("c.cht", small_chart());
        ChartUnderTest chart;
        ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1);
        fs::resize_file(path, row.size);
        GuardedPixels pixels(40);
        chart.getLine(1, pixels.data());
        EXPECT_TRUE(pixels.guards_untouched());
        EXPECT_EQ(chart.getMultiLines(0, 2, 0, 20, pixels.data()), 1);
        EXPECT_TRUE(pixels.guards_untouched());
        for (const int pixel : pixels.pixels())
            EXPECT_LT(pixel, 16);
        EXPECT_EQ(chart.getAALine(0, 0, 20, pixels.data(), 2, 2), 1);
    }
}

}  // namespace

#endif
