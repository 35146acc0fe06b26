#pragma once

namespace zellap10::platform {

/// Whether a text begins with another, letters A to Z being the same in both cases. Other characters, and
/// letters of other alphabets, must be equal; no locale takes part.
inline bool begins_with_any_case(const char* text, const char* front) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (; *front != '\0'; ++text, ++front) {
        if (lower(*text) != lower(*front)) return false;
    }
    return true;
}

}  // namespace zellap10::platform
