#include "viewer/window.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace viewer {

namespace {

template <class Object>
Object* not_null(Object* object) {
    if (object == nullptr) throw std::runtime_error(SDL_GetError());
    return object;
}

}  // namespace

// A picture is copied to the window. Through a renderer, the default of SDL, it takes 12 ms for 1920 by 1080
// pixels without a graphics card, and 1 ms so.
Window::Sdl::Sdl() {
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    if (SDL_Init(SDL_INIT_VIDEO) != 0) throw std::runtime_error(SDL_GetError());
    // SDL falls back to drivers that show nothing.
    const std::string driver = SDL_GetCurrentVideoDriver();
    const bool is_invisible = driver == "dummy" || driver == "offscreen" || driver == "evdev";
    if (!is_invisible || std::getenv("SDL_VIDEODRIVER") != nullptr) return;
    SDL_Quit();
    throw std::runtime_error("There is no display.");
}

Window::Sdl::~Sdl() {
    SDL_Quit();
}

Window::Window(ScreenSize size, double scale)
    : window_(
          not_null(SDL_CreateWindow("Charts", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, size.width,
                                    size.height, SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI)),
          SDL_DestroyWindow),
      picture_event_(SDL_RegisterEvents(1)),
      scale_(scale) {
    SDL_SetWindowMinimumSize(window_.get(), kSmallestWindow.width, kSmallestWindow.height);
    SDL_StopTextInput();
}

void Window::ask_for_picture() {
    SDL_Event event{};
    event.type = picture_event_;
    SDL_PushEvent(&event);
}

// Adopts the size of the window.
void Window::fit(View& view) {
    const SDL_Surface* surface = not_null(SDL_GetWindowSurface(window_.get()));
    int points = 0;
    SDL_GetWindowSize(window_.get(), &points, nullptr);
    if (points > 0) pixels_per_point_ = static_cast<double>(surface->w) / points;
    size_ = {surface->w, surface->h};
    pixels_.resize(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height));
    view.resize(size_, scale_ * pixels_per_point_);
}

void Window::handle(const SDL_Event& event, View& view) {
    const auto button = [&] {
        return event.button.button == SDL_BUTTON_RIGHT ? Button::kRight : Button::kLeft;
    };
    switch (event.type) {
        case SDL_QUIT:
            return view.quit();
        case SDL_KEYDOWN:
            return view.press_key(SDL_GetKeyName(event.key.keysym.sym));
        case SDL_TEXTINPUT:
            return view.type(event.text.text);
        case SDL_MOUSEBUTTONDOWN:
            return view.press(button(), pixel_of(event.button.x, event.button.y),
                              (SDL_GetModState() & KMOD_SHIFT) != 0);
        case SDL_MOUSEBUTTONUP:
            return view.release(button(), pixel_of(event.button.x, event.button.y));
        case SDL_MOUSEMOTION:
            return view.move(pixel_of(event.motion.x, event.motion.y));
        case SDL_MOUSEWHEEL:
            return view.zoom(event.wheel.preciseY != 0 ? static_cast<double>(event.wheel.preciseY)
                                                       : event.wheel.y);
        case SDL_WINDOWEVENT:
            if (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) fit(view);
            if (event.window.event == SDL_WINDOWEVENT_LEAVE) view.leave();
            return;
        default:
            return;
    }
}

void Window::show(View& view) {
    const int stride = size_.width * static_cast<int>(sizeof(Argb));
    view.draw({pixels_.data(), size_.width, size_.height, stride});
    SDL_Surface* surface = not_null(SDL_GetWindowSurface(window_.get()));
    if (surface->w != size_.width || surface->h != size_.height) return;  // an event will follow
    SDL_ConvertPixels(size_.width, size_.height, SDL_PIXELFORMAT_RGB888, pixels_.data(), stride,
                      surface->format->format, surface->pixels, surface->pitch);
    SDL_UpdateWindowSurface(window_.get());
}

// No more than 60 pictures per second: the rest of the time belongs to the workers.
void Window::wait_for_next_frame() {
    constexpr std::uint64_t kFrame = 16;
    const std::uint64_t since = SDL_GetTicks64() - shown_at_;
    if (since < kFrame) SDL_Delay(static_cast<std::uint32_t>(kFrame - since));
    shown_at_ = SDL_GetTicks64();
}

void Window::run(View& view, Script& script) {
    fit(view);
    while (!view.is_over()) {
        show(view);
        script.go_on(view);
        SDL_Event event{};
        const auto timeout = view.redraw_ms();
        const int came = timeout ? SDL_WaitEventTimeout(&event, *timeout) : SDL_WaitEvent(&event);
        if (came == 0 && !timeout) throw std::runtime_error(SDL_GetError());
        if (came == 0) continue;
        wait_for_next_frame();
        do
            handle(event, view);
        while (SDL_PollEvent(&event) != 0);
        if (view.wants_text() != (SDL_IsTextInputActive() == SDL_TRUE))
            view.wants_text() ? SDL_StartTextInput() : SDL_StopTextInput();
    }
}

}  // namespace viewer
