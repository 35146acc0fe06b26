#include <zellap10/platform/types.h>

#include <cstdarg>
#include <cstdio>

#include <zellap10/platform/c_locale.h>

namespace {

// The printed text; empty where printf refuses the format.
std::string print(const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text;
    try {
        text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        if (length > 0) std::vsnprintf(&text[0], text.size() + 1, format, again);
    } catch (...) {
        va_end(again);
        throw;
    }
    va_end(again);
    return text;
}

}  // namespace

void CString::Format(const char* format, ...) {
    const zellap10::platform::CLocaleScope c_locale;
    std::va_list arguments;
    va_start(arguments, format);
    try {
        text_ = print(format, arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}
