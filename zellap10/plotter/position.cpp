#include "zellap10/plotter/position.h"

#include <cmath>

namespace zellap10::plotter {

double normalize_longitude(double longitude) {
    return std::fabs(longitude) <= 180.0 ? longitude : std::remainder(longitude, 360.0);
}

double longitude_near(double longitude, double reference) {
    const double east = longitude - reference;
    return std::fabs(east) <= 180.0 ? longitude : reference + std::remainder(east, 360.0);
}

double degrees_east(double longitude, double meridian) {
    const double east = std::fmod(longitude - meridian, 360.0);
    return east < 0.0 ? east + 360.0 : east;
}

}  // namespace zellap10::plotter
