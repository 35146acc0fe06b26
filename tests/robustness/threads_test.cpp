#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <testing/chart_under_test.h>
#include <zellap10/zellap10.h>

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 20;

// The sum of results and pixels that one thread decodes in all rounds.
double decode(CZellap& chart) {
    double sum = 0.0;
    unsigned char pixels[40] = {};
    for (int round = 0; round < kRounds; ++round) {
        sum += chart.getLine(0, pixels) + chart.getMultiLines(0, 2, 0, 20, pixels) +
               chart.getAALine(1, 0, 20, pixels, 2, 1) + pixels[3] + pixels[30];
    }
    return sum;
}

// The sum of positions from a chart and from a projection record shared with other threads.
double convert(CZellap& chart, const PPARMS& shared) {
    double sum = chart.GetDocumentSize().cx + chart.ChartName[0];
    for (int round = 0; round < kRounds; ++round) {
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
        PALETTEENTRY entries[256] = {};
        sum += m_distance(40, -70, x, y) + GetPaletteEntries(chart.GetPaletteHandle(), 0, 256, entries);
    }
    return sum;
}

// Threads with their own charts and a shared projection record, and one thread that decodes a chart while
// another converts positions of it.
TEST(Threads, ShareWhatIsNotDecoded) {
    const TempFolder folder;
    PPARMS shared;
    for (const int code : {4, 3, 1})
        project_init2(code, 40, -70, 38, 42, 117, &shared);
    folder.write("c.GEO", "Point1=-70 40 0 0\nPoint2=-69 40 0 1000\nPoint3=-70 39 1000 0\nVertex=39 -70\n");
    const std::string path = folder.write("c.cht", small_chart());
    CZellap chart;
    ASSERT_EQ(chart.OpenZellap(path.c_str(), 0), 1);
    const double decoded = decode(chart);
    const double converted = convert(chart, shared);

    std::vector<double> sums(kThreads, 0.0);
    std::vector<std::thread> threads;
    threads.emplace_back([&] { sums[0] = decode(chart) + converted; });
    for (std::size_t i = 1; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            CZellap own;
            if (own.OpenZellap(path.c_str(), 0) == 1) sums[i] = decode(own) + convert(own, shared);
        });
    }
    EXPECT_EQ(convert(chart, shared), converted);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(sums, std::vector<double>(kThreads, decoded + converted));
}

}  // namespace
