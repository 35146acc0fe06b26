#pragma once

#include <string>

#include <viewer/box.h>

namespace viewer {

struct Waypoint {
    Position position;  ///< WGS 84
    std::string name;   ///< UTF-8; may be empty
};

}  // namespace viewer
