#pragma once

#include <deque>
#include <string>

#include <viewer/view.h>

namespace viewer {

/// Lines that stand for somebody at mouse and keyboard. Each becomes the event that SDL would send:
///
///     move X Y          left down X Y     right down X Y     key NAME
///     wheel STEPS       left up X Y       right up X Y
///
/// and `save PATH` saves the view as a PNG picture. A line waits until the picture of all before it is whole.
class Script {
public:
    /// No lines.
    Script() = default;

    /// Throws std::runtime_error where the file cannot be read.
    explicit Script(const std::string& path);

    /// Does what the next line says, if the view is whole and there is one. Throws std::runtime_error where
    /// the line says nothing that can be done.
    void go_on(View& view);

private:
    std::deque<std::string> lines_;
};

}  // namespace viewer
