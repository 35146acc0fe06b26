#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <samples/chart_writer.h>
#include <testing/temp_folder.h>
#include <zellap10/chart/zellap.h>

// The time to open the most expensive files of 1 MiB, including their fits: less than a second of processor
// time each. A large file whose text has no end takes less than a tenth of a second.

namespace {

constexpr std::size_t kFileSize = 1 << 20;

// Repeats lines up to the size of the file.
std::string filled_with(const std::vector<std::string>& lines) {
    std::string text;
    for (std::size_t i = 0; text.size() + lines[i].size() <= kFileSize; i = (i + 1) % lines.size())
        text += lines[i];
    return text;
}

std::string point(const std::string& longitude, int latitude, int y, int x) {
    return "Point=" + longitude + " " + std::to_string(latitude) + " " + std::to_string(y) + " " +
           std::to_string(x) + "\n";
}

// Nearly all points are in the middle band, which belongs to both halves. Each is therefore fitted three
// times in each direction.
std::vector<std::string> points_in_the_band(int count, const std::string& odd_longitude) {
    std::vector<std::string> lines{point("1", 0, 0, 3), point("5", 9, 9, 7)};
    for (int i = 2; i < count; ++i) {
        const std::string longitude = i == 3 ? odd_longitude : std::to_string(i * 7 % 10);
        lines.push_back(point(longitude, 4 + i % 2, 4 + i * 3 % 2, i * 31 % 10));
    }
    return lines;
}

// An inset for every eleven points, the fewest with which both halves are fitted at the highest order.
std::string insets_of_points(const std::string& odd_longitude) {
    std::vector<std::string> lines = points_in_the_band(11, odd_longitude);
    lines.insert(lines.begin(), "[Inset\n");
    return filled_with(lines);
}

// A chart of 64 MiB without an end of the text, so that all of it is text.
std::string endless_text() {
    std::minstd_rand random(3);
    std::string mebibyte(kFileSize, '\0');
    for (char& c : mebibyte) {
        c = static_cast<char>(random() >> 8);
        if (c == 0x1A) c = 0x1B;
    }
    std::string text;
    for (int i = 0; i < 64; ++i)
        text += mebibyte;
    return text;
}

struct CostRow {
    const char* name;
    std::string chart;
    std::string geo;
    int result = 1;
};

std::vector<CostRow> cost_rows() {
    using samples::chart_bytes;
    const std::string small_chart = chart_bytes("NOS/RA=0,0,8,1\n", 4, {"\x01\x0F"});
    const std::string lines_of_one_byte =
        chart_bytes("NOS/RA=0,0,2147483647,200000\n", 4, std::vector<std::string>(200000, "\x01"));
    // clang-format off
    return {
        {"points in one list",              small_chart, filled_with(points_in_the_band(7000, "1"))},
        {"an infinity among them",          small_chart, filled_with(points_in_the_band(7000, "inf"))},
        {"points beyond a double's square", small_chart, filled_with(points_in_the_band(99, "1e308"))},
        {"points below a double's square",  small_chart, filled_with(points_in_the_band(99, "1e-160"))},
        {"points in insets",                small_chart, insets_of_points("1")},
        {"a NaN in each inset",             small_chart, insets_of_points("nan")},
        {"insets without points",           small_chart, filled_with({"[Inset\n", std::string(90, ' ') + "\n"})},
        {"text without a line end",         small_chart, std::string(kFileSize, 'P')},
        {"blanks",                          std::string(kFileSize, ' ') + small_chart, ""},
        {"records without an end",          filled_with({"NOS/NA=\n", " \n"}) + small_chart, ""},
        {"a header of many lines",          filled_with({"RGB\n"}) + small_chart, ""},
        {"wide lines of one byte",          lines_of_one_byte, ""},
        {"64 MiB without an end of text",   endless_text(), "", 0},
    };
    // clang-format on
}

void open_and_close(benchmark::State& state, const CostRow& row) {
    const TempFolder folder;
    folder.write("c.GEO", row.geo);
    const std::string path = folder.write("c.cht", row.chart);
    for (auto _ : state) {
        CZellap chart;
        if (chart.OpenZellap(path.c_str(), 0) != row.result)
            state.SkipWithError("unexpected result of OpenZellap");
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const std::vector<CostRow> rows = cost_rows();
    for (const CostRow& row : rows) {
        benchmark::RegisterBenchmark(row.name, [&row](benchmark::State& state) {
            open_and_close(state, row);
        })->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
