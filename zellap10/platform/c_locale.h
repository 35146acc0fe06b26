#pragma once

#include <string>

#if !defined(_WIN32)
#include <locale.h>
#endif

namespace zellap10::platform {

/// While an object of this class lives, the C library's functions on the calling thread read and print
/// numbers as in the "C" locale. Other threads, and the application's own setting, are not touched. Making
/// one may throw std::bad_alloc.
class CLocaleScope {
public:
    CLocaleScope();
    ~CLocaleScope();
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
#if defined(_WIN32)
    std::string numeric_before_;  // first: it may throw, and nothing is changed yet
    int per_thread_before_;
#else
    locale_t c_locale_;
    locale_t before_;
#endif
};

}  // namespace zellap10::platform
