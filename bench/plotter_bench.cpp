#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <samples/chart_writer.h>
#include <samples/geo_writer.h>
#include <testing/chart_under_test.h>
#include <testing/point_lists.h>
#include <testing/temp_folder.h>
#include <zellap10/plotter/plotter.h>

// The plotter target on the dynamic library, as in an application.

namespace {

using zellap10::plotter::Argb;
using zellap10::plotter::Catalogue;
using zellap10::plotter::colours_of;
using zellap10::plotter::Georeference;
using zellap10::plotter::Position;
using zellap10::plotter::Viewport;

// A chart of two degrees by two with 16 points.
void fit(CGEORec& record, const char* projection) {
    for (int x = 0; x <= 9000; x += 3000) {
        for (int y = 0; y <= 9000; y += 3000)
            add_points(record, {{x, y, -70 + x / 4500.0, 42 - y / 4500.0 - 1e-10 * y * y}});
    }
    add_vertex(record, -70, 42);
    add_vertex(record, -68, 40);
    record.Projection = projection;
    record.solvepoly();
}

template <class Use>
void at_positions(benchmark::State& state, const char* projection, Use use) {
    CGEORec record;
    fit(record, projection);
    const Georeference georeference = Georeference::from(record).value();
    double step = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(use(record, georeference, Position{42 - step, -70 + step}));
        step = step < 2 ? step + 1e-4 : 0;
    }
}

void wpxy(benchmark::State& state, const char* projection) {
    at_positions(state, projection, [](const CGEORec& record, const Georeference&, Position position) {
        double x = 0.0;
        double y = 0.0;
        record.wpxy(position.longitude, position.latitude, &x, &y);
        return x + y;
    });
}

void plotter_pixel_of(benchmark::State& state, const char* projection) {
    at_positions(state, projection, [](const CGEORec&, const Georeference& georeference, Position position) {
        return georeference.pixel_of(position)->x;
    });
}

void plotter_position_of(benchmark::State& state, const char* projection) {
    at_positions(state, projection, [](const CGEORec&, const Georeference& georeference, Position position) {
        return georeference.position_of({1e4 * (position.longitude + 70), 1e4 * (42 - position.latitude)})
            ->latitude;
    });
}

constexpr int kFiles = 500;

// Charts with one inset each, as large as the sample charts, all over the oceans.
class Charts {
public:
    Charts() {
        samples::Chart chart;
        chart.width = 5000;
        chart.height = 4000;
        chart.colours.resize(15);
        chart.draw = [](int line, unsigned char* pixels) {
            for (int x = 0; x < 5000; ++x)
                pixels[x] = static_cast<unsigned char>(1 + (x / 25 + line / 50) % 15);
        };
        const std::string bytes = samples::chart_bytes(chart);
        for (int i = 0; i < kFiles; ++i) {
            const std::string stem = std::to_string(i);
            const double west = -180.0 + i % 100 * 3.6;
            const double south = -60.0 + i / 100 * 24.0;
            paths.push_back(folder_.write(stem + ".chart", bytes));
            folder_.write(stem + ".GEO", samples::geo_text({section(south, west, 6.0, 4800),
                                                            {section(south + 1, west + 1, 0.5, 600)},
                                                            "\r\n"}));
        }
    }
    std::string folder() const { return folder_.file(""); }
    std::vector<std::string> paths;

private:
    // A square with 25 points and the entries of a sample chart.
    static samples::GeoSection section(double south, double west, double degrees, int pixels) {
        samples::GeoSection result;
        for (const char* const key :
             {"Name", "Scale", "Resolution", "Id", "Type", "Source", "Country", "Projection", "PP", "P1",
              "Latitude Offset", "Longitude Offset", "Datum"}) {
            result.entries.push_back({key, std::to_string(west)});
        }
        const double north = south + degrees;
        const double east = west + degrees;
        result.vertices = {{north, west}, {north, east}, {south, east}, {south, west}};
        for (int i = 0; i < 25; ++i) {
            const double across = i % 5 / 4.0;
            const double down = i / 5 / 4.0;
            result.points.push_back({west + across * degrees, north - down * degrees,
                                     static_cast<int>(across * pixels), static_cast<int>(down * pixels)});
        }
        return result;
    }

    TempFolder folder_;
};

void open_500_files(benchmark::State& state) {
    const Charts charts;
    for (auto _ : state) {
        for (const std::string& path : charts.paths) {
            CZellap chart;
            benchmark::DoNotOptimize(chart.OpenZellap(path.c_str(), 1));
        }
    }
}
BENCHMARK(open_500_files)->Unit(benchmark::kMillisecond);

