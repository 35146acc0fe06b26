#include "zellap10/plotter/position.h"

#include <cmath>

namespace zellap10::plotter {

double moved_near(double longitude, double reference) {
    return reference + std::remainder(longitude - reference, 360.0);
}

double degrees_east(double longitude, double meridian) {
    const double east = std::fmod(longitude - meridian, 360.0);
    return east < 0.0 ? east + 360.0 : east;
}

}  // namespace zellap10::plotter
