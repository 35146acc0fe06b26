#pragma once

#include <deque>
#include <string>

#include <viewer/view.h>

namespace viewer {

/// Lines in place of somebody at mouse and keyboard. Each becomes the event that SDL would send:
///
///     move X Y          left down X Y     right down X Y     key NAME
///     wheel STEPS       left up X Y       right up X Y       type TEXT
///
/// and `save PATH` saves the view as a PNG picture. A line waits until the picture of all before it is
/// complete.
class Script {
public:
    /// No lines.
    Script() = default;

    /// Throws std::runtime_error if the file cannot be read.
    explicit Script(const std::string& path);

    /// Carries out the next line, if the view is complete and there is one. Throws std::runtime_error for a
    /// line that is no event, and if a picture could not be saved.
    void go_on(View& view);

private:
    std::deque<std::string> lines_;
};

}  // namespace viewer
