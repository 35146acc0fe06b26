#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include <samples/chart_writer.h>
#include <testing/plain_chart.h>
#include <testing/temp_folder.h>

#if defined(ZELLAP10_BENCH_TIFF)
#include <tiffio.h>
#endif

// Each operation is measured next to the simplest code with the same result, and lines in order next to
// libtiff. Results are compared before the measurement.

namespace {

constexpr int kSize = 8192;  // pixels along an edge of each chart
constexpr int kWindowWidth = 1920;
constexpr int kWindowHeight = 1080;
constexpr int kRuns[] = {4, 20, 180};  // mean length of a run

// Runs with a geometric distribution of lengths. Adjacent runs have different colours.
void draw_runs(int mean, int colours, int width, int line, unsigned char* pixels) {
    std::minstd_rand random(static_cast<unsigned>(line + 1));
    std::geometric_distribution<int> more(1.0 / mean);
    int colour = 0;
    for (int x = 0; x < width;) {
        colour = (colour + static_cast<int>(random() % static_cast<unsigned>(colours - 1))) % colours + 1;
        const int end = std::min(width, x + 1 + more(random));
        for (; x < end; ++x)
            pixels[x] = static_cast<unsigned char>(colour);
    }
}

samples::Chart chart_of_runs(int mean, int bits_per_pixel, int width = kSize, int height = kSize) {
    samples::Chart chart;
    chart.width = width;
    chart.height = height;
    chart.bits_per_pixel = bits_per_pixel;
    const int colours = (1 << bits_per_pixel) - 1;
    std::minstd_rand random(7);
    for (int i = 0; i < colours; ++i) {
        const auto value = [&random] { return static_cast<int>(random() >> 8 & 0xFF); };
        chart.colours.push_back({value(), value(), value()});
    }
    chart.draw = [=](int line, unsigned char* pixels) { draw_runs(mean, colours, width, line, pixels); };
    return chart;
}

void demand(bool holds, const std::string& what) {
    if (holds) return;
    std::fprintf(stderr, "chart_bench: %s\n", what.c_str());
    std::exit(1);
}

int plain_number(std::FILE* file) {
    unsigned number = 0;
    for (int i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned>(std::getc(file));
    return static_cast<int>(number);
}

// Opens a chart and decodes complete lines by plain code, too.
class BenchChart : public PlainChart {
public:
    int plain_open(const char* path) {
        if (!OpenZellap(path, 1)) return 0;
        ChartFile = std::fopen(path, "rb");
        if (ChartFile == nullptr) return 0;
        std::fseek(ChartFile, -4, SEEK_END);
        const int table = plain_number(ChartFile);
        LineCount = Height;
        std::fseek(ChartFile, table, SEEK_SET);
        LineOffsets = new std::int32_t[static_cast<std::size_t>(LineCount) + 1];
        for (int i = 0; i < LineCount; ++i)
            LineOffsets[i] = plain_number(ChartFile);
        LineOffsets[LineCount] = table;
        std::rewind(ChartFile);
        while (std::getc(ChartFile) != 0x1A) {
        }
        std::getc(ChartFile);
        BitsPerPixel = std::getc(ChartFile);
        ColourShift = 7 - BitsPerPixel;
        RunMask = (1 << ColourShift) - 1;
        ColourMask = ((1 << BitsPerPixel) - 1) << ColourShift;
        plain_palette();
        PaletteHandle = CreatePalette(LogPalette);
        plain_index();
        return 1;
    }

    int plain_line(int line, unsigned char* dest) {
        plain_seek(line);
        for (int x = 0; x < Width;) {
            int colour;
            int length;
            plain_run(&colour, &length);
            if (x + length > Width) return 0;
            std::memset(dest + x, colour, static_cast<std::size_t>(length));
            x += length;
        }
        return 1;
    }
};

struct OpenChart {
    std::string path;
    BenchChart chart;
    std::vector<unsigned char> pixels = std::vector<unsigned char>(kSize * kWindowHeight);
    std::vector<unsigned char> expected = pixels;

    OpenChart(const TempFolder& folder, const std::string& name, const samples::Chart& drawn)
        : path(folder.write(name, samples::chart_bytes(drawn))) {
        demand(chart.OpenZellap(path.c_str(), 0) == 1, "cannot open " + path);
    }
    ~OpenChart() { chart.CloseZellap(); }

    void same(const char* what) { demand(pixels == expected, what + std::string(" differ in ") + path); }
};

// Reads a line, a window or a reduced line, with the library or with the plain code.
using Read = int (*)(BenchChart& chart, int line, unsigned char* dest);

int library_line(BenchChart& chart, int line, unsigned char* dest) {
    return chart.getLine(line, dest);
}
int plain_line(BenchChart& chart, int line, unsigned char* dest) {
    return chart.plain_line(line, dest);
}

constexpr int kMiddleCol = (kSize - kWindowWidth) / 2;
constexpr int kMiddleLine = (kSize - kWindowHeight) / 2;
int library_window(BenchChart& chart, int, unsigned char* dest) {
    return chart.getMultiLines(kMiddleLine, kWindowHeight, kMiddleCol, kWindowWidth, dest);
}
int plain_window(BenchChart& chart, int, unsigned char* dest) {
    return chart.plain_window(kMiddleLine, kWindowHeight, kMiddleCol, kWindowWidth, dest);
}
// Decodes the lines of the window from their start to the right edge of the window.
int window_from_left(BenchChart& chart, int, unsigned char* dest) {
    return chart.getMultiLines(kMiddleLine, kWindowHeight, 0, kMiddleCol + kWindowWidth, dest);
}
template <int kFactor>
int library_reduced(BenchChart& chart, int line, unsigned char* dest) {
    return chart.getAALine(line / kFactor * kFactor, 0, kSize, dest, kFactor, kFactor);
}
template <int kFactor>
int plain_reduced(BenchChart& chart, int line, unsigned char* dest) {
    return chart.plain_reduced_line(line / kFactor * kFactor, 0, kSize, dest, kFactor, kFactor);
}

constexpr int kLastLine = kSize - 9;  // a block of 8 lines from here is inside the chart

void read_lines(benchmark::State& state, OpenChart& open, Read read, const std::vector<int>& lines) {
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(read(open.chart, lines[next], open.pixels.data()));
        next = next + 1 < lines.size() ? next + 1 : 0;
    }
}

void check_lines(OpenChart& open, Read read, Read plain, const char* what) {
    for (int line = 0; line <= kLastLine; line += 61) {
        read(open.chart, line, open.pixels.data());
        plain(open.chart, line, open.expected.data());
        open.same(what);
    }
}

struct Operation {
    const char* name;
    Read library;
    Read plain;
    bool random;
};

const Operation kOperations[] = {
    {"line_in_order", library_line, plain_line, false},
    {"line_at_random", library_line, plain_line, true},
    {"window", library_window, plain_window, false},
    {"reduced_by_3", library_reduced<3>, plain_reduced<3>, false},
    {"reduced_by_8", library_reduced<8>, plain_reduced<8>, false},
};

void register_reads(const std::shared_ptr<OpenChart>& open, int mean) {
    std::vector<int> in_order(kLastLine + 1);
    std::iota(in_order.begin(), in_order.end(), 0);
    std::vector<int> at_random = in_order;
    std::shuffle(at_random.begin(), at_random.end(), std::minstd_rand(1));
    const std::string runs = "/runs_" + std::to_string(mean);
    const auto add = [&](const std::string& name, Read read, const std::vector<int>& lines) {
        benchmark::RegisterBenchmark((name + runs).c_str(), [open, read, lines](benchmark::State& state) {
            read_lines(state, *open, read, lines);
        });
    };
    for (const Operation& operation : kOperations) {
        check_lines(*open, operation.library, operation.plain, operation.name);
        const std::vector<int>& lines = operation.random ? at_random : in_order;
        add(operation.name, operation.library, lines);
        add(std::string(operation.name) + "_plain", operation.plain, lines);
    }
    add("window_from_left", window_from_left, in_order);
}

// Reads the window of a viewer in the middle of a wide chart, reduced by `factor` and limited to the chart.
using ReducedLine = int (BenchChart::*)(int, int, int, unsigned char*, int, int);

void read_view(OpenChart& open, ReducedLine reduced_line, int factor, unsigned char* dest) {
    BenchChart& chart = open.chart;
    const int columns = std::min(kWindowWidth * factor, chart.Width);
    const int lines = std::min(kWindowHeight, chart.Height / factor);
    const int first_line = (chart.Height - lines * factor) / 2;
    for (int i = 0; i < lines; ++i) {
        benchmark::DoNotOptimize((chart.*reduced_line)(first_line + i * factor, (chart.Width - columns) / 2,
                                                       columns, dest + i * kWindowWidth, factor, factor));
    }
}

void register_views(const TempFolder& folder) {
    const auto open = std::make_shared<OpenChart>(folder, "wide.cht", chart_of_runs(20, 4, 16000, 12000));
    const auto add = [&](const std::string& name, ReducedLine reduced_line, int factor) {
        benchmark::RegisterBenchmark((name + "/by_" + std::to_string(factor)).c_str(),
                                     [=](benchmark::State& state) {
                                         for (auto _ : state)
                                             read_view(*open, reduced_line, factor, open->pixels.data());
                                     })
            ->Unit(benchmark::kMillisecond);
    };
    for (const int factor : {2, 3, 4, 8, 16}) {
        read_view(*open, &BenchChart::getAALine, factor, open->pixels.data());
        read_view(*open, &BenchChart::plain_reduced_line, factor, open->expected.data());
        open->same("views");
        add("view", &BenchChart::getAALine, factor);
        add("view_plain", &BenchChart::plain_reduced_line, factor);
    }
}

// Random colours of the complete cube; widening fills the palette.
void spread_colours(BenchChart& chart, int count) {
    std::minstd_rand random(11);
    const auto value = [&random] { return static_cast<unsigned char>(random() >> 8 & 0xFF); };
    chart.HeaderColourCount = count;
    for (int i = 1; i < count; ++i)
        chart.HeaderColours[i] = {value(), value(), value(), 0};
}

void library_palette(BenchChart& chart) {
    chart.BuildPal();
    DeleteObject(chart.PaletteHandle);
    chart.PaletteHandle = nullptr;
}
void same_palette(BenchChart& a, BenchChart& b) {
    library_palette(a);
    b.plain_palette();
    demand(std::memcmp(&a.LogPalette, &b.LogPalette, sizeof a.LogPalette) == 0, "palettes differ");
    a.BuildPalIndex();
    b.plain_index();
    demand(std::memcmp(a.ColourIndex, b.ColourIndex, sizeof a.ColourIndex) == 0, "colour indexes differ");
}

template <void (*kBuild)(BenchChart&)>
void build(benchmark::State& state) {
    BenchChart chart;
    BenchChart plain;
    spread_colours(chart, static_cast<int>(state.range(0)));
    spread_colours(plain, static_cast<int>(state.range(0)));
    same_palette(chart, plain);
    for (auto _ : state) {
        kBuild(chart);
        benchmark::DoNotOptimize(chart.ColourIndex);
    }
    state.counters["entries"] = chart.LogPalette.palNumEntries;
}

void library_index(BenchChart& chart) {
    chart.BuildPalIndex();
}
void plain_index(BenchChart& chart) {
    chart.plain_index();
}
void plain_palette(BenchChart& chart) {
    chart.plain_palette();
}

BENCHMARK(build<library_index>)->Name("index")->Arg(256);
BENCHMARK(build<plain_index>)->Name("index_plain")->Arg(256);
BENCHMARK(build<library_palette>)->Name("widening")->Arg(128);
BENCHMARK(build<plain_palette>)->Name("widening_plain")->Arg(128);

void open_and_close(benchmark::State& state, const OpenChart& open,
                    int (*open_it)(BenchChart&, const char*)) {
    for (auto _ : state) {
        BenchChart chart;
        benchmark::DoNotOptimize(open_it(chart, open.path.c_str()));
        chart.CloseZellap();
    }
}
int library_open(BenchChart& chart, const char* path) {
    return chart.OpenZellap(path, 0);
}
int plain_open(BenchChart& chart, const char* path) {
    return chart.plain_open(path);
}

#if defined(ZELLAP10_BENCH_TIFF)
struct TiffCloser {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, TiffCloser>;

// The same chart in PackBits, one row per strip.
std::string write_tiff(const TempFolder& folder, OpenChart& open, int mean) {
    const std::string path = folder.file("runs" + std::to_string(mean) + ".tif");
    const Tiff tiff(TIFFOpen(path.c_str(), "w"));
    demand(tiff != nullptr, "cannot write " + path);
    TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, kSize);
    TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, kSize);
    TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, COMPRESSION_PACKBITS);
    TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, 1);
    for (int line = 0; line < kSize; ++line) {
        open.chart.getLine(line, open.pixels.data());
        TIFFWriteScanline(tiff.get(), open.pixels.data(), static_cast<std::uint32_t>(line));
    }
    return path;
}

