#include "viewer/script.h"

#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include <SDL.h>

namespace viewer {

namespace {

std::optional<SDL_Event> button_event(const std::string& button, std::istringstream& words) {
    std::string way;
    SDL_Event event{};
    words >> way >> event.button.x >> event.button.y;
    if (way != "down" && way != "up") return std::nullopt;
    event.type = way == "down" ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = button == "left" ? SDL_BUTTON_LEFT : SDL_BUTTON_RIGHT;
    return event;
}

std::optional<SDL_Event> key_event(std::istringstream& words) {
    std::string name;
    std::getline(words >> std::ws, name);
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = SDL_GetKeyFromName(name.c_str());
    if (event.key.keysym.sym == SDLK_UNKNOWN) return std::nullopt;
    return event;
}

std::optional<SDL_Event> text_event(std::istringstream& words) {
    std::string text;
    std::getline(words >> std::ws, text);
    SDL_Event event{};
    event.type = SDL_TEXTINPUT;
    if (text.size() >= sizeof event.text.text) return std::nullopt;
    text.copy(event.text.text, text.size());
    return event;
}

std::optional<SDL_Event> event_of(const std::string& word, std::istringstream& words) {
    SDL_Event event{};
    if (word == "left" || word == "right") return button_event(word, words);
    if (word == "key") return key_event(words);
    if (word == "type") return text_event(words);
    if (word == "move") {
        event.type = SDL_MOUSEMOTION;
        words >> event.motion.x >> event.motion.y;
        return event;
    }
    if (word == "wheel") {
        event.type = SDL_MOUSEWHEEL;
        words >> event.wheel.y;
        return event;
    }
    return std::nullopt;
}

}  // namespace

Script::Script(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty()) lines_.push_back(line);
    }
}

void Script::go_on(View& view) {
    if (!view.save_failure().empty()) throw std::runtime_error(view.save_failure());
    if (lines_.empty() || !view.is_complete()) return;
    const std::string line = lines_.front();
    lines_.pop_front();
    std::istringstream words(line);
    std::string word;
    words >> word;
    SDL_Event event{};
    if (word == "save") {
        std::string path;
        std::getline(words >> std::ws, path);
        view.save(path);
        event.type = SDL_USEREVENT;
    } else if (const auto described = event_of(word, words); described && words) {
        event = *described;
    } else {
        throw std::runtime_error("no event: " + line);
    }
    SDL_PushEvent(&event);
}

}  // namespace viewer
