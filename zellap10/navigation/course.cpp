#include "zellap10/navigation/course.h"

#include <cmath>

#include <zellap10/navigation/meridional_parts.h>

namespace zellap10::navigation {
namespace {

using platform::HALF_PI;
using platform::RAD_TO_DEG;

// Twice kParallelDeg, in minutes.
constexpr double kParallelMinutes = 0.012;

// A difference of longitude in degrees, reduced once by 360 if it is past 180.
double reduced(double dlon) {
    if (dlon > 180.0) return dlon - 360.0;
    if (dlon < -180.0) return dlon + 360.0;
    return dlon;
}

double bearing_of(double x, double y) {
    double theta = 0.0;
    if (x == 0.0 && y > 0.0) {
        theta = HALF_PI;
    } else if (x == 0.0 && y < 0.0) {
        theta = -HALF_PI;
    } else if (!(x == 0.0 && y == 0.0)) {
        theta = std::atan2(y, x);
    }
    const double t = theta * RAD_TO_DEG - 90.0;
    const double bearing = t > 0.0 ? 360.0 - t : 0.0 - t;  // due north is +0
    return bearing == 360.0 ? 0.0 : bearing;               // 360 minus a tiny t
}

// The length of a rhumb line. dlon is the reduced difference of longitude, parts_diff the parts between the
// latitudes.
double distance_over(double lat1, double lat2, double dlon, double parts_diff) {
    const double northing = (lat2 - lat1) * 60.0;
    double minutes = northing;
    if (northing == 0.0) {
        minutes = kParallelMinutes;
        parts_diff = parts_between(lat1 - kParallelDeg, lat2 + kParallelDeg);
    }
    if (parts_diff == 0.0) return 0.0;
    const double departure = minutes * dlon * 60.0 / parts_diff;
    return std::sqrt(departure * departure + northing * northing);
}

}  // namespace
}  // namespace zellap10::navigation

using namespace zellap10::navigation;

double m_bearing(double lat1, double lon1, double lat2, double lon2) {
    return bearing_of((lon2 - lon1) * 60.0, parts_between(lat1, lat2));
}

double m_theta(double lat1, double lon1, double lat2, double lon2) {
    const double x = (lon2 - lon1) * 60.0;
    const double y = parts_between(lat1, lat2);
    return x == 0.0 && y == 0.0 ? 0.0 : std::atan2(y, x);
}

double m_distance(double lat1, double lon1, double lat2, double lon2) {
    return distance_over(lat1, lat2, reduced(reduced(lon2 - lon1)), parts_between(lat1, lat2));
}

double m_b_d(double lat1, double lon1, double lat2, double lon2, double* bearing) {
    const double dlon = reduced(lon2 - lon1);
    const double parts_diff = parts_between(lat1, lat2);
    *bearing = bearing_of(dlon * 60.0, parts_diff);
    return distance_over(lat1, lat2, reduced(dlon), parts_diff);
}

double m_angle(double x, double y) {
    return bearing_of(x, y);
}

double m_diff(double lat1, double lat2) {
    return parts(lat2) - parts(lat1);
}

double m_parts(double lat) {
    return parts(lat);
}

double m_parts_inv(double minutes) {
    return latitude_of(minutes);
}
