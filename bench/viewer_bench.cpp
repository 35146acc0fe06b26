// Times the chart viewer in a window of 1920 by 1080 on a quilt of two charts, drawn ones and dense scans:
// the frames while panning, zooming and turning, with ship, track, route and grid, and how long a fresh view
// takes to be complete.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <samples/chart_writer.h>
#include <samples/sheet.h>
#include <viewer/view.h>

namespace {

using Clock = std::chrono::steady_clock;
using viewer::ScreenPixel;
using viewer::View;

constexpr viewer::ScreenSize kWindow{1920, 1080};
constexpr ScreenPixel kMiddle{960, 500};
constexpr int kFixes = 10000;
constexpr int kRun = 4;     // pixels of one colour on a dense scan
constexpr int kRounds = 3;  // of which the best counts: other programs disturb the others
constexpr auto kFrame = std::chrono::microseconds(16667);

enum class Motion { kPan, kZoom, kTurn };

double ms_since(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// The sample chart of the English Channel at a larger scale, 16,000 by 12,000 pixels.
samples::Sheet large_sheet() {
    samples::Sheet sheet = samples::english_channel();
    sheet.area.east = 0.59;
    sheet.title.middle = {-0.5, 48.5};
    sheet.scale.denominator = 341300;
    sheet.em *= 2.5;
    return sheet;
}

// A scan is the same chart with another colour every four pixels.
void write_chart(const samples::Sheet& sheet, const std::string& stem, bool is_scan) {
    const samples::Canvas canvas = samples::draw_sheet(sheet, ZELLAP10_COAST_DIR);
    const int colours = static_cast<int>(sheet.colours.size());
    samples::Chart chart;
    chart.width = canvas.width();
    chart.height = canvas.height();
    chart.bits_per_pixel = sheet.bits_per_pixel;
    chart.colours = sheet.colours;
    chart.draw = [&](int line, unsigned char* pixels) {
        std::copy_n(canvas.line(line), chart.width, pixels);
        for (int x = 0; x < chart.width && is_scan; ++x)
            pixels[x] = static_cast<unsigned char>((pixels[x] + x / kRun % 2 + line % 2) % colours + 1);
    };
    samples::write_file(stem + ".chart", samples::chart_bytes(chart));
    samples::write_file(stem + ".GEO", samples::geo_text(samples::georeference_of(sheet)));
}

// A view with all that it can show, and the memory that it draws into.
class Screen {
public:
    explicit Screen(const std::string& folder)
        : pixels_(static_cast<std::size_t>(kWindow.width) * kWindow.height), view_({folder}, options()) {
        view_.resize(kWindow);
    }

    View& view() { return view_; }

    double draw() {
        const Clock::time_point start = Clock::now();
        view_.draw({pixels_.data(), kWindow.width, kWindow.height, kWindow.width * 4});
        return ms_since(start);
    }

    /// Milliseconds until the view is complete.
    double draw_complete() {
        const Clock::time_point start = Clock::now();
        for (draw(); !view_.is_complete(); draw())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return ms_since(start);
    }

    void go_to(const std::string& position, double wheel) {
        view_.press_key("J");
        view_.type(position);
        view_.press_key("Return");
        view_.leave();
        view_.zoom(wheel);
    }

    // A zigzag over the Channel as track, and one as route.
    void add_ship_and_route() {
        auto feed = std::make_shared<std::atomic<viewer::FixFeed*>>(nullptr);
        view_.set_receiver(std::make_unique<viewer::FixSource>(
            [feed](viewer::FixFeed& of_source) {
                *feed = &of_source;
                while (of_source.wait_for(std::chrono::seconds(1))) {
                }
            },
            nullptr));
        while (*feed == nullptr)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        for (int i = 0; i < kFixes; ++i) {
            const int away = std::abs(i % 200 - 100);
            (*feed).load()->put(
                {{static_cast<double>(i), {49.6 + away * 0.004, -2.2 + i * 1.4e-4}, 6.0, 80.0, {}}});
            if (i % 500 == 0) draw();
        }
        draw();
        view_.press_key("F");
        view_.press_key("R");
        for (int i = 0; i < 20; ++i) {
            const ScreenPixel at{100.0 + i * 85, i % 2 == 0 ? 300.0 : 800.0};
            view_.press(viewer::Button::kLeft, at);
            view_.release(viewer::Button::kLeft, at);
        }
        view_.press_key("R");
        view_.press_key("G");
    }

private:
    static View::Options options() {
        View::Options options;
        options.workers = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
        return options;
    }

    std::vector<viewer::Argb> pixels_;
    View view_;
};

struct Frames {
    double median_ms = 1e9;
    double worst_ms = 1e9;
    int incomplete = 1 << 30;
};

// Draws 60 frames per second, with a step before each.
Frames frames_of(Screen& screen, int count, const std::function<void(int)>& step) {
    std::vector<double> times;
    int incomplete = 0;
    Clock::time_point next = Clock::now();
    for (int i = 0; i < count; ++i) {
        step(i);
        times.push_back(screen.draw());
        incomplete += !screen.view().is_complete();
        next = std::max(next + kFrame, Clock::now());
        std::this_thread::sleep_until(next);
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back(), incomplete};
}

Frames frames_of(Screen& screen, Motion motion) {
    View& view = screen.view();
    const ScreenPixel ways[] = {{-40, 0}, {0, -40}, {40, 0}, {0, 40}};
    ScreenPixel pointer = kMiddle;
    if (motion == Motion::kPan) view.press(viewer::Button::kLeft, pointer);
    const Frames frames = frames_of(screen, 240, [&](int i) {
        if (motion == Motion::kZoom) return view.zoom(i % 120 < 60 ? 0.25 : -0.25);
        if (motion == Motion::kTurn) {
            view.press(viewer::Button::kLeft, {kMiddle.x, 100}, true);
            view.move({kMiddle.x + 20, 100});
            return view.release(viewer::Button::kLeft, {kMiddle.x + 20, 100});
        }
        pointer = {pointer.x + ways[i / 60].x, pointer.y + ways[i / 60].y};
        view.move(pointer);
    });
    if (motion == Motion::kPan) view.release(viewer::Button::kLeft, pointer);
    return frames;
}

double fresh_view(const std::string& folder) {
    double best = 1e9;
    for (int i = 0; i < kRounds; ++i) {
        Screen screen(folder);
        screen.draw_complete();
        screen.go_to("49 40N 1 30W", 5);
        best = std::min(best, screen.draw_complete());
    }
    return best;
}

Frames best_frames(const std::string& folder, Motion motion, bool course_up) {
    Frames best;
    for (int i = 0; i < kRounds; ++i) {
        Screen screen(folder);
        screen.draw_complete();
        screen.go_to("49 45N 1 30W", 3);
        screen.add_ship_and_route();
        for (int turns = 0; turns < 2 && course_up; ++turns)
            screen.view().press_key(".");
        screen.draw_complete();
        const Frames frames = frames_of(screen, motion);
        best = {std::min(best.median_ms, frames.median_ms), std::min(best.worst_ms, frames.worst_ms),
                std::min(best.incomplete, frames.incomplete)};
    }
    return best;
}

void print_table(const char* name, const std::string& folder) {
    std::printf("%s: a fresh view is complete after %.0f ms\n", name, fresh_view(folder));
    std::printf("                      median frame    worst frame    incomplete of 240\n");
    const char* const names[] = {"panning", "zooming", "turning"};
    for (const bool course_up : {false, true}) {
        for (const Motion motion : {Motion::kPan, Motion::kZoom, Motion::kTurn}) {
            const Frames frames = best_frames(folder, motion, course_up);
            std::printf("  %s, %-12s %9.1f ms   %9.1f ms   %10d\n", names[static_cast<int>(motion)],
                        course_up ? "30 deg up" : "north up", frames.median_ms, frames.worst_ms,
                        frames.incomplete);
            std::fflush(stdout);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 2) {
        std::fprintf(stderr, "usage: viewer_bench [FOLDER_FOR_THE_CHARTS]\n");
        return 2;
    }
    try {
        const std::filesystem::path folder = argc == 2 ? argv[1] : std::filesystem::temp_directory_path();
        for (const bool is_scan : {false, true}) {
            const std::string charts =
                (folder / (is_scan ? "viewer_bench_scans" : "viewer_bench_drawn")).string();
            if (!std::filesystem::exists(charts)) {
                std::filesystem::create_directories(charts);
                write_chart(large_sheet(), charts + "/large", is_scan);
                write_chart(samples::channel_lambert(), charts + "/small", is_scan);
            }
            print_table(is_scan ? "dense scans" : "drawn charts", charts);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "viewer_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
