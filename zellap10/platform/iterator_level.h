#pragma once

/// @file
///
/// With Visual C++, an application does not link with the DLL if it uses another runtime or another
/// _ITERATOR_DEBUG_LEVEL. Classes of the standard library would have other sizes or another heap.

#include <string>  // defines _ITERATOR_DEBUG_LEVEL

#include <zellap10/platform/export.h>

#if defined(_MSC_VER) && !defined(ZELLAP10_STATIC)

// The DLL exports a symbol that is named after both. An application that differs asks for another one.
#if defined(_DLL) && defined(_DEBUG)
#define ZELLAP10_RUNTIME zellap10_runtime_MDd_iterator_debug_level_
#elif defined(_DLL)
#define ZELLAP10_RUNTIME zellap10_runtime_MD_iterator_debug_level_
#else
#define ZELLAP10_RUNTIME zellap10_runtime_MT_iterator_debug_level_
#endif
#define ZELLAP10_JOIN_AS_IS(a, b) a##b
#define ZELLAP10_JOIN(a, b) ZELLAP10_JOIN_AS_IS(a, b)
#define ZELLAP10_TEXT_AS_IS(a) #a
#define ZELLAP10_TEXT(a) ZELLAP10_TEXT_AS_IS(a)
#define ZELLAP10_RUNTIME_SYMBOL ZELLAP10_JOIN(ZELLAP10_RUNTIME, _ITERATOR_DEBUG_LEVEL)

extern "C" ZELLAP10_API void ZELLAP10_RUNTIME_SYMBOL();

#if !defined(ZELLAP10_BUILD) && defined(_M_IX86)
#pragma comment(linker, "/include:__imp__" ZELLAP10_TEXT(ZELLAP10_RUNTIME_SYMBOL))
#elif !defined(ZELLAP10_BUILD)
#pragma comment(linker, "/include:__imp_" ZELLAP10_TEXT(ZELLAP10_RUNTIME_SYMBOL))
#endif

#endif
