#include <gtest/gtest.h>

#include <string>

#include "chart_under_test.h"

namespace {

// Reads all that a chart of these bytes gives; the guards around each buffer must stand.
void read_everything(const std::string& bytes) {
    ChartUnderTest chart;
    if (chart.open(bytes) == 0) return;
    // Damage can make the picture huge; the lines that matter are those of a small one.
    if (chart.Width > 4096) return;
    const auto width = static_cast<std::size_t>(std::max(chart.Width, 0));
    GuardedPixels dest(width);
    for (int line = 0; line < chart.Height; ++line) {
        chart.getLine(line, dest.data());
        ASSERT_EQ(chart.getMultiLines(line, 1, 0, chart.Width, dest.data()), 1);
        ASSERT_EQ(chart.getAALine(line, 0, std::max(chart.Width, 0), dest.data(), 3, 1), 1);
        ASSERT_TRUE(dest.guards_untouched());
    }
}

std::string chart_with_all_kinds_of_lines() {
    std::string runs = "\x01";
    samples::append_run(runs, 4, 3, 1);
    samples::append_run(runs, 4, 5, 300);
    samples::append_run(runs, 4, 6, 11, 3);
    return samples::chart_bytes(text_of_size(312, 3), 4, {runs, runs, runs});
}

TEST(DamagedChart, EndsWellAtEveryLength) {
    const std::string bytes = chart_with_all_kinds_of_lines();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        SCOPED_TRACE(length);
        read_everything(bytes.substr(0, length));
    }
}

TEST(DamagedChart, EndsWellWithAnyByteChanged) {
    for (const int change : {0x01, 0x80, 0xFF, 0x1A}) {
        const std::string bytes = chart_with_all_kinds_of_lines();
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            SCOPED_TRACE(i);
            std::string damaged = bytes;
            damaged[i] = static_cast<char>(static_cast<unsigned char>(damaged[i]) ^ change);
            read_everything(damaged);
        }
    }
}

}  // namespace
