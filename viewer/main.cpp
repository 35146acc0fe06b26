// A viewer of charts.

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <SDL.h>

#include <viewer/gpsd.h>
#include <viewer/nmea_source.h>
#include <viewer/script.h>
#include <viewer/user_folder.h>
#include <viewer/view.h>
#include <viewer/window.h>

namespace {

constexpr char kUsage[] =
    "usage: view [OPTION]... CHART_OR_FOLDER...\n"
    "  --gpsd HOST[:PORT]   show the ship by the fixes of a gpsd\n"
    "  --nmea FILE          show the ship by NMEA 0183 from a log or a device; - is the standard input\n"
    "  --pace N             replay a log N times as fast as it was recorded\n"
    "  --route FILE         load a route (GPX 1.1) and save it there\n"
    "  --size WIDTHxHEIGHT  of the window, from 320x240 to 16384x16384\n"
    "  --scale N            of texts and lines, 0.5 to 8\n"
    "  --script FILE        events to be carried out, see viewer/script.h\n";

struct Arguments {
    viewer::ScreenSize size{1280, 800};
    double scale = 1;
    double pace = 1;
    std::string gpsd;
    std::string nmea;
    std::string route;
    viewer::Script script;
    std::vector<std::string> charts;
};

// Reads a number at the start of a text, and removes it.
template <class Number>
Number number(std::string& text, Number least, Number greatest) {
    Number value{};
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc() || !(value >= least && value <= greatest)) throw std::runtime_error(kUsage);
    text.erase(0, static_cast<std::size_t>(read.ptr - text.data()));
    return value;
}

viewer::ScreenSize size_of(std::string text) {
    using viewer::kLargestWindow;
    using viewer::kSmallestWindow;
    const int width = number(text, kSmallestWindow.width, kLargestWindow.width);
    if (text.substr(0, 1) != "x") throw std::runtime_error(kUsage);
    text.erase(0, 1);
    const int height = number(text, kSmallestWindow.height, kLargestWindow.height);
    if (!text.empty()) throw std::runtime_error(kUsage);
    return {width, height};
}

double factor_of(std::string text, double least, double greatest) {
    const double factor = number(text, least, greatest);
    if (!text.empty()) throw std::runtime_error(kUsage);
    return factor;
}

Arguments arguments_of(int argc, char** argv) {
    Arguments arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const auto value = [&] {
            if (i + 1 == argc) throw std::runtime_error(kUsage);
            return std::string(argv[++i]);
        };
        if (argument == "--size")
            arguments.size = size_of(value());
        else if (argument == "--scale")
            arguments.scale = factor_of(value(), 0.5, 8.0);
        else if (argument == "--pace")
            arguments.pace = factor_of(value(), 0.01, 10000.0);
        else if (argument == "--gpsd")
            arguments.gpsd = value();
        else if (argument == "--nmea")
            arguments.nmea = value();
        else if (argument == "--route")
            arguments.route = value();
        else if (argument == "--script")
            arguments.script = viewer::Script(value());
        else if (argument.compare(0, 2, "--") == 0)
            throw std::runtime_error(kUsage);
        else
            arguments.charts.push_back(argument);
    }
    const bool two_receivers = !arguments.gpsd.empty() && !arguments.nmea.empty();
    if (arguments.charts.empty() || two_receivers) throw std::runtime_error(kUsage);
    return arguments;
}

std::unique_ptr<viewer::FixSource> receiver_of(const Arguments& arguments, std::function<void()> on_news) {
    if (!arguments.nmea.empty()) return viewer::read_nmea(arguments.nmea, arguments.pace, std::move(on_news));
    if (arguments.gpsd.empty()) return nullptr;
    auto receiver = viewer::read_gpsd(arguments.gpsd, std::move(on_news));
    if (receiver == nullptr) throw std::runtime_error("This viewer was built without libgps.");
    return receiver;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Arguments arguments = arguments_of(argc, argv);
        viewer::Window window(arguments.size, arguments.scale);
        viewer::View::Options options;
        options.workers = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 8);
        options.picture_folder = viewer::user_folder("PICTURES", "Pictures");
        options.route_folder = viewer::user_folder("DOCUMENTS", "Documents");
        options.route_path = arguments.route;
        options.on_change = [&window] { window.ask_for_picture(); };
        viewer::View view(arguments.charts, options);
        if (auto receiver = receiver_of(arguments, options.on_change)) view.set_receiver(std::move(receiver));
        window.run(view, arguments.script);
        if (!view.message().empty()) std::printf("%s\n", view.message().c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
