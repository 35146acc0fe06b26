#include "zellap10/navigation/dead_reckoning.h"

#include <cmath>

#include <zellap10/navigation/course.h>
#include <zellap10/navigation/meridional_parts.h>
#include <zellap10/platform/whole_number.h>

namespace zellap10::navigation {
namespace {

using platform::DEG_TO_RAD;

constexpr double kOver60 = 0.016666666666666666;
constexpr double kOver3600 = 0.0002777777777777778;

// A course this near to 90 or 270 follows the parallel, DEGREES: its tangent is too large to be of use.
constexpr double kParallelCourseDeg = 0.01;
// 1 / (2 kParallelDeg).
constexpr double kOverParallel = 5000.0;

// The absolute tangent of a course, negative for courses strictly between 90 and 180 or 270 and 360.
double m_course_tan(double course) {
    const double size = std::fabs(std::tan(course * DEG_TO_RAD));
    return (course > 90.0 && course < 180.0) || (course > 270.0 && course < 360.0) ? -size : size;
}

}  // namespace
}  // namespace zellap10::navigation

using namespace zellap10::navigation;

long m_ttg(double lat1, double lon1, double lat2, double lon2, double speed) {
    return zellap10::platform::whole_number(m_distance(lat1, lon1, lat2, lon2) * 3600.0 / speed);
}

double m_advance_d(double* lat, double* lon, double distance, double course) {
    const double phi = *lat;
    double d = distance * kOver60;
    double dphi = 0.0;
    if (std::fabs(course - 90.0) < kParallelCourseDeg) {
        // East: d is the departure.
    } else if (std::fabs(course - 270.0) < kParallelCourseDeg) {
        d = -d;
    } else {
        dphi = d * std::cos(course * DEG_TO_RAD);
    }
    const double new_phi = dphi + phi;
    const double dlam_minutes =
        dphi != 0.0 ? parts_between(phi, new_phi) * m_course_tan(course)
                    : parts_between(phi - kParallelDeg, new_phi + kParallelDeg) * d * kOverParallel;
    *lat = new_phi;
    *lon = dlam_minutes * kOver60 + *lon;
    return distance;
}

double m_advance_t(double* lat, double* lon, double time, double speed, double course) {
    return m_advance_d(lat, lon, time * speed * kOver3600, course);
}

void m_line(double lat0, double lon0, double* lat, double* lon, double theta) {
    const double m0 = parts(lat0 * DEG_TO_RAD);
    const double x = *lon * 60.0 - lon0 * 60.0;
    const double y = parts(*lat * DEG_TO_RAD) - m0;
    const double u = x * std::cos(-theta) - y * std::sin(-theta);
    *lon = (lon0 * 60.0 + std::cos(theta) * u) * kOver60;
    *lat = latitude_of(m0 + std::sin(theta) * u);
}
