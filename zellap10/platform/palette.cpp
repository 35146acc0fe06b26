#include "zellap10/platform/palette.h"

#if !defined(_WIN32)

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

struct PaletteObject {
    std::vector<PALETTEENTRY> entries;
};

HPALETTE CreatePalette(const LOGPALETTE* palette) {
    // The colours extend past the record's array of one element, so the record is read as bytes.
    const char* bytes = reinterpret_cast<const char*>(palette);
    unsigned short count = 0;
    std::memcpy(&count, bytes + offsetof(LOGPALETTE, palNumEntries), sizeof count);
    std::vector<PALETTEENTRY> entries(count);
    if (count > 0) {
        std::memcpy(entries.data(), bytes + offsetof(LOGPALETTE, palPalEntry), count * sizeof(PALETTEENTRY));
    }
    return new PaletteObject{std::move(entries)};
}

int DeleteObject(HPALETTE palette) {
    if (palette == nullptr) return 0;
    delete palette;
    return 1;
}

unsigned int GetPaletteEntries(HPALETTE palette, unsigned int start, unsigned int count,
                               PALETTEENTRY* entries) {
    if (palette == nullptr) return 0;
    const auto size = static_cast<unsigned int>(palette->entries.size());
    if (entries == nullptr) return size;
    if (start >= size) return 0;
    const unsigned int copied = std::min(count, size - start);
    std::copy_n(palette->entries.begin() + start, copied, entries);
    return copied;
}

#endif
