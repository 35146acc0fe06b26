#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <testing/chart_under_test.h>

#if !defined(_WIN32)
#include <sys/stat.h>

// Folders, devices, pipes and links.

namespace {

namespace fs = std::filesystem;

// Nobody writes to the pipe: a reader that waits for bytes never returns.
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

}  // namespace

#endif
