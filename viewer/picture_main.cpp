// Draws charts as a PNG picture, without a window.

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <viewer/view.h>
#include <zellap10/plotter/parse_position.h>

namespace {

constexpr char kUsage[] =
    "usage: chart_picture [--printed] PICTURE.png CHART_OR_FOLDER... [-- POSITION...]\n"
    "Draws charts as one map, or one as printed, with a grid and a route over the positions.\n";
constexpr viewer::ScreenSize kSize{1600, 1200};

struct Arguments {
    bool printed = false;
    std::string picture;
    std::vector<std::string> charts;
    std::vector<viewer::Waypoint> route;
};

Arguments arguments_of(int argc, char** argv) {
    Arguments arguments;
    bool is_route = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (is_route) {
            const auto parsed = viewer::parse_position(argument);
            if (!parsed.position) throw std::runtime_error(argument + ": " + parsed.reason);
            arguments.route.push_back({*parsed.position, ""});
        } else if (argument == "--") {
            is_route = true;
        } else if (argument == "--printed") {
            arguments.printed = true;
        } else if (arguments.picture.empty()) {
            arguments.picture = argument;
        } else {
            arguments.charts.push_back(argument);
        }
    }
    if (arguments.charts.empty()) throw std::runtime_error(kUsage);
    return arguments;
}

void draw(viewer::View& view) {
    std::vector<viewer::Argb> pixels(static_cast<std::size_t>(kSize.width) * kSize.height);
    do {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        view.draw({pixels.data(), kSize.width, kSize.height, std::ptrdiff_t{kSize.width} * 4});
    } while (!view.is_complete());
}

void save_picture(Arguments arguments) {
    viewer::View::Options options;
    options.workers = 2;
    viewer::View view(arguments.charts, options);
    view.resize(kSize);
    draw(view);
    if (arguments.printed) {
        view.press_key("V");
        view.press_key("T");
    }
    view.press_key("Home");
    view.press_key("G");
    view.set_route(std::move(arguments.route));
    view.save(arguments.picture);
    draw(view);
    for (const std::string& problem : view.problems())
        std::fprintf(stderr, "%s\n", problem.c_str());
    if (!view.problems().empty()) throw std::runtime_error("not all charts could be drawn");
    if (!view.save_failure().empty()) throw std::runtime_error(view.save_failure());
}

}  // namespace

int main(int argc, char** argv) {
    try {
        save_picture(arguments_of(argc, argv));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "chart_picture: %s\n", error.what());
        return 1;
    }
    return 0;
}
