// A viewer of charts.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <SDL.h>

#include <viewer/script.h>
#include <viewer/view.h>
#include <viewer/window.h>

namespace {

constexpr char kUsage[] =
    "usage: view [--size WIDTHxHEIGHT] [--script FILE] CHART_OR_FOLDER...\n"
    "  --size    of the window in pixels, 320x240 or more\n"
    "  --script  events to be carried out, see viewer/script.h\n";

struct Arguments {
    viewer::ScreenSize size{1280, 800};
    viewer::Script script;
    std::vector<std::string> charts;
};

viewer::ScreenSize size_of(const char* text) {
    viewer::ScreenSize size;
    // NOLINTNEXTLINE(cert-err34-c): a number out of range is no size of a window either
    const bool is_size = std::sscanf(text, "%dx%d", &size.width, &size.height) == 2;
    if (!is_size || size.width < viewer::kSmallestWindow.width ||
        size.height < viewer::kSmallestWindow.height)
        throw std::runtime_error(kUsage);
    return size;
}

Arguments arguments_of(int argc, char** argv) {
    Arguments arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool has_value = i + 1 < argc;
        if (argument == "--size" && has_value) {
            arguments.size = size_of(argv[++i]);
        } else if (argument == "--script" && has_value) {
            arguments.script = viewer::Script(argv[++i]);
        } else if (argument.compare(0, 2, "--") == 0) {
            throw std::runtime_error(kUsage);
        } else {
            arguments.charts.push_back(argument);
        }
    }
    if (arguments.charts.empty()) throw std::runtime_error(kUsage);
    return arguments;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Arguments arguments = arguments_of(argc, argv);
        viewer::ChartList charts = viewer::list_charts(arguments.charts);
        if (charts.paths.empty()) throw std::runtime_error("There is no chart in these folders.");
        viewer::Window window(arguments.size);
        viewer::View::Options options;
        options.workers = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 8);
        options.on_change = [&window] { window.ask_for_picture(); };
        viewer::View view(std::move(charts), options);
        window.run(view, arguments.script);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
