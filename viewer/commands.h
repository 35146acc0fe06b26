#pragma once

#include <string>
#include <vector>

namespace viewer {

/// What a key does.
enum class Command {
    kNone,
    kPanLeft,
    kPanRight,
    kPanUp,
    kPanDown,
    kCloser,
    kWider,
    kTurnLeft,
    kTurnRight,
    kNorthUp,
    kCourseUp,
    kFollow,
    kAll,
    kMoreDetail,
    kLessDetail,
    kSheet,
    kOutlines,
    kGoTo,
    kRoute,
    kUndo,
    kClear,
    kLoad,
    kSaveRoute,
    kWaypoint,
    kGrid,
    kPoints,
    kColours,
    kSave,
    kHelp,
    kEnter,
    kLeave,
    kQuit,
};

/// The command of a key.
///
/// @param key  its name as SDL gives it, such as "G", "Left" or "Keypad +"
Command command_of(const std::string& key);

/// What mouse and keys do, in lines of text.
std::vector<std::string> help_lines();

}  // namespace viewer
