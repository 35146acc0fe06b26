#pragma once

#include <clocale>

/// While an object of this class lives, the program's locale writes numbers with a decimal comma; after it,
/// the locale is "C" again.
class CommaLocale {
public:
    CommaLocale() {
        // The first is the build's own, the others are Windows' names for one of its own.
        for (const char* const name : {"de_DE.UTF-8", "German_Germany.1252", "de-DE"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) break;
        }
    }
    ~CommaLocale() { std::setlocale(LC_ALL, "C"); }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    bool is_set() const { return *std::localeconv()->decimal_point == ','; }
};