void tiff_lines(benchmark::State& state, const std::string& path) {
    const Tiff tiff(TIFFOpen(path.c_str(), "r"));
    std::vector<unsigned char> pixels(kSize);
    std::uint32_t line = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(TIFFReadScanline(tiff.get(), pixels.data(), line));
        line = line + 1 < kSize ? line + 1 : 0;
    }
}
#endif

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    // The C library does not lock its files until a program has started a second thread. Applications with a
    // window have.
    std::thread([] {}).join();
    const TempFolder folder;
    for (const int mean : kRuns) {
        const auto open =
            std::make_shared<OpenChart>(folder, std::to_string(mean) + ".cht", chart_of_runs(mean, 4));
        register_reads(open, mean);
#if defined(ZELLAP10_BENCH_TIFF)
        const std::string tiff = write_tiff(folder, *open, mean);
        benchmark::RegisterBenchmark(("line_in_order_libtiff/runs_" + std::to_string(mean)).c_str(),
                                     [tiff](benchmark::State& state) { tiff_lines(state, tiff); });
#endif
    }
    const auto colourful = std::make_shared<OpenChart>(folder, "colourful.cht", chart_of_runs(20, 7));
    benchmark::RegisterBenchmark("open_and_close", [colourful](benchmark::State& state) {
        open_and_close(state, *colourful, library_open);
    });
    benchmark::RegisterBenchmark("open_and_close_plain", [colourful](benchmark::State& state) {
        open_and_close(state, *colourful, plain_open);
    });
    register_views(folder);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::ClearRegisteredBenchmarks();
    benchmark::Shutdown();
}
