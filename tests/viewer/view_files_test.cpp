// How a view follows files that come, change and fail, and how it saves its own.

#include <chrono>
#include <cstring>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "screen.h"

namespace {

using namespace viewer;
namespace fs = std::filesystem;

TEST(View, KeepsRoutesInFiles) {
    Screen screen;
    const auto path = [&](const char* name) { return screen.folder.file(name); };
    screen.look_at(TestChart{});
    screen->press_key("R");
    screen.click({100, 150});
    screen.click({400, 150});
    const Position last = screen->waypoints()[1].position;
    screen.answer("S", path("none/a.gpx"));
    EXPECT_TRUE(screen->wants_text()) << "refused";
    screen.answer("S", path("a.gpx"));
    EXPECT_FALSE(screen->wants_text());

    // Over its own file; another one stays, and so does its own after another program has changed it.
    screen.answer("S", path("a.gpx"));
    EXPECT_FALSE(fs::exists(path("a-1.gpx")));
    const std::string broken = screen.folder.write("broken.gpx", "<gpx><rte></gpx>");
    screen.answer("S", broken);
    EXPECT_NE(screen->message().find("broken.gpx exists. Saved the route as "), std::string::npos);
    EXPECT_EQ(fs::file_size(broken), 16u);
    screen.folder.write("broken-1.gpx", "of another program");
    screen.answer("S", path("broken-1.gpx"));
    EXPECT_TRUE(fs::exists(path("broken-1-1.gpx")));

    screen.answer("L", broken);
    EXPECT_TRUE(screen->wants_text());
    screen->press_key("Escape");
    EXPECT_EQ(screen->waypoints().size(), 2u) << "nothing is lost";
    screen->press_key("Delete");
    screen.answer("L", path("a.gpx"));
    ASSERT_EQ(screen->waypoints().size(), 2u);
    EXPECT_NEAR(screen->waypoints()[1].position.latitude, last.latitude, 1e-7);
    EXPECT_NEAR(screen->waypoints()[1].position.longitude, last.longitude, 1e-7);

    screen->press_key("Q");
    EXPECT_FALSE(fs::exists(path("route-1.gpx"))) << "nothing has changed";
    screen.click({300, 50});
    screen->press_key("Q");
    EXPECT_TRUE(fs::exists(path("route-1.gpx")));
    EXPECT_TRUE(screen->is_over());
}

TEST(View, ReloadsFilesThatAppearAndChange) {
    Screen screen;
    const std::string path = screen.folder.file("chart.chart");
    screen.look_at({path});
    TestChart{}.write(screen.folder, "chart");
    const auto shows = [&](Position position) {
        const ScreenPixel pixel = screen->map().to_screen(position).value_or(ScreenPixel{-1, -1});
        return Box{{0, 0}, {639, 479}}.contains(pixel) &&
               screen.pixel(static_cast<int>(pixel.x), static_cast<int>(pixel.y)) !=
                   theme_for(ColourScheme::kDay).background;
    };
    EXPECT_TRUE(screen.draw_until([&] { return shows({49.5, -1.2}); }));
    screen.expect_map({path});
    // Other pixels at another place, which the view must follow.
    TestChart{1400, 900, 45, 10}.write(screen.folder, "chart");
    EXPECT_TRUE(screen.draw_until([&] { return shows({44.5, 10.5}); }));
    screen.expect_map({path});
    screen->press_key("V");
    screen.press_keys({"Home"});
    screen.expect_sheet(path, 3, -87, -90);
    TestChart{1498}.write(screen.folder, "chart");
    const auto old = screen.pixels;
    EXPECT_TRUE(screen.draw_until([&] { return screen.pixels != old; }));
    screen.expect_sheet(path, 3, -70, -90);
}

TEST(View, ShowsChartsWithoutPositionsAsPrinted) {
    Screen screen;
    const std::string bare = screen.folder.write("bare.chart", TestChart{1498}.bytes());
    const std::string broken = screen.folder.write("b.chart", TestChart{}.bytes().substr(0, 5000));
    screen.look_at({bare, broken, screen.folder.file("none.chart")});
    screen.press_keys({"Escape"});
    EXPECT_GT(screen.changed({12, 420}, {100, 470}), 1000) << "the problems were shown";
    screen.expect_sheet(bare, 3, -70, -90);
    screen.press_keys({"V", "V", "G", "T", "none"});
    screen.expect_sheet(bare, 3, -70, -90);
}

// Lines of the chart take a second each. It has no positions and is shown as printed.
TEST(View, ClosesAtOnceWhateverIsAtWork) {
    Screen screen;
    samples::Chart chart;
    chart.width = std::numeric_limits<int>::max();
    chart.height = 2000;
    chart.colours = {{255, 0, 0}, {0, 0, 255}};
    const std::vector<std::string> lines(2000, std::string(1, '\0'));
    screen.open({screen.folder.write(
        "wild.chart", samples::chart_bytes(samples::text_part(chart), chart.bits_per_pixel, lines))});
    // A receiver that the system holds for long.
    screen->set_receiver(std::make_unique<FixSource>(
        [](FixFeed&) { std::this_thread::sleep_for(std::chrono::seconds(1)); }, nullptr));
    for (int i = 0; i < 20; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        screen.draw_once();
    }
    const auto start = std::chrono::steady_clock::now();
    screen.close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
}

TEST(View, ListsAFolderOnceWhileItIsShown) {
    Screen screen;
    for (int i = 0; i < 500; ++i)
        screen.folder.write(std::to_string(i) + ".txt", "");
    const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_NE(inotify_add_watch(watch, screen.folder.file("").c_str(), IN_OPEN), -1);
    screen.open({screen.folder.file(""), screen.folder.file("none.chart")});
    screen.draw_once();
    EXPECT_FALSE(screen.reports("none.chart")) << "the window opens at once";
    screen.draw();
    EXPECT_TRUE(screen.reports("none.chart: There is no such file."));
    std::vector<char> events(1 << 20);
    const ssize_t size = read(watch, events.data(), events.size());
    close(watch);
    int listed = 0;
    for (ssize_t at = 0; at < size;) {
        inotify_event event{};
        std::memcpy(&event, &events[static_cast<std::size_t>(at)], sizeof event);
        listed += (event.mask & IN_ISDIR) != 0 ? 1 : 0;
        at += static_cast<ssize_t>(sizeof event + event.len);
    }
    EXPECT_GE(listed, 1);
    EXPECT_LT(listed, 50) << "and not for each file";
}

TEST(View, NamesWhatItCannotRead) {
    Screen screen;
    // Without rights on a folder. Those of an administrator need another user for the thread's own files.
    const std::string closed = screen.folder.file("closed");
    fs::create_directory(closed);
    fs::permissions(closed, fs::perms::none);
    const int user = setfsuid(65534);
    screen.look_at({closed});
    setfsuid(static_cast<uid_t>(user));
    EXPECT_TRUE(screen.reports("closed: The folder cannot be read."));

    // A chart that is damaged after it was opened.
    const std::string path = TestChart{5000, 3000, 50, -2, 0.0003}.write(screen.folder, "chart");
    screen.look_at({path});
    fs::resize_file(path, 20000);
    screen->zoom(10);
    EXPECT_TRUE(screen.draw_until([&] { return screen.reports("chart.chart: "); }));
}

TEST(View, SavesACompletePictureOrSaysWhyNot) {
    Screen screen;
    screen.look_at(TestChart{});
    fs::create_symlink(screen.folder.file("elsewhere.png"), screen.folder.file("chart-1.png"));
    screen.press_keys({"+", "I", "I"});
    EXPECT_EQ(screen->message(), "Saved as " + screen.folder.file("chart-2.png"));
    EXPECT_FALSE(fs::exists(screen.folder.file("elsewhere.png")));
    EXPECT_FALSE(fs::exists(screen.folder.file("chart-3.png")));
    screen.press_keys({"none"});  // takes the message away
    screen.expect_saved(screen.folder.file("chart-2.png"));
    screen->save(screen.folder.file("none/a.png"));
    screen.draw();
    EXPECT_NE(screen->save_failure(), "");
}

}  // namespace
