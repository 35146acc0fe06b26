#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include <samples/chart_writer.h>
#include <samples/geo_writer.h>
#include <testing/temp_folder.h>
#include <zellap10/plotter/quilt.h>

// Frames of 1920 by 1080 pixels with all chart data decoded, next to a plain bilinear loop over one sheet;
// and the start with a folder of 10,000 charts.

namespace {

using namespace zellap10::plotter;
using Clock = std::chrono::steady_clock;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr double kDegreesPerPixel = 0.0005;  // 56 m at the equator

class Screen {
public:
    Bitmap bitmap() { return {pixels_.data(), kWidth, kHeight, kWidth * 4}; }

private:
    std::vector<Argb> pixels_ = std::vector<Argb>(kWidth * kHeight);
};

// What everybody writes first: four pixels, three channels, one affine map over one sheet in memory.
void plain_bilinear(benchmark::State& state) {
    constexpr int kSheet = 4096;
    std::vector<Argb> sheet(kSheet * kSheet);
    for (std::size_t i = 0; i < sheet.size(); ++i)
        sheet[i] = static_cast<Argb>(i * 2654435761U);
    std::vector<Argb> pixels(kWidth * kHeight);
    const double degrees = static_cast<double>(state.range(0));
    const double along = 1.4 * std::cos(degrees / 57.2958);
    const double aside = 1.4 * std::sin(degrees / 57.2958);
    for (auto _ : state) {
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const double u = 1400.0 + x * along - y * aside * 0.5;
                const double v = 10.0 + x * aside + y * along;
                const int column = static_cast<int>(u);
                const int row = static_cast<int>(v);
                const auto right = static_cast<Argb>((u - column) * 256.0);
                const auto down = static_cast<Argb>((v - row) * 256.0);
                const Argb* const at = &sheet[static_cast<std::size_t>((row * kSheet + column) & 0xFFEFFF)];
                Argb pixel = 0xFF000000;
                for (int shift = 0; shift < 24; shift += 8) {
                    const auto part = [&](int i) { return at[i] >> shift & 0xFF; };
                    const Argb upper = part(0) * (256 - right) + part(1) * right;
                    const Argb lower = part(kSheet) * (256 - right) + part(kSheet + 1) * right;
                    pixel |= (upper * (256 - down) + lower * down) >> 16 << shift;
                }
                pixels[static_cast<std::size_t>(y * kWidth + x)] = pixel;
            }
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(plain_bilinear)->Arg(0)->Arg(37)->Unit(benchmark::kMillisecond);

void write_chart(const TempFolder& folder, const std::string& stem, double south, double west, int width,
                 int height) {
    samples::Chart chart;
    chart.width = width;
    chart.height = height;
    for (int i = 1; i < 16; ++i)
        chart.colours.push_back({i * 17, 255 - i * 17, 128});
    chart.draw = [width](int line, unsigned char* pixels) {
        for (int x = 0; x < width; ++x)
            pixels[x] = static_cast<unsigned char>((x / 20 + line / 9) % 15 + 1);
    };
    folder.write(stem + ".chart", samples::chart_bytes(chart));
    samples::GeoFile file;
    for (int i = 0; i < 9; ++i) {
        const int x = (width - 1) * (i % 3) / 2;
        const int y = (height - 1) * (i / 3) / 2;
        file.chart.points.push_back(
            {west + x * kDegreesPerPixel, south + (height - 1 - y) * kDegreesPerPixel, x, y});
    }
    for (const std::size_t corner : {0U, 2U, 8U, 6U})
        file.chart.vertices.push_back({file.chart.points[corner].lat, file.chart.points[corner].lon});
    folder.write(stem + ".GEO", samples::geo_text(file));
}

// 1 chart of 6000 by 4000 pixels, or 8 that divide its area; the view is in its middle.
class Charts {
public:
    explicit Charts(int count) {
        const int across = count == 1 ? 1 : 4;
        const int down = count == 1 ? 1 : 2;
        for (int i = 0; i < count; ++i) {
            write_chart(folder_, std::to_string(i), 10.0 + i / across * 2.0 / down, i % across * 3.0 / across,
                        6000 / across + 2, 4000 / down + 2);
        }
        catalogue = std::make_shared<Catalogue>();
        catalogue->add_folder(folder_.file(""));
    }
    std::shared_ptr<Catalogue> catalogue;

private:
    TempFolder folder_;
};

MapView view_of(double reduction, double course) {
    const double metres = reduction * kDegreesPerPixel * 111300.0;
    return MapView({11.0, 1.5}, metres, {kWidth, kHeight}, course);
}

Quilt::Options options_of(int threads) {
    Quilt::Options options;
    options.threads = threads;
    return options;
}

// Reduction in tenths, course, charts, threads.
void frame(benchmark::State& state) {
    const Charts charts(static_cast<int>(state.range(2)));
    Quilt quilt(charts.catalogue, options_of(static_cast<int>(state.range(3))));
    const MapView view =
        view_of(static_cast<double>(state.range(0)) / 10.0, static_cast<double>(state.range(1)));
    Screen screen;
    quilt.draw_complete(view, ColourScheme::kDay, 0, screen.bitmap());
    Argb background = 0;
    for (auto _ : state) {
        if (!quilt.draw(view, ColourScheme::kDay, ++background, screen.bitmap()).complete)
            state.SkipWithError("data is missing");
    }
}
BENCHMARK(frame)
    ->ArgNames({"tenths", "course", "charts", "threads"})
    ->ArgsProduct({{7, 14}, {0, 37}, {1, 8}, {1, 2}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void pan_of_40_pixels(benchmark::State& state) {
    const Charts charts(1);
    Quilt quilt(charts.catalogue, options_of(1));
    MapView view = view_of(1.4, static_cast<double>(state.range(0)));
    Screen screen;
    for (const double dx : {0.0, 40.0}) {
        quilt.draw_complete(view.moved_by(dx, 0.0), ColourScheme::kDay, 0, screen.bitmap());
        quilt.draw(view.moved_by(dx, 0.0), ColourScheme::kDay, 0, screen.bitmap());
    }
    double dx = -40.0;
    view = view.moved_by(40.0, 0.0);
    for (auto _ : state) {
        view = view.moved_by(dx, 0.0);
        dx = -dx;
        if (!quilt.draw(view, ColourScheme::kDay, 0, screen.bitmap()).complete)
            state.SkipWithError("data is missing");
    }
}
BENCHMARK(pan_of_40_pixels)->Arg(0)->Arg(37)->Unit(benchmark::kMillisecond);

void scale_change_of_5_percent(benchmark::State& state) {
    const Charts charts(1);
    Quilt quilt(charts.catalogue, options_of(1));
    const MapView view = view_of(1.4, static_cast<double>(state.range(0)));
    const MapView closer = view.zoomed(1.05, {960, 540});
    Screen screen;
    quilt.draw_complete(view, ColourScheme::kDay, 0, screen.bitmap());
    bool is_closer = false;
    for (auto _ : state) {
        is_closer = !is_closer;
        if (!quilt.draw(is_closer ? closer : view, ColourScheme::kDay, 0, screen.bitmap()).complete)
            state.SkipWithError("data is missing");
    }
}
BENCHMARK(scale_change_of_5_percent)->Arg(0)->Arg(37)->Unit(benchmark::kMillisecond);

// 100 by 100 charts of 250 by 200 pixels.
class ManyCharts {
public:
    ManyCharts() {
        for (int i = 0; i < 10000; ++i)
            write_chart(folder_, std::to_string(i), i / 100 * 0.1 + 6, i % 100 * 0.125 - 5, 251, 201);
    }
    std::string folder() const { return folder_.file(""); }
    std::string saved() const { return folder_.file("catalogue"); }

private:
    TempFolder folder_;
};

const ManyCharts& many_charts() {
    static const ManyCharts charts;
    return charts;
}

// From nothing to the first complete frame; with 1 from a saved catalogue.
void start_with_10000_charts(benchmark::State& state) {
    const ManyCharts& charts = many_charts();
    Screen screen;
    for (auto _ : state) {
        auto catalogue = std::make_shared<Catalogue>();
        if (state.range(0) == 1 && !catalogue->load(charts.saved())) state.SkipWithError("nothing is saved");
        catalogue->add_folder(charts.folder());
        state.PauseTiming();
        catalogue->save(charts.saved());
        state.ResumeTiming();
        Quilt quilt(catalogue);
        quilt.draw_complete(view_of(1.4, 0.0), ColourScheme::kDay, 0, screen.bitmap());
    }
}
BENCHMARK(start_with_10000_charts)
    ->ArgName("saved")
    ->Arg(0)
    ->Arg(1)
    ->Iterations(3)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// Pans by 40 pixels while charts come into view; `worst` is the slowest frame, in milliseconds.
void pan_over_10000_charts(benchmark::State& state) {
    auto catalogue = std::make_shared<Catalogue>();
    catalogue->load(many_charts().saved());
    catalogue->add_folder(many_charts().folder());
    Quilt quilt(catalogue);
    Screen screen;
    MapView view = view_of(static_cast<double>(state.range(0)) / 10.0, static_cast<double>(state.range(1)));
    double worst = 0.0;
    int frames = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        quilt.draw(view, ColourScheme::kDay, 0, screen.bitmap());
        worst = std::max(worst, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        view = view.moved_by(++frames / 50 % 2 == 0 ? 40.0 : -40.0, 0.0);
        state.PauseTiming();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));  // as a screen does
        state.ResumeTiming();
    }
    state.counters["worst"] = worst;
}
BENCHMARK(pan_over_10000_charts)
    ->ArgNames({"tenths", "course"})
    ->Args({14, 0})
    ->Args({14, 37})
    ->Args({60, 0})
    ->Iterations(150)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
