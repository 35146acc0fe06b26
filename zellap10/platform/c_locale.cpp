#include "zellap10/platform/c_locale.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include <locale.h>

namespace zellap10::platform {

#if defined(_MSC_VER)

namespace {

_locale_t c_locale() {
    static const _locale_t locale = [] {
        const _locale_t made = _create_locale(LC_ALL, "C");
        if (made == nullptr) throw std::bad_alloc();
        return made;
    }();
    return locale;
}

}  // namespace

double strtod_in_c_locale(const char* text, char** end) {
    return _strtod_l(text, end, c_locale());
}

int vsnprintf_in_c_locale(char* buffer, std::size_t size, const char* format, std::va_list arguments) {
    if (size == 0) return _vscprintf_l(format, c_locale(), arguments);
    return _vsnprintf_l(buffer, size, format, c_locale(), arguments);
}

#else

namespace {

#if defined(_WIN32)

// mingw-w64 has functions of its own, which take no locale object: those of the system read neither "0x2A"
// nor "inf".
class CLocaleScope {
public:
    CLocaleScope()
        : numeric_before_(std::setlocale(LC_NUMERIC, nullptr)),
          per_thread_before_(_configthreadlocale(_ENABLE_PER_THREAD_LOCALE)) {
        if (std::setlocale(LC_NUMERIC, "C") != nullptr) return;
        _configthreadlocale(per_thread_before_);
        throw std::bad_alloc();
    }
    ~CLocaleScope() {
        std::setlocale(LC_NUMERIC, numeric_before_.c_str());
        _configthreadlocale(per_thread_before_);
    }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    const std::string numeric_before_;  // first, since it may throw
    const int per_thread_before_;
};

#else

// The C library has one object for the "C" locale, so asking for it costs next to nothing. A library that
// makes a new object fails only if memory runs out.
class CLocaleScope {
public:
    CLocaleScope() : c_locale_(newlocale(LC_ALL_MASK, "C", nullptr)) {
        if (c_locale_ == nullptr) throw std::bad_alloc();
        before_ = uselocale(c_locale_);
    }
    ~CLocaleScope() {
        uselocale(before_);
        freelocale(c_locale_);
    }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    locale_t c_locale_;
    locale_t before_;
};

#endif

}  // namespace

double strtod_in_c_locale(const char* text, char** end) {
    const CLocaleScope c_locale;
    return std::strtod(text, end);
}

int vsnprintf_in_c_locale(char* buffer, std::size_t size, const char* format, std::va_list arguments) {
    const CLocaleScope c_locale;
    return std::vsnprintf(buffer, size, format, arguments);
}

#endif

}  // namespace zellap10::platform
