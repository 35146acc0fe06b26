#include "zellap10/plotter/text.h"

#include <cmath>
#include <cstddef>

namespace zellap10::plotter {

namespace {

constexpr char kNoValue[] = "---";
constexpr char kDegree[] = "\xC2\xB0";  // in UTF-8

constexpr long long kPartsOfDegree = 6000;  // hundredths of a minute
constexpr double kLeastMiles = 0.1;         // below it distances are in metres
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

std::string format_position(Position position) {
    return format_latitude(position.latitude) + ' ' + format_longitude(position.longitude);
}

std::string format_latitude(double degrees) {
    if (!(std::fabs(degrees) < 91.0)) return kNoValue;
    const long long parts = std::llround(std::fabs(degrees) * kPartsOfDegree);
    if (parts > 90 * kPartsOfDegree) return kNoValue;
    return degrees_and_minutes(parts, 2) + (degrees > 0.0 || parts == 0 ? 'N' : 'S');
}

std::string format_longitude(double degrees) {
    if (!std::isfinite(degrees)) return kNoValue;
    const double reduced = std::remainder(degrees, 360.0);
    const long long parts = std::llround(std::fabs(reduced) * kPartsOfDegree);
    return degrees_and_minutes(parts, 3) + (reduced > 0.0 || parts == 0 ? 'E' : 'W');
}

std::string format_course(std::optional<double> degrees) {
    if (!degrees || !std::isfinite(*degrees)) return kNoValue;
    const long long tenths = (std::llround(std::remainder(*degrees, 360.0) * 10.0) + 3600) % 3600;
    return digits(tenths / 10, 3) + '.' + digits(tenths % 10, 1) + kDegree;
}

std::string format_distance(double miles) {
    const double size = std::fabs(miles);
    if (!(std::round(size) < kTooFarMiles)) return kNoValue;
    const std::string sign = miles < 0.0 ? "-" : "";
    if (size >= kLeastMiles) return sign + miles_text(size);
    return sign + digits(std::llround(size * kMetresPerNauticalMile), 1) + " m";
}

std::string format_duration(std::optional<double> seconds) {
    const double size = seconds ? std::round(std::fabs(*seconds)) : kTooLongSeconds;
    if (!(size < kTooLongSeconds)) return kNoValue;
    const long long total = std::llround(size);
    const long long minutes = std::llround(std::fabs(*seconds) / 60.0);
    const long long hours = std::llround(std::fabs(*seconds) / 3600.0);
    const std::string sign = *seconds < 0.0 ? "-" : "";
    if (total < 3600) return sign + in_units(total, 60, " min ", " s");
    if (minutes < 1440) return sign + in_units(minutes, 60, " h ", " min");
    return sign + in_units(hours, 24, " d ", " h");
}

}  // namespace zellap10::plotter
