#include "viewer/commands.h"

namespace viewer {

namespace {

struct Binding {
    const char* key;
    Command command;
};

constexpr Binding kBindings[] = {
    {"Left", Command::kPanLeft},    {"Right", Command::kPanRight},  {"Up", Command::kPanUp},
    {"Down", Command::kPanDown},    {"+", Command::kCloser},        {"=", Command::kCloser},
    {"Keypad +", Command::kCloser}, {"-", Command::kWider},         {"Keypad -", Command::kWider},
    {"Home", Command::kWhole},      {"N", Command::kNext},          {"PageDown", Command::kNext},
    {"P", Command::kPrevious},      {"PageUp", Command::kPrevious}, {"B", Command::kBest},
    {"Backspace", Command::kUndo},  {"Delete", Command::kClear},    {"G", Command::kGrid},
    {"R", Command::kPoints},        {"D", Command::kLight},         {"S", Command::kSave},
    {"H", Command::kHelp},          {"F1", Command::kHelp},         {"Escape", Command::kLeave},
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
        "drag, arrow keys      move the chart",
        "wheel, + and -        closer and wider, about the pointer",
        "Home                  the whole chart",
        "N, P (Page Down, Up)  next and previous chart",
        "B                     best chart for the middle of the window",
        "click                 add a waypoint",
        "right click,",
        "  Backspace           take the last waypoint off",
        "Delete                clear the route",
        "G                     grid",
        "R                     reference points",
        "D                     day, dusk, night",
        "S                     save this view as a PNG picture",
        "H, F1                 this help",
        "Q                     quit",
    };
}

}  // namespace viewer
