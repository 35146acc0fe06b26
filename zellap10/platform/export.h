#pragma once

/// ZELLAP10_API marks an exported class or function. Everything else is hidden.
///
/// A program that links the static library defines ZELLAP10_STATIC (the CMake target does it for its users).
#if defined(ZELLAP10_STATIC)
#define ZELLAP10_API
#elif defined(_WIN32)
#if defined(ZELLAP10_BUILD)
#define ZELLAP10_API __declspec(dllexport)
#else
#define ZELLAP10_API __declspec(dllimport)
#endif
#else
#define ZELLAP10_API __attribute__((visibility("default")))
#endif
