#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <ctime>
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

// Frames of 1920 by 1080 pixels with all chart data decoded, each next to a
// plain bilinear loop over one sheet; and the start with a folder of 10,000
// charts. `of_plain` is the processor time of a frame, of all threads, in those
// of the plain loop, which runs between the frames.

namespace {

using namespace zellap10::plotter;
using Clock = std::chrono::steady_clock;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kManyCharts = 10000;
constexpr double kDegreesPerPixel = 0.0005;  // 56 m at the equator

class Screen {
public:
    Bitmap bitmap() { return {pixels_.data(), kWidth, kHeight, kWidth * 4}; }

private:
    std::vector<Argb> pixels_ = std::vector<Argb>(kWidth * kHeight);
};

// What everybody writes first: four pixels of one sheet in memory, one affine
// map, integers of 16.16 bits, two channels at once.
class PlainLoop {
public:
    PlainLoop() : sheet_(kSheet * kSheet), pixels_(kWidth * kHeight) {
        for (std::size_t i = 0; i < sheet_.size(); ++i)
            sheet_[i] = static_cast<Argb>(i * 2654435761U);
    }

    void draw(double degrees) {
        const auto along = static_cast<std::uint32_t>(1.4 * 65536.0 * std::cos(degrees / 57.2958));
        const auto aside = static_cast<std::uint32_t>(1.4 * 65536.0 * std::sin(degrees / 57.2958));
        Argb* dest = pixels_.data();
        for (std::uint32_t y = 0; y < kHeight; ++y) {
            std::uint32_t u = (1400U << 16) - y * aside;
            std::uint32_t v = (10U << 16) + y * along;
            for (int x = 0; x < kWidth; ++x, u += along, v += aside) {
                const Argb* const at = &sheet_[(v >> 16) * kSheet + (u >> 16)];
                const Argb upper = mixed(at[0], at[1], u >> 8 & 0xFF);
                const Argb lower = mixed(at[kSheet], at[kSheet + 1], u >> 8 & 0xFF);
                *dest++ = 0xFF000000 | mixed(upper, lower, v >> 8 & 0xFF);
            }
        }
        benchmark::DoNotOptimize(pixels_.data());
        benchmark::ClobberMemory();
    }

private:
    static constexpr std::uint32_t kSheet = 4096;

    static Argb mixed(Argb a, Argb b, Argb share) {
        const Argb red_blue = ((a & 0xFF00FF) * (256 - share) + (b & 0xFF00FF) * share) >> 8 & 0xFF00FF;
        return red_blue | (((a >> 8 & 0xFF) * (256 - share) + (b >> 8 & 0xFF) * share) & 0xFF00);
    }

