#pragma once

#include <cstdarg>
#include <cstddef>

namespace zellap10::platform {

/// strtod and vsnprintf of the C library as in the "C" locale, whatever locale the application has set. Other
/// threads, and that setting, are not touched. Throw std::bad_alloc if the "C" locale cannot be allocated.
double strtod_in_c_locale(const char* text, char** end);
int vsnprintf_in_c_locale(char* buffer, std::size_t size, const char* format, std::va_list arguments);

}  // namespace zellap10::platform
