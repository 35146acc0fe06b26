#include "zellap10/platform/types.h"

#include <cstdarg>
#include <utility>

#include <zellap10/platform/c_locale.h>

#if defined(ZELLAP10_RUNTIME_SYMBOL)
void ZELLAP10_RUNTIME_SYMBOL() {}
#endif

void CString::Format(const char* format, ...) {
    using zellap10::platform::vsnprintf_in_c_locale;
    std::va_list arguments;
    va_start(arguments, format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): it is, one line above
    const int length = vsnprintf_in_c_locale(nullptr, 0, format, arguments);
    va_end(arguments);

    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    va_start(arguments, format);
    static_cast<void>(vsnprintf_in_c_locale(&text[0], text.size() + 1, format, arguments));
    va_end(arguments);
    text_ = std::move(text);
}
