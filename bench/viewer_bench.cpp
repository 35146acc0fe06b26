// Times the chart viewer in a window of 1920 by 1080 on a chart of 16,000 by 12,000 pixels. For each
// reduction it prints the frame times while panning, with grid, reference points and a route, and the time
// until a new view is complete.

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <samples/chart_writer.h>
#include <samples/sheet.h>
#include <viewer/view.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::duration;
using viewer::Camera;
using viewer::Command;
using viewer::View;

constexpr viewer::ScreenSize kChart{16000, 12000};
constexpr viewer::ScreenSize kWindow{1920, 1080};
constexpr viewer::ScreenPixel kMiddle{kWindow.width / 2.0, kWindow.height / 2.0};
constexpr int kPan = 40;         // pixels per frame
constexpr int kFramesAWay = 60;  // right, down, left and up again
constexpr int kRounds = 3;       // the best one counts, because other programs slow down some of them
constexpr auto kFrame = std::chrono::microseconds(16667);

double ms_since(Clock::time_point start) {
    return duration<double, std::milli>(Clock::now() - start).count();
}

// Draws the sample chart of the English Channel at a larger scale.
void write_large_chart(const std::string& stem) {
    samples::Sheet sheet = samples::english_channel();
    sheet.area.east = 0.59;
    sheet.title.middle = {-0.5, 48.5};
    sheet.scale.denominator = 341300;
    sheet.em *= 2.5;
    const samples::Canvas canvas = samples::draw_sheet(sheet, ZELLAP10_COAST_DIR);
    samples::Chart chart;
    chart.width = kChart.width;
    chart.height = kChart.height;
    chart.bits_per_pixel = sheet.bits_per_pixel;
    chart.colours = sheet.colours;
    chart.draw = [&](int line, unsigned char* pixels) {
        const unsigned char* drawn = canvas.line(std::min(line, canvas.height() - 1));
        for (int x = 0; x < kChart.width; ++x)
            pixels[x] = drawn[std::min(x, canvas.width() - 1)];
    };
    samples::write_file(stem + ".chart", samples::chart_bytes(chart));
    samples::write_file(stem + ".GEO", samples::geo_text(samples::georeference_of(sheet)));
    std::printf("chart of %d x %d pixels, drawn on %d x %d\n", chart.width, chart.height, canvas.width(),
                canvas.height());
}

// A view and its bitmap.
class Screen {
public:
    explicit Screen(const std::string& path)
        : pixels_(static_cast<std::size_t>(kWindow.width) * kWindow.height),
          view_(viewer::list_charts({path}), options()) {
        view_.resize(kWindow);
    }

    View& view() { return view_; }

    double draw() {
        const Clock::time_point start = Clock::now();
        view_.draw({pixels_.data(), kWindow.width, kWindow.height, kWindow.width * 4});
        return ms_since(start);
    }

    // Draws after every change until the view is complete.
    void draw_whole() {
        for (draw(); !view_.is_complete(); draw()) {
            std::unique_lock<std::mutex> lock(mutex_);
            changed_.wait(lock, [this] { return news_; });
            news_ = false;
        }
    }

private:
    View::Options options() {
        View::Options options;
        options.workers = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
        options.on_change = [this] {
            const std::lock_guard<std::mutex> lock(mutex_);
            news_ = true;
            changed_.notify_one();
        };
        return options;
    }

    std::vector<viewer::Argb> pixels_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool news_ = false;
    View view_;
};

void go_to_step(View& view, int step) {
    view.move(kMiddle);
    view.turn_wheel(Camera::kSteps);
    view.turn_wheel(-step);
}

double fresh_view(const std::string& path, int step) {
    double best = 1e9;
    for (int i = 0; i < kRounds; ++i) {
        Screen screen(path);
        go_to_step(screen.view(), step);
        const Clock::time_point start = Clock::now();
        screen.draw_whole();
        best = std::min(best, ms_since(start));
    }
    return best;
}

struct Frames {
    double median_ms = 0;
    double worst_ms = 0;
    int incomplete = 0;
};

// Drags the chart at 60 frames per second.
Frames pan(const std::string& path, int step) {
    Screen screen(path);
    View& view = screen.view();
    go_to_step(view, step);
    view.do_command(Command::kGrid);
    view.do_command(Command::kPoints);
    for (const viewer::ScreenPixel spot : {viewer::ScreenPixel{300, 300}, {900, 700}, {1500, 400}}) {
        view.press(viewer::Button::kLeft, spot);
        view.release(viewer::Button::kLeft, spot);
    }
    screen.draw_whole();

    std::vector<double> times;
    int incomplete = 0;
    Clock::time_point next = Clock::now();
    for (const viewer::ScreenPixel way : {viewer::ScreenPixel{-kPan, 0}, {0, -kPan}, {kPan, 0}, {0, kPan}}) {
        viewer::ScreenPixel pointer = kMiddle;
        view.press(viewer::Button::kLeft, pointer);
        for (int i = 0; i < kFramesAWay; ++i) {
            pointer = {pointer.x + way.x, pointer.y + way.y};
            view.move(pointer);
            times.push_back(screen.draw());
            incomplete += !view.is_complete();
            next += kFrame;
            std::this_thread::sleep_until(next);
        }
        view.release(viewer::Button::kLeft, pointer);
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back(), incomplete};
}

Frames best_pan(const std::string& path, int step) {
    Frames best{1e9, 1e9, 1 << 30};
    for (int i = 0; i < kRounds; ++i) {
        const Frames frames = pan(path, step);
        best = {std::min(best.median_ms, frames.median_ms), std::min(best.worst_ms, frames.worst_ms),
                std::min(best.incomplete, frames.incomplete)};
    }
    return best;
}

void print_table(const std::string& path) {
    std::printf("view    median frame    worst frame    frames with stand-ins    fresh view\n");
    for (int step = 0; step < Camera::kSteps; ++step) {
        const Frames frames = best_pan(path, step);
        std::printf("1/%-5d %9.1f ms   %9.1f ms   %14d of %3d   %10.0f ms\n", Camera::kReductions[step],
                    frames.median_ms, frames.worst_ms, frames.incomplete, 4 * kFramesAWay,
                    fresh_view(path, step));
        std::fflush(stdout);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 2) {
        std::fprintf(stderr, "usage: viewer_bench [FOLDER_FOR_THE_CHART]\n");
        return 2;
    }
    try {
        const std::filesystem::path folder = argc == 2 ? argv[1] : std::filesystem::temp_directory_path();
        const std::string stem = (folder / "viewer_bench").string();
        if (!std::filesystem::exists(stem + ".chart")) write_large_chart(stem);
        print_table(stem + ".chart");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "viewer_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
