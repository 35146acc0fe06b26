// A viewer of charts.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <SDL.h>

#include <viewer/files.h>
#include <viewer/receivers.h>
#include <viewer/script.h>
#include <viewer/view.h>
#include <viewer/window.h>
#include <zellap10/plotter/parse_position.h>

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

double number_of(const std::string& text, double least, double greatest) {
    const auto number = viewer::parse_decimal(text);
    if (!number || *number < least || *number > greatest) throw std::runtime_error(kUsage);
    return *number;
}

viewer::ScreenSize size_of(const std::string& text) {
    using viewer::kLargestWindow;
    using viewer::kSmallestWindow;
    const std::size_t cross = std::min(text.find('x'), text.size() - 1);
    return {
        static_cast<int>(number_of(text.substr(0, cross), kSmallestWindow.width, kLargestWindow.width)),
        static_cast<int>(number_of(text.substr(cross + 1), kSmallestWindow.height, kLargestWindow.height))};
}

Arguments arguments_of(int argc, char** argv) {
    Arguments arguments;
    const std::map<std::string, std::function<void(const std::string&)>> options = {
        {"--size", [&](const std::string& value) { arguments.size = size_of(value); }},
        {"--scale", [&](const std::string& value) { arguments.scale = number_of(value, 0.5, 8); }},
        {"--pace", [&](const std::string& value) { arguments.pace = number_of(value, 0.01, 10000); }},
        {"--gpsd", [&](const std::string& value) { arguments.gpsd = value; }},
        {"--nmea", [&](const std::string& value) { arguments.nmea = value; }},
        {"--route", [&](const std::string& value) { arguments.route = value; }},
        {"--script", [&](const std::string& value) { arguments.script = viewer::Script(value); }},
    };
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const auto option = options.find(argument);
        if (option == options.end() && argument.compare(0, 2, "--") != 0) {
            arguments.charts.push_back(argument);
        } else {
            if (option == options.end() || ++i == argc) throw std::runtime_error(kUsage);
            option->second(argv[i]);
        }
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
