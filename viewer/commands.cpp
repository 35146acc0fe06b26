#include "viewer/commands.h"

namespace viewer {

namespace {

struct Binding {
    const char* key;
    Command command;
};

constexpr Binding kBindings[] = {
    {"Left", Command::kPanLeft},
    {"Right", Command::kPanRight},
    {"Up", Command::kPanUp},
    {"Down", Command::kPanDown},
    {"+", Command::kCloser},
    {"=", Command::kCloser},
    {"Keypad +", Command::kCloser},
    {"-", Command::kWider},
    {"Keypad -", Command::kWider},
    {",", Command::kTurnLeft},
    {".", Command::kTurnRight},
    {"U", Command::kNorthUp},
    {"C", Command::kCourseUp},
    {"F", Command::kFollow},
    {"Home", Command::kAll},
    {"N", Command::kMoreDetail},
    {"PageDown", Command::kMoreDetail},
    {"P", Command::kLessDetail},
    {"PageUp", Command::kLessDetail},
    {"V", Command::kSheet},
    {"O", Command::kOutlines},
    {"J", Command::kGoTo},
    {"R", Command::kRoute},
    {"Backspace", Command::kUndo},
    {"Delete", Command::kClear},
    {"L", Command::kLoad},
    {"S", Command::kSaveRoute},
    {"W", Command::kWaypoint},
    {"G", Command::kGrid},
    {"T", Command::kPoints},
    {"D", Command::kColours},
    {"I", Command::kSave},
    {"H", Command::kHelp},
    {"F1", Command::kHelp},
    {"Return", Command::kEnter},
    {"Keypad Enter", Command::kEnter},
    {"Escape", Command::kLeave},
    {"Q", Command::kQuit},
};

}  // namespace

Command command_of(const std::string& key) {
    for (const Binding& binding : kBindings) {
        if (key == binding.key) return binding.command;
    }
    return Command::kNone;
}

std::vector<std::string> help_lines() {
    return {
        "drag, arrow keys      move                  R            start and end route mode, in which",
        "wheel, + and -        zoom                    click        adds a waypoint",
        "Shift and drag, , .   turn                    drag         moves it; on a leg, inserts one",
        "U, C                  north up, course up     right click  deletes it",
        "F                     follow the ship       Backspace    undo a change of the route",
        "Home                  show everything       Delete       clear the route",
        "N, P                  chart of this place   L, S         load and save the route (GPX)",
        "                      with more, less detail W            sail to the next waypoint",
        "V                     chart as printed      G            grid",
        "O                     hidden charts         T            reference points (as printed)",
        "J                     go to a position      D            day, dusk, night",
        "H, F1                 this help             I            save a picture (PNG)",
        "Escape                close messages        Q            quit",
    };
}

}  // namespace viewer
