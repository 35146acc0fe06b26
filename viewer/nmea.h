#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <viewer/fix.h>

namespace viewer {

/// Reads NMEA 0183 sentences from bytes that come in pieces: RMC, GGA, VTG and HDT of any talker.
///
/// Each RMC and GGA with a position gives a fix. Speed, course and heading of other sentences are added to it
/// for three seconds. Sentences of other types and proprietary ones are ignored.
class NmeaReader {
public:
    /// Reads the next bytes.
    ///
    /// @return  the fixes of the lines that end in these bytes, the oldest first
    std::vector<Fix> read(std::string_view bytes);

    /// Lines without a correct checksum, longer than 512 bytes, or with fields that are no valid numbers.
    std::int64_t broken_lines() const { return broken_lines_; }

    /// Seconds since midnight, UTC, of the last sentence with a time.
    std::optional<double> time_of_day() const { return time_of_day_; }

private:
    using Fields = std::vector<std::string_view>;

    // A value and the time of day at which it came.
    struct Held {
        std::optional<double> value;
        std::optional<double> time_of_day;
    };

    bool end_line(std::vector<Fix>& fixes);
    bool read_rmc(const Fields& fields, std::vector<Fix>& fixes);
    bool read_gga(const Fields& fields, std::vector<Fix>& fixes);
    bool read_vtg(const Fields& fields);
    bool read_hdt(const Fields& fields);
    bool hold(Held& held, std::string_view text, double limit) const;
    std::optional<double> recent(const Held& held) const;
    Fix fix_at(zellap10::plotter::Position position);

    std::string line_;
    bool too_long_ = false;
    std::int64_t broken_lines_ = 0;
    std::optional<double> time_of_day_;
    std::optional<double> day_;  // seconds since 1970 at the midnight of the last date
    std::optional<double> last_time_;
    Held speed_, course_, heading_;
};

}  // namespace viewer
