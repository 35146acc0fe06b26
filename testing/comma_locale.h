#pragma once

#include <clocale>

/// Sets a locale with a decimal comma. The destructor sets the "C" locale.
class CommaLocale {
public:
    CommaLocale() {
        // The build makes the first one; the others are names on Windows.
        for (const char* const name : {"de_DE.UTF-8", "German_Germany.1252", "de-DE"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) break;
        }
    }
    ~CommaLocale() { std::setlocale(LC_ALL, "C"); }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    bool is_set() const { return *std::localeconv()->decimal_point == ','; }
};
