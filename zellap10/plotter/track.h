#pragma once

/// @file
///
/// The ship: its last fix, where it has been and where it will be.

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include <zellap10/plotter/nmea.h>
#include <zellap10/plotter/position.h>

namespace zellap10::plotter {

/// The last fix of a ship and its track. Memory is bounded.
class Track {
public:
    using Clock = std::chrono::steady_clock;  ///< of the time when a fix is received

    static constexpr std::chrono::seconds kLostAfter{10};  ///< the age from which a fix counts as lost
    static constexpr std::size_t kMostPoints = 20000;      ///< of a track

    /// A place where the ship has been.
    struct Point {
        Position position;         ///< WGS 84
        bool starts_line = false;  ///< no line leads here: it is the first, or the fix was lost before
    };

    /// Adds a fix. A later fix of the same time replaces the last one, since receivers send several sentences
    /// for one time.
    ///
    /// @param fix  as NmeaReader returns it
    /// @param now  when it was received, by the clock of this machine
    void add(const Fix& fix, Clock::time_point now);

    /// The fix that was added last; empty if there is none.
    [[nodiscard]] const std::optional<Fix>& last_fix() const { return last_fix_; }

    /// The time since the last fix was received; the longest one if there is none.
    [[nodiscard]] Clock::duration age(Clock::time_point now) const;

    /// Whether there is no fix, or the last one is older than kLostAfter.
    [[nodiscard]] bool is_lost(Clock::time_point now) const { return age(now) > kLostAfter; }

    /// Where the ship has been, the last fix included. If there are kMostPoints, `add` first discards every
    /// second one of the older half.
    [[nodiscard]] const std::vector<Point>& points() const { return points_; }

private:
    void thin();

    std::optional<Fix> last_fix_;
    Clock::time_point received_;
    std::vector<Point> points_;
};

/// Where a ship will be by its course and speed over the ground, along a rhumb line.
///
/// @param fix      the ship; its course may be in any turn
/// @param minutes  from the time of the fix on
/// @return         longitude from -180 to 180; empty without course and speed, if one of the numbers is not
///                 finite, and if the line reaches a pole
[[nodiscard]] std::optional<Position> predict(const Fix& fix, double minutes);

}  // namespace zellap10::plotter
