#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include <viewer/box.h>
#include <zellap10/plotter/nmea.h>

namespace viewer {

/// The ship: its last fix and where it has been.
class Track {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::seconds kLostAfter{10};
    static constexpr std::size_t kMostPoints = 20000;

    struct Point {
        Position position;
        bool starts_line = false;  ///< no line leads here: it is the first, or the fix was lost before
    };

    /// Adds a fix. A later fix of the same time replaces the last one.
    ///
    /// @param now  when it was received, by the clock of this machine
    void add(const Fix& fix, Clock::time_point now);

    const std::optional<Fix>& last_fix() const { return last_fix_; }

    /// The time since the last fix was received, if there is one.
    Clock::duration age(Clock::time_point now) const { return now - received_; }

    /// Whether there is no fix, or the last one is older than kLostAfter.
    bool is_lost(Clock::time_point now) const;

    /// Where the ship has been, the last fix included. Of more than kMostPoints, every second one of the
    /// older half is discarded.
    const std::vector<Point>& points() const { return points_; }

private:
    void thin();

    std::optional<Fix> last_fix_;
    Clock::time_point received_;
    std::vector<Point> points_;
};

/// Where a ship will be by its course and speed over the ground, along a rhumb line.
///
/// @return  none without course and speed, and if the line passes a pole
std::optional<Position> predict(const Fix& fix, double minutes);

}  // namespace viewer
