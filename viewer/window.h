#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <SDL.h>

#include <viewer/script.h>
#include <viewer/view.h>

namespace viewer {

constexpr ScreenSize kSmallestWindow{320, 240};

/// A window of the desktop. It hands mouse and keys to a view, and shows what that draws.
class Window {
public:
    /// Throws std::runtime_error where there is no desktop to show a window on.
    explicit Window(ScreenSize size);

    /// Asks for another picture; from any thread.
    void ask_for_picture();

    /// Shows a view until its user has enough, or the script ends.
    void run(View& view, Script& script);

private:
    struct Sdl {
        Sdl();
        ~Sdl();
    };
    void handle(const SDL_Event& event, View& view);
    void show(View& view);
    void fit(View& view);
    void wait_for_next_frame();

    Sdl sdl_;
    std::unique_ptr<SDL_Window, void (*)(SDL_Window*)> window_;
    std::uint32_t picture_event_;
    std::uint64_t shown_at_ = 0;  // milliseconds
    ScreenSize size_;
    std::vector<Argb> pixels_;
};

}  // namespace viewer
