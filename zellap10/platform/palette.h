#pragma once

/// @file
///
/// The palette object: the system's own on Windows, and a replacement with the same names elsewhere.

#include <zellap10/platform/export.h>

#if defined(_WIN32)

// windows.h in part, without the macros min and max. An application that needs more of windows.h includes it
// first.
#if !defined(WIN32_LEAN_AND_MEAN)
#define WIN32_LEAN_AND_MEAN
#define ZELLAP10_LEAN
#endif
#if !defined(NOMINMAX)
#define NOMINMAX
#define ZELLAP10_NOMINMAX
#endif
#include <windows.h>
#if defined(ZELLAP10_LEAN)
#undef ZELLAP10_LEAN
#undef WIN32_LEAN_AND_MEAN
#endif
#if defined(ZELLAP10_NOMINMAX)
#undef ZELLAP10_NOMINMAX
#undef NOMINMAX
#endif

#else

/// One colour: red, green and blue from 0 to 255.
struct PALETTEENTRY {
    unsigned char peRed;    ///< red
    unsigned char peGreen;  ///< green
    unsigned char peBlue;   ///< blue
    unsigned char peFlags;  ///< 0
};

/// The colours of a new palette object: palNumEntries contiguous entries that begin at palPalEntry.
struct LOGPALETTE {
    unsigned short palVersion;     ///< 0x300
    unsigned short palNumEntries;  ///< colours
    PALETTEENTRY palPalEntry[1];   ///< the first of them
};

struct PaletteObject;

/// A palette object, or null for none.
using HPALETTE = PaletteObject*;

/// Creates a palette object with the colours of `palette`, which may have none. DeleteObject frees it. May
/// throw std::bad_alloc.
ZELLAP10_API HPALETTE CreatePalette(const LOGPALETTE* palette);

/// Frees a palette object. Returns 1, or 0 for a null handle.
ZELLAP10_API int DeleteObject(HPALETTE palette);

/// Copies colours of a palette object to `entries`.
///
/// @param palette  the object
/// @param start    the first entry
/// @param count    the largest number of entries to copy
/// @param entries  room for `count` colours, or null to ask only for the number
/// @return         entries copied: fewer than `count` if the palette ends, 0 for a start past its end or a
///                 null handle; for null `entries`, the palette's number of entries
ZELLAP10_API unsigned int GetPaletteEntries(HPALETTE palette, unsigned int start, unsigned int count,
                                            PALETTEENTRY* entries);

#endif

/// A LOGPALETTE with room for 256 colours, in the same layout.
struct LOGPALETTE256 {
    unsigned short palVersion = 0x300;   ///< 0x300
    unsigned short palNumEntries = 0;    ///< colours in use
    PALETTEENTRY palPalEntry[256] = {};  ///< the colours

    /// The record as an argument of CreatePalette.
    operator const LOGPALETTE*() const { return reinterpret_cast<const LOGPALETTE*>(this); }
};

/// Creates the palette object of such a record, on Windows too, by the system's CreatePalette.
inline HPALETTE CreatePalette(const LOGPALETTE256* palette) {
    return CreatePalette(reinterpret_cast<const LOGPALETTE*>(palette));
}

static_assert(sizeof(PALETTEENTRY) == 4, "a colour is four bytes");
static_assert(sizeof(LOGPALETTE) == 8 && sizeof(LOGPALETTE256) == 4 + 256 * 4,
              "the colours follow the two numbers directly");
