#include "viewer/script.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include <SDL.h>

namespace viewer {

namespace {

std::string rest_of(std::istringstream& words) {
    std::string rest;
    std::getline(words >> std::ws, rest);
    return rest;
}

// The event of a line; one of type 0 is none.
SDL_Event event_of(const std::string& word, std::istringstream& words) {
    SDL_Event event{};
    if (word == "left" || word == "right") {
        std::string way;
        words >> way >> event.button.x >> event.button.y;
        if (way == "down" || way == "up")
            event.type = way == "down" ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.button = word == "left" ? SDL_BUTTON_LEFT : SDL_BUTTON_RIGHT;
    } else if (word == "key") {
        event.key.keysym.sym = SDL_GetKeyFromName(rest_of(words).c_str());
        if (event.key.keysym.sym != SDLK_UNKNOWN) event.type = SDL_KEYDOWN;
    } else if (word == "type") {
        const std::string text = rest_of(words);
        if (text.size() < sizeof event.text.text) event.type = SDL_TEXTINPUT;
        text.copy(event.text.text, sizeof event.text.text - 1);
    } else if (word == "move") {
        event.type = SDL_MOUSEMOTION;
        words >> event.motion.x >> event.motion.y;
    } else if (word == "wheel") {
        event.type = SDL_MOUSEWHEEL;
        words >> event.wheel.y;
    }
    return event;
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
        view.save(rest_of(words));
        event.type = SDL_USEREVENT;
    } else {
        event = event_of(word, words);
    }
    if (event.type == 0 || !words) throw std::runtime_error("no event: " + line);
    SDL_PushEvent(&event);
}

}  // namespace viewer
