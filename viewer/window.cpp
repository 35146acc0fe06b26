#include "viewer/window.h"

#include <stdexcept>
#include <string>

namespace viewer {

namespace {

template <class Object>
Object* there(Object* object) {
    if (object == nullptr) throw std::runtime_error(SDL_GetError());
    return object;
}

ScreenPixel spot_of(int x, int y) {
    return {static_cast<double>(x), static_cast<double>(y)};
}

}  // namespace

// A picture goes to the window as it is. Sent through a renderer, which SDL would do, it takes 12 ms of 1920
// by 1080 where there is no graphics card, and 1 ms so.
Window::Sdl::Sdl() {
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    if (SDL_Init(SDL_INIT_VIDEO) != 0) throw std::runtime_error(SDL_GetError());
}

Window::Sdl::~Sdl() {
    SDL_Quit();
}

Window::Window(ScreenSize size)
    : window_(there(SDL_CreateWindow("Charts", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, size.width,
                                     size.height, SDL_WINDOW_RESIZABLE)),
              SDL_DestroyWindow),
      picture_event_(SDL_RegisterEvents(1)) {
    SDL_SetWindowMinimumSize(window_.get(), kSmallestWindow.width, kSmallestWindow.height);
}

void Window::ask_for_picture() {
    SDL_Event event{};
    event.type = picture_event_;
    SDL_PushEvent(&event);
}

// Takes the window's size over.
void Window::fit(View& view) {
    const SDL_Surface* surface = there(SDL_GetWindowSurface(window_.get()));
    size_ = {surface->w, surface->h};
    pixels_.resize(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height));
    view.resize(size_);
}

void Window::handle(const SDL_Event& event, View& view) {
    const auto button = [&] {
        return event.button.button == SDL_BUTTON_RIGHT ? Button::kRight : Button::kLeft;
    };
    switch (event.type) {
        case SDL_QUIT:
            return view.do_command(Command::kQuit);
        case SDL_KEYDOWN:
            return view.do_command(command_of(SDL_GetKeyName(event.key.keysym.sym)));
        case SDL_MOUSEBUTTONDOWN:
            return view.press(button(), spot_of(event.button.x, event.button.y));
        case SDL_MOUSEBUTTONUP:
            return view.release(button(), spot_of(event.button.x, event.button.y));
        case SDL_MOUSEMOTION:
            return view.move(spot_of(event.motion.x, event.motion.y));
        case SDL_MOUSEWHEEL:
            return view.turn_wheel(event.wheel.y);
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
    SDL_Surface* surface = there(SDL_GetWindowSurface(window_.get()));
    if (surface->w != size_.width || surface->h != size_.height) return;  // an event will tell
    SDL_ConvertPixels(size_.width, size_.height, SDL_PIXELFORMAT_RGB888, pixels_.data(), stride,
                      surface->format->format, surface->pixels, surface->pitch);
    SDL_UpdateWindowSurface(window_.get());
}

// No more than 60 pictures a second: the rest of the time is the workers'.
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
        SDL_Event event;
        if (SDL_WaitEvent(&event) == 0) throw std::runtime_error(SDL_GetError());
        wait_for_next_frame();
        do
            handle(event, view);
        while (SDL_PollEvent(&event) != 0);
    }
}

}  // namespace viewer
