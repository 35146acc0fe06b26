#include <zellap10/platform/c_locale.h>

#include <clocale>

namespace zellap10::platform {

#if defined(_WIN32)

CLocaleScope::CLocaleScope()
    : numeric_before_(std::setlocale(LC_NUMERIC, nullptr)),
      per_thread_before_(_configthreadlocale(_ENABLE_PER_THREAD_LOCALE)) {
    std::setlocale(LC_NUMERIC, "C");
}

CLocaleScope::~CLocaleScope() {
    std::setlocale(LC_NUMERIC, numeric_before_.c_str());
    _configthreadlocale(per_thread_before_);
}

#else

namespace {

// Made once and never freed: a locale object is constant data, and every scope uses the same.
locale_t c_locale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

}  // namespace

CLocaleScope::CLocaleScope() : before_(uselocale(c_locale())) {}

CLocaleScope::~CLocaleScope() {
    uselocale(before_);
}

#endif

}  // namespace zellap10::platform
