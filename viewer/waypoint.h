#pragma once

#include <string>

#include <zellap10/plotter/position.h>

namespace viewer {

struct Waypoint {
    zellap10::plotter::Position position;  ///< WGS 84
    std::string name;                      ///< UTF-8; may be empty
};

}  // namespace viewer