void catalogue_500_files(benchmark::State& state) {
    const Charts charts;
    for (auto _ : state) {
        Catalogue catalogue;
        if (catalogue.add_folder(charts.folder()).added != kFiles) state.SkipWithError("charts are missing");
    }
}
BENCHMARK(catalogue_500_files)->Unit(benchmark::kMillisecond);

// 10,000 charts with one inset each.
const Catalogue& large_catalogue() {
    static const Catalogue catalogue = [] {
        const Charts charts;
        Catalogue filled;
        for (int i = 0; i < 10000 / kFiles; ++i)
            filled.add_folder(charts.folder());
        return filled;
    }();
    return catalogue;
}

void catalogue_position(benchmark::State& state) {
    const Catalogue& catalogue = large_catalogue();
    double step = 0.0;
    std::size_t most = 0;
    for (auto _ : state) {
        most = std::max(most, catalogue.covering({-55.0 + step, -170.0 + 3 * step}).size());
        step = step < 100 ? step + 0.37 : 0;
    }
    state.counters["most_found"] = static_cast<double>(most);
}
BENCHMARK(catalogue_position)->Unit(benchmark::kMicrosecond);

void catalogue_extent(benchmark::State& state) {
    const Catalogue& catalogue = large_catalogue();
    const double degrees = static_cast<double>(state.range(0));
    std::size_t most = 0;
    for (auto _ : state)
        most = std::max(
            most, catalogue.overlapping({-9 - 0.5 * degrees, -9 + 0.5 * degrees, -170, degrees}).size());
    state.counters["most_found"] = static_cast<double>(most);
}
BENCHMARK(catalogue_extent)->Arg(2)->Arg(20)->Arg(180)->Unit(benchmark::kMicrosecond);

constexpr int kWindowWidth = 1920;
constexpr int kWindowHeight = 1080;
constexpr int kMostReduced = 4;

// A chart of the window's size at the largest reduction, with runs of 20 pixels.
class WindowChart : public ChartUnderTest {
public:
    WindowChart() {
        samples::Chart chart;
        chart.width = kWindowWidth * kMostReduced;
        chart.height = kWindowHeight * kMostReduced;
        for (int i = 1; i < 16; ++i)
            chart.colours.push_back({i * 17, 255 - i * 17, 128});
        chart.draw = [&chart](int line, unsigned char* pixels) {
            for (int x = 0; x < chart.width; ++x)
                pixels[x] = static_cast<unsigned char>((x / 20 + line / 9) % 15 + 1);
        };
        open(samples::chart_bytes(chart));
    }
};

// The lines of a window, decoded by the library alone.
void window_lines(benchmark::State& state) {
    WindowChart chart;
    const int factor = static_cast<int>(state.range(0));
    std::vector<unsigned char> line(kWindowWidth);
    for (auto _ : state) {
        for (int y = 0; y < kWindowHeight; ++y) {
            if (factor == 1)
                chart.getMultiLines(y, 1, 0, kWindowWidth, line.data());
            else
                chart.getAALine(y * factor, 0, kWindowWidth * factor, line.data(), factor, factor);
        }
    }
}
BENCHMARK(window_lines)->Arg(1)->Arg(2)->Arg(kMostReduced)->Unit(benchmark::kMillisecond);

void window_drawn(benchmark::State& state) {
    WindowChart chart;
    const Viewport viewport{0, 0, static_cast<int>(state.range(0)), kWindowWidth, kWindowHeight};
    const auto colours = colours_of(chart);
    std::vector<Argb> pixels(kWindowWidth * kWindowHeight);
    for (auto _ : state) {
        if (!draw_viewport(chart, viewport, colours, 0,
                           {pixels.data(), kWindowWidth, kWindowHeight, kWindowWidth * 4}))
            state.SkipWithError("the chart cannot be read");
    }
}
BENCHMARK(window_drawn)->Arg(1)->Arg(2)->Arg(kMostReduced)->Unit(benchmark::kMillisecond);

constexpr const char* kProjections[][2] = {{"direct", ""},
                                           {"mercator", "MERCATOR"},
                                           {"polyconic", "POLYCONIC"},
                                           {"transverse_mercator", "UTM"},
                                           {"lambert", "LAMBERT"}};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const auto& [name, projection] : kProjections) {
        const std::string suffix = std::string("/") + name;
        benchmark::RegisterBenchmark(("wpxy" + suffix).c_str(), wpxy, projection);
        benchmark::RegisterBenchmark(("pixel_of" + suffix).c_str(), plotter_pixel_of, projection);
        benchmark::RegisterBenchmark(("position_of" + suffix).c_str(), plotter_position_of, projection);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