    std::vector<Argb> sheet_;
    std::vector<Argb> pixels_;
};

PlainLoop& plain_loop() {
    static PlainLoop loop;
    return loop;
}

void plain_bilinear(benchmark::State& state) {
    for (auto _ : state)
        plain_loop().draw(static_cast<double>(state.range(0)));
}
BENCHMARK(plain_bilinear)->Arg(0)->Arg(37)->Unit(benchmark::kMillisecond);

// Runs a row, with a frame of the plain loop after each frame.
template <class Draw>
void beside_plain_loop(benchmark::State& state, double course, Draw draw) {
    std::clock_t own = 0;
    std::clock_t plain = 0;
    for (auto _ : state) {
        const std::clock_t start = std::clock();
        if (!draw()) state.SkipWithError("data is missing");
        own += std::clock() - start;
        state.PauseTiming();
        const std::clock_t plain_start = std::clock();
        plain_loop().draw(course);
        plain += std::clock() - plain_start;
        state.ResumeTiming();
    }
    state.counters["of_plain"] =
        static_cast<double>(own) / static_cast<double>(std::max<std::clock_t>(plain, 1));
}

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

// 100 by 100 charts of 250 by 200 pixels.
class ManyCharts {
public:
    ManyCharts() {
        for (int i = 0; i < kManyCharts; ++i)
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

// 1 chart of 6000 by 4000 pixels, or 8 that divide its area; the view is in its
// middle.
class Charts {
public:
    explicit Charts(int count) {
        catalogue = std::make_shared<Catalogue>();
        if (count == kManyCharts) {
            catalogue->add_folder(many_charts().folder());
            return;
        }
        const int across = count == 1 ? 1 : 4;
        const int down = count == 1 ? 1 : 2;
        for (int i = 0; i < count; ++i) {
            write_chart(folder_, std::to_string(i), 10.0 + i / across * 2.0 / down, i % across * 3.0 / across,
                        6000 / across + 2, 4000 / down + 2);
        }
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

void frame(benchmark::State& state) {
    const Charts charts(static_cast<int>(state.range(2)));
    Quilt quilt(charts.catalogue, options_of(static_cast<int>(state.range(3))));
    const auto course = static_cast<double>(state.range(1));
    const MapView view = view_of(static_cast<double>(state.range(0)) / 10.0, course);
    Screen screen;
    quilt.draw_complete(view, ColourScheme::kDay, 0, screen.bitmap());
    Argb background = 0;
    beside_plain_loop(state, course, [&] {
        return quilt.draw(view, ColourScheme::kDay, ++background, screen.bitmap()).complete;
    });
}
BENCHMARK(frame)
    ->ArgNames({"tenths", "course", "charts", "threads"})
    ->ArgsProduct({{7, 14}, {0, 37}, {1, 8}, {1, 2}})
    ->ArgsProduct({{14}, {0, 37}, {kManyCharts}, {1, 2}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// Draws two views in turn.
void change_of_view(benchmark::State& state, const MapView& view, const MapView& other) {
    const Charts charts(static_cast<int>(state.range(1)));
    Quilt quilt(charts.catalogue, options_of(static_cast<int>(state.range(2))));
    Screen screen;
    for (const MapView* const each : {&view, &other}) {
        quilt.draw_complete(*each, ColourScheme::kDay, 0, screen.bitmap());
        quilt.draw(*each, ColourScheme::kDay, 0, screen.bitmap());
    }
    bool is_other = true;
    beside_plain_loop(state, view.course_up(), [&] {
        is_other = !is_other;
        return quilt.draw(is_other ? other : view, ColourScheme::kDay, 0, screen.bitmap()).complete;
    });
}

void pan_of_40_pixels(benchmark::State& state) {
    const MapView view = view_of(1.4, static_cast<double>(state.range(0)));
    change_of_view(state, view, view.moved_by(40.0, 0.0));
}

void scale_change_of_5_percent(benchmark::State& state) {
    const MapView view = view_of(1.4, static_cast<double>(state.range(0)));
    change_of_view(state, view, view.zoomed(1.05, {960, 540}));
}
BENCHMARK(pan_of_40_pixels)
    ->ArgNames({"course", "charts", "threads"})
    ->ArgsProduct({{0, 37}, {1, 8}, {1, 2}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(scale_change_of_5_percent)
    ->ArgNames({"course", "charts", "threads"})
    ->ArgsProduct({{0, 37}, {1, 8}, {1, 2}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

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

// Pans by 40 pixels while charts come into view, from a complete view on; `worst` is the slowest frame, in
// milliseconds.
void pan_over_10000_charts(benchmark::State& state) {
    auto catalogue = std::make_shared<Catalogue>();
    catalogue->load(many_charts().saved());
    catalogue->add_folder(many_charts().folder());
    Quilt::Options options;
    options.threads = options.workers = static_cast<int>(state.range(2));
    Quilt quilt(catalogue, options);
    Screen screen;
    MapView view = view_of(static_cast<double>(state.range(0)) / 10.0, static_cast<double>(state.range(1)));
    while (!quilt.draw(view, ColourScheme::kDay, 0, screen.bitmap()).complete)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    double worst = 0.0;
    int frames = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        quilt.draw(view, ColourScheme::kDay, 0, screen.bitmap());
        worst = std::max(worst, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        view = view.moved_by(frames++ / 75 % 2 == 0 ? 40.0 : -40.0, 0.0);
        state.PauseTiming();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));  // as a screen does
        state.ResumeTiming();
    }
    state.counters["worst"] = worst;
}
BENCHMARK(pan_over_10000_charts)
    ->ArgNames({"tenths", "course", "threads"})
    ->ArgsProduct({{14, 60}, {0, 37}, {1, 2}})
    ->Iterations(150)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
