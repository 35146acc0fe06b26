#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "screen.h"
#include <testing/test_chart.h>

namespace {

using namespace viewer;

// Runs the program, on SDL's driver without a desktop, and gives whether it ended well.
bool run(const std::string& arguments) {
    return std::system(("\"" VIEW_PROGRAM "\" --size 640x524 " + arguments).c_str()) == 0;
}

TEST(Program, HandsMouseAndKeysToTheView) {
    Screen screen;
    const std::string chart = TestChart{}.write(screen.folder, "chart");
    const std::string script = screen.folder.write("script",
                                                   "key N\nkey P\nkey Keypad +\n"
                                                   "left down 300 200\nleft up 300 200\n"
                                                   "left down 400 300\nmove 350 280\nleft up 350 280\n"
                                                   "left down 200 150\nleft up 200 150\n"
                                                   "right down 1 1\nright up 1 1\n"
                                                   "move 120 130\nwheel -2\nwheel 1\n"
                                                   "key D\nkey G\n"
                                                   "save " +
                                                       screen.folder.file("view.png") + "\nkey F1\nkey Q\n");
    const std::string paths = "\"" + chart + "\" \"" + screen.folder.file("none") + "\"";
    ASSERT_TRUE(run("--script \"" + script + "\" " + paths));

    screen.look_at({chart, screen.folder.file("none")});
    screen->do_command(Command::kCloser);
    screen.click({300, 200});
    screen.drag({400, 300}, {350, 280});
    screen.click({200, 150});
    screen->press(Button::kRight, {1, 1});
    screen->move({120, 130});
    screen->turn_wheel(-2);
    screen->turn_wheel(1);
    screen.do_commands({Command::kLight, Command::kGrid});
    screen.expect_saved(screen.folder.file("view.png"));
}

TEST(Program, RefusesWhatItCannotDo) {
    const TempFolder folder;
    const std::string chart = TestChart{}.write(folder, "chart");
    const std::string bad_script = folder.write("script", "push left 1 1\nkey Q\n");
    const std::string empty = folder.file("empty");
    std::filesystem::create_directory(empty);
    for (const std::string& arguments :
         {std::string(), std::string("--wide ") + chart, "--size 640 " + chart, "--size 640x44 " + chart,
          "--script none " + chart, "--script " + bad_script + " " + chart, empty})
        EXPECT_FALSE(run(arguments + " 2>&1")) << arguments;
}

}  // namespace
