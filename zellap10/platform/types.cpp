#include "zellap10/platform/types.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

#include <zellap10/platform/c_locale.h>

void CString::Format(const char* format, ...) {
    const zellap10::platform::CLocaleScope c_locale;
    std::va_list arguments;
    va_start(arguments, format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): it is, one line above
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);

    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    va_start(arguments, format);
    static_cast<void>(std::vsnprintf(&text[0], text.size() + 1, format, arguments));
    va_end(arguments);
    text_ = std::move(text);
}
