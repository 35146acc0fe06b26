#include "viewer/nmea.h"

#include <charconv>
#include <cmath>

namespace viewer {

using zellap10::plotter::Position;

namespace {

constexpr std::size_t kLongestLine = 512;  // the standard allows 82; some receivers exceed that
constexpr double kSecondsOfDay = 86400.0;
constexpr double kRecentSeconds = 3.0;
constexpr double kFastest = 2000.0;  // knots

// A number of digits with at most one point, from 0 to the limit.
std::optional<double> number(std::string_view text, double limit) {
    if (text.empty() || text.find_first_not_of("0123456789.") != std::string::npos) return std::nullopt;
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    if (read.ec != std::errc() || read.ptr != end || value > limit) return std::nullopt;
    return value;
}

// The two digits at a place of a text.
std::optional<int> two_digits(std::string_view text, std::size_t at) {
    if (text.size() < at + 2) return std::nullopt;
    const auto value = number(text.substr(at, 2), 99.0);
    if (!value || text.substr(at, 2).find('.') != std::string::npos) return std::nullopt;
    return static_cast<int>(*value);
}

// hhmmss.ss
std::optional<double> seconds_of_day(std::string_view text) {
    const auto hours = two_digits(text, 0);
    const auto minutes = two_digits(text, 2);
    const auto seconds =
        text.size() < 6 ? std::nullopt : number(text.substr(4), 61.0);  // 60 is a leap second
    if (!hours || !minutes || !seconds || *hours > 23 || *minutes > 59) return std::nullopt;
    return *hours * 3600.0 + *minutes * 60.0 + *seconds;
}

// The midnight of ddmmyy, seconds since 1970.
std::optional<double> midnight_of(std::string_view text) {
    const auto day = two_digits(text, 0);
    const auto month = two_digits(text, 2);
    const auto short_year = two_digits(text, 4);
    if (text.size() != 6 || !day || !month || !short_year) return std::nullopt;
    if (*day < 1 || *day > 31 || *month < 1 || *month > 12) return std::nullopt;
    // Years run from March, so that the leap day is their last.
    const int year = *short_year + (*short_year < 80 ? 2000 : 1900) - (*month < 3 ? 1 : 0);
    const int days_from_march = (153 * ((*month + 9) % 12) + 2) / 5 + *day - 1;
    const int days = 365 * year + year / 4 - year / 100 + year / 400 + days_from_march - 719468;
    return days * kSecondsOfDay;
}

// ddmm.mmmm or dddmm.mmmm and a hemisphere, in degrees.
std::optional<double> angle(std::string_view text, std::string_view hemisphere, std::string_view letters,
                            double limit) {
    const auto value = number(text, limit * 100.0);
    if (!value || hemisphere.size() != 1 || letters.find(hemisphere) == std::string::npos)
        return std::nullopt;
    const double degrees = std::floor(*value / 100.0);
    const double minutes = *value - degrees * 100.0;
    if (!(minutes < 60.0)) return std::nullopt;
    const double size = degrees + minutes / 60.0;
    return hemisphere[0] == letters[0] ? size : -size;
}

// Of four fields.
std::optional<Position> position_of(const std::vector<std::string_view>& fields, std::size_t first) {
    const auto latitude = angle(fields[first], fields[first + 1], "NS", 90.0);
    const auto longitude = angle(fields[first + 2], fields[first + 3], "EW", 180.0);
    if (!latitude || !longitude) return std::nullopt;
    return Position{*latitude, *longitude};
}

// The text between $ and *, if the checksum after it is correct.
std::optional<std::string_view> body_of(std::string_view line) {
    const std::size_t star = line.size() - 3;
    if (line.size() < 4 || (line[0] != '$' && line[0] != '!') || line[star] != '*') return std::nullopt;
    unsigned stated = 0;
    const char* const end = line.data() + line.size();
    if (std::from_chars(end - 2, end, stated, 16).ptr != end) return std::nullopt;
    unsigned sum = 0;
    for (const char c : line.substr(1, star - 1)) {
        if (c < ' ' || c > '~') return std::nullopt;
        sum ^= static_cast<unsigned char>(c);
    }
    if (sum != stated) return std::nullopt;
    return line.substr(1, star - 1);
}

std::vector<std::string_view> split(std::string_view body) {
    std::vector<std::string_view> fields;
    for (std::size_t comma = body.find(','); comma != std::string::npos; comma = body.find(',')) {
        fields.push_back(body.substr(0, comma));
        body.remove_prefix(comma + 1);
    }
    fields.push_back(body);
    return fields;
}

}  // namespace

std::vector<Fix> NmeaReader::read(std::string_view bytes) {
    std::vector<Fix> fixes;
    for (const char c : bytes) {
        if (c == '\n' || c == '\r') {
            if (too_long_ || !end_line(fixes)) ++broken_lines_;
            line_.clear();
            too_long_ = false;
        } else if (line_.size() < kLongestLine) {
            line_.push_back(c);
        } else {
            too_long_ = true;
        }
    }
    return fixes;
}

// Returns false for a broken line.
bool NmeaReader::end_line(std::vector<Fix>& fixes) {
    if (line_.empty() || line_[0] == '#') return true;  // a comment of a log
    const auto body = body_of(line_);
    if (!body) return false;
    const Fields fields = split(*body);
    if (line_[0] == '!' || fields[0].size() != 5 || fields[0][0] == 'P') return true;
    const std::string_view type = fields[0].substr(2);
    if (type == "RMC") return read_rmc(fields, fixes);
    if (type == "GGA") return read_gga(fields, fixes);
    if (type == "VTG") return read_vtg(fields);
    return type != "HDT" || read_hdt(fields);
}

// 1 time, 2 status, 3 to 6 position, 7 knots, 8 course, 9 date, 10 and 11 variation, 12 mode
bool NmeaReader::read_rmc(const Fields& fields, std::vector<Fix>& fixes) {
    if (fields.size() < 10) return false;
    if (!fields[1].empty() && !(time_of_day_ = seconds_of_day(fields[1]))) return false;
    if (!fields[9].empty()) {
        last_time_.reset();
        if (!(day_ = midnight_of(fields[9]))) return false;
    }
    const bool has_fix = fields[2] == "A" && (fields.size() < 13 || fields[12] != "N");
    if (!has_fix) return fields[2] == "A" || fields[2] == "V";
    const auto position = position_of(fields, 3);
    if (!position || !hold(speed_, fields[7], kFastest) || !hold(course_, fields[8], 360.0)) return false;
    fixes.push_back(fix_at(*position));
    return true;
}

// 1 time, 2 to 5 position, 6 quality
bool NmeaReader::read_gga(const Fields& fields, std::vector<Fix>& fixes) {
    if (fields.size() < 7) return false;
    if (!fields[1].empty() && !(time_of_day_ = seconds_of_day(fields[1]))) return false;
    const auto quality = number(fields[6], 9.0);
    if (!quality) return false;
    if (*quality == 0.0) return true;
    const auto position = position_of(fields, 2);
    if (!position) return false;
    fixes.push_back(fix_at(*position));
    return true;
}

// 1 and 2 true course, 3 and 4 magnetic course, 5 and 6 knots
bool NmeaReader::read_vtg(const Fields& fields) {
    if (fields.size() < 7) return false;
    if (fields[2] != "T" || fields[6] != "N") return true;  // of a standard before 2.0
    return hold(course_, fields[1], 360.0) && hold(speed_, fields[5], kFastest);
}

// 1 and 2 true heading
bool NmeaReader::read_hdt(const Fields& fields) {
    return fields.size() >= 3 && fields[2] == "T" && hold(heading_, fields[1], 360.0);
}

// An empty field is no value; one that is no number is broken and returns false.
bool NmeaReader::hold(Held& held, std::string_view text, double limit) const {
    const auto value = number(text, limit);
    if (!value && !text.empty()) return false;
    held = {value, time_of_day_};
    return true;
}

std::optional<double> NmeaReader::recent(const Held& held) const {
    if (!held.time_of_day || !time_of_day_) return held.value;
    const double age = std::fabs(std::remainder(*time_of_day_ - *held.time_of_day, kSecondsOfDay));
    return age <= kRecentSeconds ? held.value : std::nullopt;
}

Fix NmeaReader::fix_at(Position position) {
    Fix fix{std::nullopt, position, recent(speed_), recent(course_), recent(heading_)};
    if (!day_ || !time_of_day_) return fix;
    // A GGA after midnight may come before the RMC with the new date.
    const bool is_next_day = last_time_ && *day_ + *time_of_day_ < *last_time_ - kSecondsOfDay / 2;
    if (is_next_day) *day_ += kSecondsOfDay;
    fix.time = last_time_ = *day_ + *time_of_day_;
    return fix;
}

}  // namespace viewer
