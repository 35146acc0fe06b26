#pragma once

namespace zellap10::platform {

/// Folds the letters A to Z only, in every locale.
inline char lower_case(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether a text begins with another one, ignoring the case of the letters A to Z.
inline bool begins_with_any_case(const char* text, const char* front) {
    for (; *front != '\0'; ++text, ++front) {
        if (lower_case(*text) != lower_case(*front)) return false;
    }
    return true;
}

}  // namespace zellap10::platform
