#include "zellap10/platform/c_locale.h"

#include <clocale>
#include <new>

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

// The C library has one object for the "C" locale, so that asking for it costs next to nothing; one that
// makes a new object has nothing else to fail for than memory.
CLocaleScope::CLocaleScope() : c_locale_(newlocale(LC_ALL_MASK, "C", nullptr)) {
    if (c_locale_ == nullptr) throw std::bad_alloc();
    before_ = uselocale(c_locale_);
}

CLocaleScope::~CLocaleScope() {
    uselocale(before_);
    freelocale(c_locale_);
}

#endif

}  // namespace zellap10::platform
