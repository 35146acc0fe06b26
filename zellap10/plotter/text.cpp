#include "zellap10/plotter/text.h"

#include <cmath>
#include <cstddef>

#include <zellap10/plotter/mile.h>

namespace zellap10::plotter {

namespace {

constexpr char kNoValue[] = "---";
constexpr char kDegree[] = "\xC2\xB0";  // in UTF-8

constexpr long long kPartsOfDegree = 6000;  // hundredths of a minute
constexpr double kLeastMiles = 0.1;         // below it a distance is told in metres
constexpr double kTooFarMiles = 1e9;
constexpr double kTooLongSeconds = 2147483647.0;

// At least `count` digits.
std::string digits(long long number, std::size_t count) {
    std::string text = std::to_string(number);
    if (text.size() < count) text.insert(0, count - text.size(), '0');
    return text;
}

// Of an angle in hundredths of a minute.
std::string degrees_and_minutes(long long parts, std::size_t degree_digits) {
    return digits(parts / kPartsOfDegree, degree_digits) + kDegree + digits(parts % kPartsOfDegree / 100, 2) +
           '.' + digits(parts % 100, 2) + '\'';
}

std::string miles_text(double miles) {
    const long long hundredths = std::llround(miles * 100.0);
    const long long tenths = std::llround(miles * 10.0);
    if (hundredths < 1000) return digits(hundredths / 100, 1) + '.' + digits(hundredths % 100, 2) + " NM";
    if (tenths < 1000) return digits(tenths / 10, 1) + '.' + digits(tenths % 10, 1) + " NM";
    return digits(std::llround(miles), 1) + " NM";
}

// Two units, of which `parts` of the smaller make one of the larger.
std::string in_units(long long count, long long parts, const char* larger, const char* smaller) {
    return digits(count / parts, 1) + larger + digits(count % parts, 2) + smaller;
}

}  // namespace

std::string position_text(const Position& position) {
    return latitude_text(position.latitude) + ' ' + longitude_text(position.longitude);
}

std::string latitude_text(double degrees) {
    if (!(std::fabs(degrees) < 91.0)) return kNoValue;
    const long long parts = std::llround(std::fabs(degrees) * kPartsOfDegree);
    if (parts > 90 * kPartsOfDegree) return kNoValue;
    return degrees_and_minutes(parts, 2) + (degrees > 0.0 || parts == 0 ? 'N' : 'S');
}

std::string longitude_text(double degrees) {
    if (!std::isfinite(degrees)) return kNoValue;
    const double reduced = std::remainder(degrees, 360.0);
    const long long parts = std::llround(std::fabs(reduced) * kPartsOfDegree);
    return degrees_and_minutes(parts, 3) + (reduced > 0.0 || parts == 0 ? 'E' : 'W');
}

std::string course_text(double degrees) {
    if (!std::isfinite(degrees)) return kNoValue;
    const long long tenths = (std::llround(std::remainder(degrees, 360.0) * 10.0) + 3600) % 3600;
    return digits(tenths / 10, 3) + '.' + digits(tenths % 10, 1) + kDegree;
}

std::string distance_text(double miles) {
    const double size = std::fabs(miles);
    if (!(size < kTooFarMiles)) return kNoValue;
    const long long metres = std::llround(size * kMetresOfMile);
    const char* const sign = miles < 0.0 && metres > 0 ? "-" : "";
    return sign + (size < kLeastMiles ? digits(metres, 1) + " m" : miles_text(size));
}

std::string duration_text(double seconds) {
    const double size = std::fabs(seconds);
    if (!(size < kTooLongSeconds)) return kNoValue;
    const long long whole_seconds = std::llround(size);
    const long long minutes = std::llround(size / 60.0);
    const long long hours = std::llround(size / 3600.0);
    const std::string sign = seconds < 0.0 && whole_seconds > 0 ? "-" : "";
    if (whole_seconds < 3600) return sign + in_units(whole_seconds, 60, " min ", " s");
    if (minutes < 1440) return sign + in_units(minutes, 60, " h ", " min");
    return sign + in_units(hours, 24, " d ", " h");
}

}  // namespace zellap10::plotter
