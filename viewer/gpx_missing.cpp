#include "viewer/gpx.h"

namespace viewer {

LoadedGpx load_gpx(const std::string&) {
    return {{}, 0, "This viewer was built without libxml2 and loads no routes."};
}

std::string save_gpx(const std::string&, const std::vector<Waypoint>&) {
    return "This viewer was built without libxml2 and saves no routes.";
}

}  // namespace viewer
