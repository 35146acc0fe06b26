#include "zellap10/plotter/text.h"

#include <cmath>

namespace zellap10::plotter {

namespace {

constexpr char kNoValue[] = "---";
constexpr char kDegree[] = "\xC2\xB0";  // in UTF-8

constexpr long long kPartsOfDegree = 6000;  // hundredths of a minute
constexpr double kLeastMiles = 0.1;         // below it distances are in metres
constexpr double kTooFarMiles = 1e9;
constexpr double kTooLongSeconds = 2147483647.0;
constexpr double kTooFastTenths = 1e10;

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

// The length of the UTF-8 character at the start of a text; 0 if there is none.
std::size_t character_length(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) return 1;
    const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
    if (byte(0) < 0xC0 || length > text.size()) return 0;
    unsigned code = byte(0) & 0xFFU >> (length + 1);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        code = code << 6 | (byte(i) & 0x3F);
    }
    constexpr unsigned kFewest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool is_surrogate = code >= 0xD800 && code < 0xE000;
    return code >= kFewest[length] && code <= 0x10FFFF && !is_surrogate ? length : 0;
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

std::string format_speed(std::optional<double> knots) {
    const double size = knots ? std::round(std::fabs(*knots) * 10.0) : kTooFastTenths;
    if (!(size < kTooFastTenths)) return kNoValue;
    const long long tenths = std::llround(size);
    return (*knots < 0.0 ? "-" : "") + digits(tenths / 10, 1) + '.' + digits(tenths % 10, 1) + " kn";
}

std::string utf8_text(std::string_view text, std::size_t longest) {
    std::string out;
    while (!text.empty()) {
        const std::size_t length = character_length(text);
        std::string character(text.substr(0, length));
        if (length == 0) {
            const auto byte = static_cast<unsigned char>(text[0]);
            character = {static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
        }
        if (out.size() + character.size() > longest) break;
        out += character;
        text.remove_prefix(length > 0 ? length : 1);
    }
    return out;
}

}  // namespace zellap10::plotter
