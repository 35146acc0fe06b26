#pragma once
// What wine's C headers and libc++ lack of Visual C++'s runtime: declarations alone, since nothing is linked.
#include <locale.h>
#include <math.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdlib.h>
#include <time.h>
#include <wchar.h>
#ifndef _TIMESPEC_DEFINED
#define _TIMESPEC_DEFINED
struct timespec {
    time_t tv_sec;
    long tv_nsec;
};
#endif
extern "C" {
int __cdecl _islower_l(int, _locale_t);
int __cdecl _isupper_l(int, _locale_t);
int __cdecl _isdigit_l(int, _locale_t);
int __cdecl _isxdigit_l(int, _locale_t);
float __cdecl _strtof_l(const char*, char**, _locale_t);
double __cdecl _strtod_l(const char*, char**, _locale_t);
int __cdecl _vscprintf_l(const char*, _locale_t, va_list);
int __cdecl _vsnprintf_l(char*, size_t, const char*, _locale_t, va_list);
unsigned int __cdecl ___lc_codepage_func(void);
double __cdecl nan(const char*);
int __cdecl timespec_get(struct timespec*, int);
}
#ifndef MB_CUR_MAX
#define MB_CUR_MAX ___mb_cur_max_func()
#endif
#ifdef __cplusplus
#undef isnan
#undef isinf
#undef isfinite
#undef isnormal
#undef signbit
#undef fpclassify
extern "C++" {
#define ZF(T)                                          \
    inline bool isnan(T x) noexcept {                  \
        return __builtin_isnan(x);                     \
    }                                                  \
    inline bool isinf(T x) noexcept {                  \
        return __builtin_isinf(x);                     \
    }                                                  \
    inline bool isfinite(T x) noexcept {               \
        return __builtin_isfinite(x);                  \
    }                                                  \
    inline bool isnormal(T x) noexcept {               \
        return __builtin_isnormal(x);                  \
    }                                                  \
    inline bool signbit(T x) noexcept {                \
        return __builtin_signbit(x);                   \
    }                                                  \
    inline int fpclassify(T x) noexcept {              \
        return __builtin_fpclassify(0, 1, 4, 3, 2, x); \
    }
ZF(float) ZF(double) ZF(long double)
#undef ZF
}
#endif
#if defined(_DEBUG)
#define _ITERATOR_DEBUG_LEVEL 2
#else
#define _ITERATOR_DEBUG_LEVEL 0
#endif
