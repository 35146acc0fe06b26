#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <SDL.h>

#include <viewer/script.h>
#include <viewer/view.h>

namespace viewer {

constexpr ScreenSize kSmallestWindow{320, 240};
constexpr ScreenSize kLargestWindow{16384, 16384};

/// A window of the desktop. It passes mouse and keys to a view, and shows what that draws.
class Window {
public:
    /// @param scale  of texts and lines, besides that of the desktop
    ///
    /// Throws std::runtime_error if there is no display.
    Window(ScreenSize size, double scale);

    /// Asks for another picture; from any thread.
    void ask_for_picture();

    /// Shows a view until its user quits, or the script ends.
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
    ScreenPixel pixel_of(int x, int y) const { return {x * pixels_per_point_, y * pixels_per_point_}; }

    Sdl sdl_;
    std::unique_ptr<SDL_Window, void (*)(SDL_Window*)> window_;
    std::uint32_t picture_event_;
    double scale_;
    double pixels_per_point_ = 1;  // of the desktop, more than 1 on screens with small pixels
    std::uint64_t shown_at_ = 0;   // milliseconds
    ScreenSize size_;
    std::vector<Argb> pixels_;
};

}  // namespace viewer
