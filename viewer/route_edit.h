#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include <zellap10/plotter/route.h>

namespace viewer {

using namespace zellap10::plotter;

/// A route that is edited, with undo. An index or leg outside the route changes nothing.
class RouteEdit {
public:
    const std::vector<Waypoint>& waypoints() const { return waypoints_; }

    void add(const Waypoint& waypoint);
    /// Inserts a waypoint in a leg; leg 0 starts at waypoint 0. A drag of it belongs to this change.
    void insert(std::size_t leg, const Waypoint& waypoint);
    void remove(std::size_t index);
    void clear() { replace({}); }
    void replace(std::vector<Waypoint> waypoints);  ///< with a loaded route, for example

    /// A drag moves one waypoint in many steps, and one undo takes all of them back. Another change ends it.
    void begin_drag(std::size_t index);
    void drag_to(Position position);
    void end_drag() { dragged_.reset(); }

    /// Takes the last change back; 200 changes are kept.
    ///
    /// @return  false if there is none
    bool undo();

private:
    void keep();

    std::vector<Waypoint> waypoints_;
    std::deque<std::vector<Waypoint>> earlier_;
    std::optional<std::size_t> dragged_;
};

}  // namespace viewer
