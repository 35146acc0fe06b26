#pragma once

#include <filesystem>
#include <string>

#if defined(_WIN32)
#include <locale.h>
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#endif

/// Paths as text in the code page by which the C library opens files. The path class of the standard library
/// uses another one in some implementations: UTF-8 in GCC's.
namespace zellap10::platform {

#if defined(_WIN32)

/// UTF-8 if the locale has it, otherwise the code page of the system.
inline UINT code_page_of_paths() {
    if (___lc_codepage_func() == CP_UTF8) return CP_UTF8;
    return AreFileApisANSI() != 0 ? CP_ACP : CP_OEMCP;
}

/// A text in UTF-16, up to its first zero. Empty if it is not valid in its code page.
inline std::wstring to_wide(const char* text, UINT code_page) {
    const int size = MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, text, -1, nullptr, 0);
    if (size <= 1) return {};
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, text, -1, &wide[0], size);
    wide.pop_back();
    return wide;
}

/// A text of UTF-16 in a code page. Empty if that lacks a character.
inline std::string from_wide(const std::wstring& wide, UINT code_page) {
    const int size = WideCharToMultiByte(code_page, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(code_page, 0, wide.c_str(), -1, &text[0], size, nullptr, nullptr);
    text.pop_back();
    // Windows replaces characters that the code page lacks by similar ones.
    return to_wide(text.c_str(), code_page) == wide ? text : std::string();
}

/// Empty if the text is not valid in the code page.
inline std::filesystem::path path_of(const std::string& text) {
    return to_wide(text.c_str(), code_page_of_paths());
}

/// Empty if the code page lacks a character of the path.
inline std::string text_of(const std::filesystem::path& path) {
    return from_wide(path.wstring(), code_page_of_paths());
}

#else

inline std::filesystem::path path_of(const std::string& text) {
    return text;
}

inline std::string text_of(const std::filesystem::path& path) {
    return path.string();
}

#endif

}  // namespace zellap10::platform
