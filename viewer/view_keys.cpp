// What the keys do.

#include <algorithm>
#include <map>

#include <viewer/files.h>
#include <viewer/view.h>

namespace viewer {

namespace {

constexpr double kKeyPan = 96;   // pixels
constexpr double kKeyTurn = 15;  // degrees

// Keys that do the same as another one.
const std::map<std::string, std::string> kOtherNames = {
    {"=", "+"},      {"Keypad +", "+"}, {"Keypad -", "-"},          {"PageDown", "N"},
    {"PageUp", "P"}, {"F1", "H"},       {"Keypad Enter", "Return"},
};

}  // namespace

void View::press_key(const std::string& name) {
    // clang-format off
    static const std::map<std::string, void (*)(View&)> kActions = {
        {"Left",      [](View& v) { v.pan(kKeyPan, 0); }},
        {"Right",     [](View& v) { v.pan(-kKeyPan, 0); }},
        {"Up",        [](View& v) { v.pan(0, kKeyPan); }},
        {"Down",      [](View& v) { v.pan(0, -kKeyPan); }},
        {"+",         [](View& v) { v.zoom(1); }},
        {"-",         [](View& v) { v.zoom(-1); }},
        {",",         [](View& v) { v.turn(kKeyTurn); }},
        {".",         [](View& v) { v.turn(-kKeyTurn); }},
        {"U",         [](View& v) { v.turn(-v.map_.course_up()); }},
        {"C",         [](View& v) { v.toggle_course_up(); }},
        {"F",         [](View& v) { v.follows_ = !v.follows_; v.follow(); }},
        {"Home",      [](View& v) { v.show_all(); }},
        {"N",         [](View& v) { v.step_detail(-1); }},
        {"P",         [](View& v) { v.step_detail(1); }},
        {"V",         [](View& v) { v.toggle_sheet(); }},
        {"O",         [](View& v) { v.shows_outlines_ = !v.shows_outlines_; }},
        {"G",         [](View& v) { v.shows_grid_ = !v.shows_grid_; }},
        {"T",         [](View& v) { v.shows_points_ = !v.shows_points_; }},
        {"D",         [](View& v) { v.scheme_ = static_cast<ColourScheme>((static_cast<int>(v.scheme_) + 1) % 3); }},
        {"I",         [](View& v) { v.save(free_path(v.options_.picture_folder, "chart", ".png")); }},
        {"R",         [](View& v) { v.route_mode_ = !v.route_mode_; }},
        {"Backspace", [](View& v) { v.undo(); }},
        {"Delete",    [](View& v) { v.clear_route(); }},
        {"W",         [](View& v) { v.target_ = (v.target_ + 1) % std::max(v.waypoints().size(), std::size_t{1}); }},
        {"J",         [](View& v) { v.ask("Go to position: ", &View::go_to, ""); }},
        {"L",         [](View& v) { v.ask("Load the route of: ", &View::load_route, v.route_path_); }},
        {"S",         [](View& v) { v.ask("Save the route as: ", &View::save_route, v.route_path_); }},
        {"H",         [](View& v) { v.shows_help_ = !v.shows_help_; }},
        {"Escape",    [](View& v) { v.shows_help_ = false; v.hides_problems_ = true; }},
        {"Q",         [](View& v) { v.quit(); }},
    };
    // clang-format on
    message_.clear();
    const auto other = kOtherNames.find(name);
    const std::string& key = other != kOtherNames.end() ? other->second : name;
    if (prompt_) return edit_prompt(key);
    if (const auto action = kActions.find(key); action != kActions.end()) action->second(*this);
}

std::vector<std::string> help_lines() {
    return {
        "drag, arrow keys      move                   R            start and end route mode, in which",
        "wheel, + and -        zoom                     click        adds a waypoint",
        "Shift and drag, , .   turn                     drag         moves it; on a leg, inserts one",
        "U, C                  north up, course up      right click  deletes it",
        "F                     follow the ship        Backspace    undo a change of the route",
        "Home                  show everything        Delete       clear the route",
        "N, P                  chart of this place    L, S         load and save the route (GPX)",
        "                      with more, less detail W            sail to the next waypoint",
        "V                     chart as printed       G            grid",
        "O                     hidden charts          T            reference points (as printed)",
        "J                     go to a position       D            day, dusk, night",
        "H, F1                 this help              I            save a picture (PNG)",
        "Escape                close messages         Q            quit",
    };
}

}  // namespace viewer
