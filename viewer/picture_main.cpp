// Draws charts as a PNG picture, without a window.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <viewer/view.h>
#include <zellap10/plotter/parse_position.h>

namespace {

constexpr char kUsage[] =
    "usage: chart_picture [--printed] PICTURE.png CHART_OR_FOLDER... [-- POSITION...]\n"
    "Draws charts as one map, or one as printed, with a grid and a route over the positions.\n";
constexpr viewer::ScreenSize kSize{1600, 1200};

void draw(viewer::View& view) {
    std::vector<viewer::Argb> pixels(static_cast<std::size_t>(kSize.width) * kSize.height);
    do {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        view.draw({pixels.data(), kSize.width, kSize.height, std::ptrdiff_t{kSize.width} * 4});
    } while (!view.is_complete());
}

std::vector<viewer::Waypoint> route_of(const std::vector<std::string>& texts) {
    std::vector<viewer::Waypoint> route;
    for (const std::string& text : texts) {
        const auto parsed = viewer::parse_position(text);
        if (!parsed.position) throw std::runtime_error(text + ": " + parsed.reason);
        route.push_back({*parsed.position, ""});
    }
    return route;
}

void save_picture(std::vector<std::string> arguments) {
    const bool printed = !arguments.empty() && arguments.front() == "--printed";
    if (printed) arguments.erase(arguments.begin());
    const auto dashes = std::find(arguments.begin(), arguments.end(), "--");
    if (dashes - arguments.begin() < 2) throw std::runtime_error(kUsage);
    const std::vector<std::string> charts(arguments.begin() + 1, dashes);
    const std::vector<std::string> positions(dashes == arguments.end() ? dashes : dashes + 1,
                                             arguments.end());
    viewer::View::Options options;
    options.workers = 2;
    viewer::View view(charts, options);
    view.resize(kSize);
    draw(view);
    for (const char* const key : {"V", "T", "Home"}) {
        if (printed) view.press_key(key);
    }
    view.press_key("G");
    view.set_route(route_of(positions));
    view.save(arguments.front());
    draw(view);
    for (const std::string& problem : view.problems())
        std::fprintf(stderr, "%s\n", problem.c_str());
    if (!view.problems().empty()) throw std::runtime_error("not all charts could be drawn");
    if (!view.save_failure().empty()) throw std::runtime_error(view.save_failure());
}

}  // namespace

int main(int argc, char** argv) {
    try {
        save_picture({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "chart_picture: %s\n", error.what());
        return 1;
    }
    return 0;
}
