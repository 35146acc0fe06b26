#include <viewer/window.h>

#include <stdexcept>
#include <string>

namespace viewer {

namespace {

template <class Object>
Object* there(Object* object) {
    if (object == nullptr) throw std::runtime_error(SDL_GetError());
    return object;
}

Spot spot_of(int x, int y) {
    return {static_cast<double>(x), static_cast<double>(y)};
}

}  // namespace

Window::Sdl::Sdl() {
    if (SDL_Init(SDL_INIT_VIDEO) != 0) throw std::runtime_error(SDL_GetError());
}

Window::Sdl::~Sdl() {
    SDL_Quit();
}

Window::Window(Size size)
    : window_(there(SDL_CreateWindow("Charts", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, size.width,
                                     size.height, SDL_WINDOW_RESIZABLE)),
              SDL_DestroyWindow),
      renderer_(there(SDL_CreateRenderer(window_.get(), -1, SDL_RENDERER_PRESENTVSYNC)), SDL_DestroyRenderer),
      texture_(nullptr, SDL_DestroyTexture),
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
    SDL_GetRendererOutputSize(renderer_.get(), &size_.width, &size_.height);
    texture_.reset(there(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_ARGB8888,
                                           SDL_TEXTUREACCESS_STREAMING, size_.width, size_.height)));
    SDL_SetTextureBlendMode(texture_.get(), SDL_BLENDMODE_NONE);
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
    SDL_UpdateTexture(texture_.get(), nullptr, pixels_.data(), stride);
    SDL_RenderCopy(renderer_.get(), texture_.get(), nullptr, nullptr);
    SDL_RenderPresent(renderer_.get());
}

void Window::run(View& view, Script& script) {
    fit(view);
    while (!view.is_over()) {
        show(view);
        script.go_on(view);
        SDL_Event event;
        if (SDL_WaitEvent(&event) == 0) throw std::runtime_error(SDL_GetError());
        do
            handle(event, view);
        while (SDL_PollEvent(&event) != 0);
    }
}

}  // namespace viewer
