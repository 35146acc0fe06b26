#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <zellap10/plotter/position.h>

/// @file
///
/// The sentences of receivers: NMEA 0183.

namespace zellap10::plotter {

/// What a receiver measures at one time.
struct Fix {
    std::optional<double> time;     ///< seconds since midnight, UTC
    Position position;              ///< WGS 84
    std::optional<double> speed;    ///< over the ground, knots
    std::optional<double> course;   ///< over the ground, DEGREES clockwise from true north
    std::optional<double> heading;  ///< DEGREES clockwise from true north
};

/// Reads NMEA 0183 sentences from bytes that come in pieces: RMC, GGA, VTG and HDT of any talker.
///
/// Each RMC and GGA with a position gives a fix. Speed, course and heading of other sentences are added to it
/// for three seconds. Sentences of other types and proprietary ones are ignored. The bytes may be any.
class NmeaReader {
public:
    /// Reads the next bytes.
    ///
    /// @param bytes  any part of the stream; a line may continue in the next call
    /// @return       the fixes of the lines that end in these bytes, the oldest first
    std::vector<Fix> read(std::string_view bytes);

    /// Lines without a correct checksum, longer than 512 bytes, or with fields that are no valid numbers.
    std::int64_t broken_lines() const { return broken_lines_; }

    /// Seconds since midnight, UTC, of the last sentence with a time.
    std::optional<double> time_of_day() const { return time_of_day_; }

private:
    using Fields = std::vector<std::string>;

    // A value and the time of day at which it came.
    struct Held {
        std::optional<double> value, time_of_day;
    };

    bool end_line(std::vector<Fix>& fixes);
    bool add_fix(const Fields& fields, std::size_t first, std::vector<Fix>& fixes);
    bool read_time(const std::string& text);
    bool hold(Held& held, const std::string& text, double limit) const;
    std::optional<double> recent(const Held& held) const;

    std::string line_;
    std::int64_t broken_lines_ = 0;
    std::optional<double> time_of_day_;
    Held speed_, course_, heading_;
};

}  // namespace zellap10::plotter
