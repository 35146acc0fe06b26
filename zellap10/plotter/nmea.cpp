#include <algorithm>
#include <charconv>
#include <cmath>

#include <zellap10/plotter/nmea.h>
#include <zellap10/plotter/parse_position.h>

namespace zellap10::plotter {

namespace {

constexpr std::size_t kLongestLine = 512;  // the standard allows 82; some receivers exceed that
constexpr std::size_t kMostFields = 13;    // that are read
constexpr double kSecondsOfDay = 86400.0;
constexpr double kRecentSeconds = 3.0;
constexpr double kFastest = 2000.0;  // knots

std::optional<double> number(const std::string& text, double limit) {
    const auto value = parse_decimal(text);
    return value && *value >= 0.0 && *value <= limit ? value : std::nullopt;
}

// ddmm.mmmm or dddmm.mmmm and a hemisphere, in degrees.
std::optional<double> angle(const std::string& text, const std::string& hemisphere, const char* letters,
                            double limit) {
    const auto value = number(text, limit * 100.0);
    if (!value || hemisphere.size() != 1) return std::nullopt;
    const double degrees = std::floor(*value / 100.0);
    const double minutes = *value - degrees * 100.0;
    if (minutes >= 60.0) return std::nullopt;
    const double size = degrees + minutes / 60.0;
    if (hemisphere[0] == letters[0]) return size;
    return hemisphere[0] == letters[1] ? std::optional(-size) : std::nullopt;
}

// The text between the first character and *, if the checksum after it is correct.
std::optional<std::string_view> body_of(std::string_view line) {
    if (line.size() < 4 || line[line.size() - 3] != '*') return std::nullopt;
    const std::string_view body = line.substr(1, line.size() - 4);
    unsigned sum = 0;
    for (const char c : body)
        sum ^= static_cast<unsigned char>(c);
    unsigned stated = 0;
    const char* const end = line.data() + line.size();
    const bool is_number = std::from_chars(end - 2, end, stated, 16).ptr == end;
    return is_number && stated == sum ? std::optional(body) : std::nullopt;
}

std::vector<std::string> split(std::string_view body) {
    std::vector<std::string> fields(1);
    for (const char c : body) {
        if (c == ',')
            fields.emplace_back();
        else
            fields.back().push_back(c);
    }
    fields.resize(std::max(fields.size(), kMostFields));
    return fields;
}

}  // namespace

std::vector<Fix> NmeaReader::read(std::string_view bytes) {
    std::vector<Fix> fixes;
    for (const char c : bytes) {
        if (c == '\n' || c == '\r') {
            if (line_.size() > kLongestLine || !end_line(fixes)) ++broken_lines_;
            line_.clear();
        } else if (line_.size() <= kLongestLine) {
            line_.push_back(c);
        }
    }
    return fixes;
}

// Returns false for a broken line.
bool NmeaReader::end_line(std::vector<Fix>& fixes) {
    if (line_.empty() || line_[0] == '#') return true;  // a comment of a log
    const auto body = body_of(line_);
    if (!body || (line_[0] != '$' && line_[0] != '!')) return false;
    const Fields fields = split(*body);
    if (fields[0].size() != 5 || fields[0][0] == 'P') return true;
    const std::string type = fields[0].substr(2);
    if (type == "RMC") {
        // 1 time, 2 status, 3 to 6 position, 7 knots, 8 course, 12 mode
        if (!read_time(fields[1])) return false;
        if (fields[2] == "V" || fields[12] == "N") return true;
        return fields[2] == "A" && hold(speed_, fields[7], kFastest) && hold(course_, fields[8], 360.0) &&
               add_fix(fields, 3, fixes);
    }
    if (type == "GGA") {
        // 1 time, 2 to 5 position, 6 quality
        if (!read_time(fields[1]) || !number(fields[6], 9.0)) return false;
        return fields[6] == "0" || add_fix(fields, 2, fixes);
    }
    // 1 and 2 true course, 3 and 4 magnetic course, 5 and 6 knots; without letters before version 2.0
    if (type == "VTG" && fields[2] == "T" && fields[6] == "N")
        return hold(course_, fields[1], 360.0) && hold(speed_, fields[5], kFastest);
    return type != "HDT" || hold(heading_, fields[1], 360.0);
}

// hhmmss.ss, or nothing
bool NmeaReader::read_time(const std::string& text) {
    if (text.empty()) return true;
    const auto value = text.size() < 6 ? std::nullopt : number(text, 235961.0);
    if (!value) return false;
    const double hours = std::floor(*value / 10000.0);
    const double minutes = std::floor(*value / 100.0) - hours * 100.0;
    const double seconds = std::fmod(*value, 100.0);
    if (minutes >= 60.0 || seconds >= 61.0) return false;  // 60 is a leap second
    time_of_day_ = hours * 3600.0 + minutes * 60.0 + seconds;
    return true;
}

// An empty field is no value; one that is no number is broken and returns false.
bool NmeaReader::hold(Held& held, const std::string& text, double limit) const {
    held = {number(text, limit), time_of_day_};
    return held.value || text.empty();
}

std::optional<double> NmeaReader::recent(const Held& held) const {
    if (!held.time_of_day || !time_of_day_) return held.value;
    const double age = std::fabs(std::remainder(*time_of_day_ - *held.time_of_day, kSecondsOfDay));
    return age <= kRecentSeconds ? held.value : std::nullopt;
}

bool NmeaReader::add_fix(const Fields& fields, std::size_t first, std::vector<Fix>& fixes) {
    const auto latitude = angle(fields[first], fields[first + 1], "NS", 90.0);
    const auto longitude = angle(fields[first + 2], fields[first + 3], "EW", 180.0);
    if (!latitude || !longitude) return false;
    fixes.push_back(
        {time_of_day_, {*latitude, *longitude}, recent(speed_), recent(course_), recent(heading_)});
    return true;
}

}  // namespace zellap10::plotter
