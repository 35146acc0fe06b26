#pragma once

/// @file
///
/// Visual C++ gives classes of the standard library other sizes at another _ITERATOR_DEBUG_LEVEL, so a Debug
/// application needs the Debug library. An application that is linked with the other one lacks this symbol.

#include <string>  // defines _ITERATOR_DEBUG_LEVEL

#include <zellap10/platform/export.h>

#if defined(_MSC_VER) && !defined(ZELLAP10_STATIC)

#define ZELLAP10_JOIN_AS_IS(a, b) a##b
#define ZELLAP10_JOIN(a, b) ZELLAP10_JOIN_AS_IS(a, b)
#define ZELLAP10_TEXT_AS_IS(a) #a
#define ZELLAP10_TEXT(a) ZELLAP10_TEXT_AS_IS(a)
#define ZELLAP10_ITERATOR_LEVEL ZELLAP10_JOIN(zellap10_iterator_debug_level_, _ITERATOR_DEBUG_LEVEL)

extern "C" ZELLAP10_API void ZELLAP10_ITERATOR_LEVEL();

#if !defined(ZELLAP10_BUILD) && defined(_M_IX86)
#pragma comment(linker, "/include:__imp__" ZELLAP10_TEXT(ZELLAP10_ITERATOR_LEVEL))
#elif !defined(ZELLAP10_BUILD)
#pragma comment(linker, "/include:__imp_" ZELLAP10_TEXT(ZELLAP10_ITERATOR_LEVEL))
#endif

#endif
