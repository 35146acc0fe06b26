#include "zellap10/plotter/track.h"

#include <cmath>

#include <zellap10/navigation/dead_reckoning.h>

namespace zellap10::plotter {

void Track::add(const Fix& fix, Clock::time_point now) {
    const bool starts_line = is_lost(now);
    const bool replaces = !starts_line && fix.time && last_fix_->time == fix.time;
    last_fix_ = fix;
    received_ = now;
    if (replaces) {
        points_.back().position = fix.position;
        return;
    }
    if (points_.size() == kMostPoints) thin();
    points_.push_back({fix.position, starts_line});
}

Track::Clock::duration Track::age(Clock::time_point now) const {
    return last_fix_ ? now - received_ : Clock::duration::max();
}

// The start of a line is passed on from a point that is discarded to the next one.
void Track::thin() {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < points_.size(); ++i) {
        if (i % 2 == 1 && i < kMostPoints / 2) {
            points_[i + 1].starts_line |= points_[i].starts_line;
        } else {
            points_[kept++] = points_[i];
        }
    }
    points_.resize(kept);
}

std::optional<Position> predict(const Fix& fix, double minutes) {
    if (!fix.course || !fix.speed) return std::nullopt;
    Position end = fix.position;
    const double turned = std::fmod(*fix.course, 360.0);
    m_advance_d(&end.latitude, &end.longitude, *fix.speed * minutes / 60.0,
                turned < 0.0 ? turned + 360.0 : turned);
    if (!(std::fabs(end.latitude) < 90.0) || !std::isfinite(end.longitude)) return std::nullopt;
    end.longitude = std::remainder(end.longitude, 360.0);
    return end;
}

}  // namespace zellap10::plotter
