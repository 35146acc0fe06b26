#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include <zellap10/zellap10.h>

#include "../chart/chart_under_test.h"
#include "../support/temp_file.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 20;

// What one road from a file to positions gives, with some of all it touches in one number.
double walk(const std::string& path, const PPARMS& shared) {
    double sum = 0.0;
    CZellap chart;
    sum += chart.OpenZellap(path.c_str(), 0);
    unsigned char pixels[20] = {};
    for (int line = 0; line < 2; ++line) {
        sum += chart.getLine(line, pixels) + chart.getAALine(line, 0, 20, pixels, 2, 1) + pixels[3];
    }
    double x = 0.0;
    double y = 0.0;
    chart.GetBaseGeoRec()->wpxy(-69.6, 39.7, &x, &y);
    sum += x + y + chart.GetBaseGeoRec()->pwx(300, 200) + chart.GetBaseGeoRec()->deg2dms(x).GetLength();
    for (int code = 1; code <= 4; ++code) {
        project_f(code, &shared, 40.5, -69.5, &x, &y);
        project_i(code, &shared, x, y, &x, &y);
        sum += x + y;
    }
    datum_to_WGS(&x, &y, &sum, 38);
    return sum + m_distance(40, -70, x, y);
}

TEST(EightThreads, WalkTheirOwnChartsThroughSharedRecords) {
    const TempFolder folder;
    PPARMS shared;
    project_init2(4, 40, -70, 38, 42, 117, &shared);
    project_init2(3, 40, -70, 38, 42, 117, &shared);
    project_init2(1, 40, -70, 38, 42, 117, &shared);
    std::vector<std::string> paths;
    for (int i = 0; i < kThreads; ++i) {
        const std::string name = "chart" + std::to_string(i);
        folder.write(name + ".GEO",
                     "Point1=-70 40 0 0\nPoint2=-69 40 0 1000\nPoint3=-70 39 1000 0\nVertex=39 -70\n");
        paths.push_back(folder.write(name + ".cht", small_chart()));
    }
    const double expected = walk(paths[0], shared);
    std::vector<int> equal(kThreads, 0);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < kRounds; ++round)
                equal[i] += walk(paths[i], shared) == expected;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(equal, std::vector<int>(kThreads, kRounds));
}

// One thread decodes, another converts and reads what the chart holds.
TEST(TwoThreads, ShareAChartThatOneDecodes) {
    const TempFolder folder;
    folder.write("c.GEO", "Point1=-70 40 0 0\nPoint2=-69 40 0 1000\nPoint3=-70 39 1000 0\n");
    CZellap chart;
    ASSERT_EQ(chart.OpenZellap(folder.write("c.cht", small_chart()).c_str(), 0), 1);
    int decoded = 0;
    std::thread decoder([&] {
        unsigned char pixels[40] = {};
        for (int round = 0; round < kRounds; ++round) {
            decoded += chart.getLine(0, pixels) + chart.getMultiLines(0, 2, 0, 20, pixels) +
                       chart.getAALine(0, 0, 20, pixels, 2, 2);
        }
    });
    for (int round = 0; round < kRounds; ++round) {
        PALETTEENTRY entries[256] = {};
        EXPECT_GT(GetPaletteEntries(chart.GetPaletteHandle(), 0, 256, entries), 2u);
        EXPECT_NEAR(chart.GetBaseGeoRec()->pwx(250, 0), -69.75, 1e-9);
        EXPECT_EQ(chart.GetDocumentSize().cx, 20);
        EXPECT_STREQ(chart.ChartName, "SAMPLE");
    }
    decoder.join();
    EXPECT_EQ(decoded, 3 * kRounds);
}

}  // namespace
