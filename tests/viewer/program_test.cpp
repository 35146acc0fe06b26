#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "screen.h"
#include <testing/test_chart.h>

namespace {

using namespace viewer;

// Runs the program, on SDL's driver without a desktop, and returns whether it succeeded. Its home is a folder
// of the test. `before` goes in front of the program.
bool run(const TempFolder& home, const std::string& arguments, const std::string& before = "") {
    const std::string program = before + " \"" VIEW_PROGRAM "\" --size 640x524 " + arguments;
#if defined(_WIN32)
    // cmd.exe removes the first and the last quote of a command.
    const std::string command = "\"set \"HOME=" + home.file("") + "\" && " + program + "\"";
#else
    const std::string command = "HOME=\"" + home.file("") + "\" " + program;
#endif
    return std::system(command.c_str()) == 0;
}

TEST(Program, PassesMouseAndKeysToTheView) {
    Screen screen;
    const std::string chart = TestChart{}.write(screen.folder, "chart");
    const std::string script = screen.folder.write("script",
                                                   "key Keypad +\nkey R\n"
                                                   "left down 300 200\nleft up 300 200\nleft down 400 300\n"
                                                   "move 350 280\nleft up 350 280\n"
                                                   "left down 200 150\nleft up 200 150\n"
                                                   "right down 200 150\nright up 200 150\n"
                                                   "key J\ntype 49 36N 1 12W\nkey Return\n"
                                                   "move 120 130\nwheel -2\nwheel 1\n"
                                                   "move 2147483647 -2147483648\nmove 120 130\n"
                                                   "key D\nkey G\n"
                                                   "save " +
                                                       screen.folder.file("view.png") + "\nkey F1\nkey Q\n");
    ASSERT_TRUE(run(screen.folder, "--script \"" + script + "\" \"" + chart + "\""));
    EXPECT_TRUE(std::filesystem::exists(screen.folder.file("route-1.gpx")));

    screen.look_at({chart});
    screen.press_keys({"+", "R"});
    screen.click({300, 200});
    screen.drag({400, 300}, {350, 280});
    screen.click({200, 150});
    screen.click({200, 150}, Button::kRight);
    screen.answer("J", "49.6N 1.2W");
    screen->move({120, 130});
    screen->zoom(-2);
    screen->zoom(1);
    screen.press_keys({"D", "G"});
    screen.expect_saved(screen.folder.file("view.png"));
}

TEST(Program, RefusesWhatItCannotDo) {
    const TempFolder folder;
    const std::string chart = TestChart{}.write(folder, "chart");
    const auto script = [&](const std::string& name, const std::string& lines) {
        return "--script " + folder.write(name, lines + "\nkey Q\n") + " " + chart;
    };
    for (const std::string& arguments :
         {std::string(), "--wide " + chart, "--size 640 " + chart, "--size 640x44 " + chart,
          "--size 640x99999999999 " + chart, "--scale x " + chart, "--gpsd a --nmea b " + chart,
          "--script none " + chart, script("a", "push left 1 1"), script("b", "move 99999999999 1"),
          script("c", "save " + folder.file("none/a.png"))})
        EXPECT_FALSE(run(folder, arguments + " 2>&1")) << arguments;
#if !defined(_WIN32)
    EXPECT_FALSE(
        run(folder, script("d", "key Q") + " 2>&1", "env -u SDL_VIDEODRIVER -u DISPLAY -u WAYLAND_DISPLAY"))
        << "no display";
#endif
}

}  // namespace
